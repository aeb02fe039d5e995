// The search as a whole: it goes by rounds. In each, every job lets its chains go on for a while on the
// model, and brings what they found before the engine. Between rounds the jobs learn of each other's best. So
// the answer does not depend on which of them is quicker.

#ifndef RECALCULO_CHOOSING_SEARCH_H
#define RECALCULO_CHOOSING_SEARCH_H

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "placement/choosing/chain_pool.h"
#include "placement/choosing/choosing.h"
#include "placement/choosing/engine_chain.h"
#include "placement/choosing/engine_trial.h"
#include "placement/choosing/giving_back.h"
#include "placement/choosing/goal.h"
#include "placement/rehearsal/rehearsed_headend.h"

namespace zarven::tool {

class ChoosingSearch {
public:
    /// All must outlive this.
    ChoosingSearch(const Headend& headend, const ChoosingLimits& limits, const StaysPut& stays,
                   const ChoosingWatch& watch);

    Choice choice();

private:
    using Clock = std::chrono::steady_clock;

    /// One thread's share.
    struct Job {
        Job(const ChoosingSearch& search, Numbers& seeds);
        ChainPool pool;
        Judge judge;
        EngineChain engine;
        /// Better than the best before the round.
        std::optional<TriedChoice> found;
    };

    bool may_go_on(Clock::duration reserve);
    std::chrono::milliseconds elapsed() const;
    Clock::duration time_of_giving_back() const;
    void try_asked_today();
    void search();
    void round(std::uint64_t states);
    void look_at_found(Job& job) const;
    void confirm(Job& job) const;
    void climb(Job& job, std::uint64_t states) const;
    bool is_all_reached() const;
    void consider(Job& job, const std::vector<bool>& asked) const;
    void take(TriedChoice tried);
    std::vector<bool> services_of(const PartFlags& parts) const;
    PartFlags parts_of(const std::vector<bool>& services) const;
    void give_back();
    bool is_best_of_each() const;
    bool take_better_variants();

    const ChoosingLimits& limits_;
    const ChoosingWatch& watch_;
    const Clock::time_point start_ = Clock::now();
    const EngineTrial trial_;
    const EngineRun loaded_;
    const RehearsedHeadend model_;
    const Goal goal_;
    std::vector<std::unique_ptr<Job>> jobs_;
    TriedChoice best_;
    PartFlags best_parts_;
    Clock::duration time_of_trial_{};
    Clock::duration longest_round_{};
    std::uint64_t states_ = 0;
    std::uint64_t engine_runs_ = 0;
    bool is_stopped_ = false;
    bool is_given_back_ = true;
};

} // namespace zarven::tool

#endif
