// The runs of the engine that a sizing makes: of changed head-ends, from several threads, and counted for
// whoever waits. Those that only ask how many services would be placed are rehearsed, which takes a fraction
// of the time; what is told is always a run.

#ifndef RECALCULO_SIZING_RUNNER_H
#define RECALCULO_SIZING_RUNNER_H

#include <cstddef>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "headend/headend.h"
#include "placement/rehearsal/rehearsal.h"
#include "placement/result.h"
#include "placement/sizing/sizing.h"

namespace zarven::tool {

/// What raised limits lead to.
struct Outcome {
    std::size_t placed = 0;
    bool is_broken = false;
};

/// What became of a changed head-end.
struct SizingTrial {
    /// None if the engine was stopped.
    std::optional<Result> result;
    /// Services that the search did not ask for; the result does not have them.
    std::vector<ServiceResult> withheld;
};

class Runner {
public:
    /// All must outlive this.
    Runner(const Headend& headend, const std::string& file, const SizingOptions& options);

    Result run(const Headend& headend, Reasons reasons = Reasons::omitted);
    /// None if the engine did not end within its limits.
    std::optional<Result> run_unless_stopped(const Headend& headend);

    /// Runs a changed head-end, asked for everything or for what a search finds. None if it was stopped
    /// before the search came to its end.
    std::optional<SizingTrial> trial(const Headend& headend);

    /// How many services this head-end would place with one module changed, by its place in the file. Tells
    /// what became of the module's limits, if the engine did not have to be asked.
    Outcome with_module(std::size_t index, const Module& changed, ModuleTests* tests = nullptr);

    /// What became of the limits of each module of the head-end as it is, by its place in the file; empty
    /// where only the engine knows.
    std::vector<ModuleTests> tests_as_it_is();

    /// From now on the engine is asked every time.
    void distrust_rehearsals() { rehearsed_.reset(); }
    bool trusts_rehearsals() const { return rehearsed_.has_value(); }

    /// Before a number of runs that is known; of others only the outcome tells how many they are.
    void plan(std::size_t runs) { planned_ = done_ + runs; }

    /// Nobody waits for what has not begun.
    bool is_stopped() const { return options_.is_stopped(); }

    void in_parallel(std::size_t parts, const std::function<void(std::size_t)>& part) const;

private:
    SizingTrial chosen(const Headend& headend) const;
    std::unique_ptr<Rehearsal> take_rehearsal();
    void give_back(std::unique_ptr<Rehearsal> rehearsal);
    void count();

    const Headend& headend_;
    const std::string& file_;
    const SizingOptions& options_;
    std::optional<RehearsedHeadend> rehearsed_;
    /// Where the modules of the file stand in the order of their MACs.
    std::vector<std::size_t> rank_;
    std::mutex mutex_;
    std::vector<std::unique_ptr<Rehearsal>> idle_;
    std::size_t done_ = 0;
    std::size_t planned_ = 0;
};

} // namespace zarven::tool

#endif
