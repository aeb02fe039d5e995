// Which limit helps most when it is raised. The engine is not monotonous: one generous value may place less
// than a smaller one. So each limit of each module is tried at all values that modules are sold with, and
// once so high that it does not matter; on a small head-end at every value, of bitrates at every one from
// which on a test of the run would end otherwise. Of those that place most the smallest is kept, and how
// little would have been enough is looked for by bisection. What is told was run by the engine.

#ifndef RECALCULO_SIZING_RAISING_H
#define RECALCULO_SIZING_RAISING_H

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "headend/headend.h"
#include "placement/sizing/runner.h"
#include "placement/sizing/sizing.h"

namespace zarven::tool {

/// A limit that may be raised, up to a value that is as good as none.
struct RaisableLimit {
    LimitKind kind;
    std::size_t module;
    std::size_t output;
    std::uint32_t from;
    std::uint32_t generous;
};

void raise(Module& module, const RaisableLimit& limit, std::uint32_t value);

/// The change as `--set` takes it; `raised` is the module with the value.
std::string setting_of(const RaisableLimit& limit, const Module& raised, std::uint32_t value);

/// A value of a limit that places more, and the largest tried under it that places fewer.
struct RaisedLimit {
    std::uint32_t value = 0;
    std::uint32_t too_small = 0;
    std::size_t placed = 0;
};

/// Which values are tried: on a small head-end all, on others, or where an answer is not to take long, those
/// that modules are sold with.
enum class RaisedTo { any_value, sold_value };

/// Tries every limit of every module.
class Raising {
public:
    /// Both must outlive this.
    Raising(const Headend& headend, Runner& runner, RaisedTo values = RaisedTo::any_value)
        : headend_(headend), runner_(runner), values_(values) {
        list();
    }

    /// The limits that are to be tried, of all modules or of one.
    std::size_t limits() const { return candidates_.size(); }
    std::size_t limits_of(std::size_t module) const;

    /// Only those of these modules are to be tried.
    void keep_modules(const std::set<std::size_t>& modules);

    /// Those that place more than are placed now and break no limit, the best first.
    std::vector<Raise> raises(std::size_t placed_now);

private:
    /// As services times limits: takes a second or two to try all values.
    static constexpr std::size_t small_head_end = 20000;
    /// Of the bitrate of one output; as many as there are PIDs to try.
    static constexpr std::size_t most_steps = 256;

    void list();
    void list(std::size_t module, std::uint64_t bitrate, std::uint64_t pids, std::size_t transcoded,
              std::size_t streams);
    void add(const RaisableLimit& candidate);
    std::vector<std::uint32_t> values_of(const RaisableLimit& candidate) const;
    std::map<std::uint32_t, Outcome> bitrate_steps(const RaisableLimit& candidate);
    std::optional<RaisedLimit> best_value(const RaisableLimit& candidate, std::size_t placed_now);
    Outcome outcome_with(const RaisableLimit& candidate, std::uint32_t value, ModuleTests* tests = nullptr);
    bool is_better(std::size_t one, std::size_t other) const;
    std::vector<std::size_t> best_of_each_kind() const;
    Raise smallest(const RaisableLimit& candidate, RaisedLimit best);
    bool is_confirmed(const RaisableLimit& candidate, Raise& raise);

    const Headend& headend_;
    Runner& runner_;
    RaisedTo values_;
    /// Nothing if all modules are to be tried.
    std::optional<std::set<std::size_t>> kept_;
    std::vector<ModuleTests> tests_;
    std::vector<RaisableLimit> candidates_;
    std::vector<std::optional<RaisedLimit>> best_;
    /// Not only what modules are sold with, which is all that there is time for on a large head-end.
    bool tries_all_ = false;
};

} // namespace zarven::tool

#endif
