// Which limit helps most when it is raised: each limit of each module is tried without bounds, and the best
// of each kind then made as small as a bisection can. What that finds is told as what it is: it suffices, and
// one less does not.

#ifndef RECALCULO_SIZING_RAISING_H
#define RECALCULO_SIZING_RAISING_H

#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "headend/headend.h"
#include "placement/sizing.h"
#include "placement/sizing/runner.h"

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

/// What a raised limit leads to.
struct RaiseOutcome {
    std::size_t placed = 0;
    std::size_t findings = 0;
    std::size_t broken = 0;
};

/// Tries every limit of every module.
class Raising {
public:
    /// Both must outlive this.
    Raising(const Headend& headend, Runner& runner) : headend_(headend), runner_(runner) { list(); }

    /// The limits that are to be tried, of all modules or of one.
    std::size_t limits() const { return candidates_.size(); }
    std::size_t limits_of(std::size_t module) const;

    /// Only those of these modules are to be tried.
    void keep_modules(const std::set<std::size_t>& modules);

    /// Those that place more than are placed now, the best first.
    std::vector<Raise> raises(std::size_t placed_now);

private:
    void list();
    void list(std::size_t module, std::uint64_t bitrate, std::uint64_t pids, std::size_t transcoded,
              std::size_t streams);
    void add(const RaisableLimit& candidate) {
        if (candidate.generous > candidate.from)
            candidates_.push_back(candidate);
    }
    RaiseOutcome outcome_with(const RaisableLimit& candidate, std::uint32_t value);
    Raise smallest(const RaisableLimit& candidate, RaiseOutcome generous);

    const Headend& headend_;
    Runner& runner_;
    std::vector<RaisableLimit> candidates_;
};

} // namespace zarven::tool

#endif
