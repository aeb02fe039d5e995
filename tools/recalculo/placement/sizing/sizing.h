// What to change so that everything fits: further modules of one kind, or one limit of one module. Found by
// running the engine on changed head-ends, hundreds of times for a large one.

#ifndef RECALCULO_SIZING_H
#define RECALCULO_SIZING_H

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "headend/headend.h"
#include "placement/bound.h"
#include "placement/raise.h"
#include "placement/result.h"

namespace zarven::tool {

struct SizingOptions {
    /// The most modules to add.
    std::uint32_t most = 32;
    unsigned jobs = 1;
    /// Whether to ask, with each number of modules, only for what a search finds; else for everything.
    bool are_chosen = false;
    /// Called after each run with the runs done and those planned so far; one call at a time.
    std::function<void(std::size_t done, std::size_t planned)> progress = [](std::size_t, std::size_t) {};
    /// Asked before each run, from all threads: true ends the sizing with what has been found by then.
    std::function<bool()> is_stopped = [] { return false; };
};

/// What the search with each number tries: the same on every machine, and what `choose --jobs 1` tries with
/// as many `--runs`.
inline constexpr std::uint64_t sizing_states = 20000;
inline constexpr std::uint64_t sizing_seed = 1;
/// At the end, so many groups of services and single ones are tried to be given back.
inline constexpr std::uint64_t sizing_giving_back = 2000;

struct Attempt {
    std::size_t number = 0;
    std::size_t placed = 0;
    std::size_t left_out = 0;
    /// Of those that are wanted.
    std::size_t missing = 0;
    std::size_t findings = 0;
    /// Limits and services that are broken: with any it is no answer.
    std::size_t broken = 0;
    /// Services that the search did not ask for.
    std::size_t withheld = 0;
    /// The engine did not end within its limits: nothing is known but that it is no answer.
    bool is_stopped = false;
};

/// A limit of which there is not enough, and which modules of the kind do not raise.
struct Shortage {
    BoundLimit Bound::*which = nullptr;
    BoundLimit limit;
};

struct Addition {
    Module kind;
    /// Services marked as `must`: where there are any, they alone are wanted.
    std::size_t musts = 0;
    /// None if no number suffices; `impossible` is not asked for.
    std::optional<std::size_t> number;
    /// With fewer no arrangement could; also where that is above the most.
    std::size_t at_least = 0;
    /// Every number from `at_least` on, up to the one that suffices or to the most.
    std::vector<Attempt> attempts;
    /// Where modules are needed, the run with one more of them than that.
    std::optional<Attempt> one_more;
    /// What the answer does not ask for.
    std::vector<ServiceResult> withheld = {};
    /// Each with its reason.
    std::vector<ServiceResult> impossible;
    /// If there are any, no number suffices, however large.
    std::vector<Shortage> shortages;
    /// Apart from `impossible`; where nothing was tried, each with its reason.
    std::vector<ServiceResult> remaining;
};

/// Of each kind so many.
struct MixPart {
    Module module;
    /// None if no mix that was tried suffices.
    std::optional<std::size_t> number;
};

/// Further modules of several kinds.
struct Mix {
    std::vector<MixPart> kinds;
    /// Of the mix found; what it leads to stands in `outcome`.
    std::uint64_t price = 0;
    std::optional<Attempt> outcome;
    /// No mix that is cheaper could; none if none could, up to the most modules.
    std::optional<std::uint64_t> at_least;
    /// All that are not ruled out, by price.
    std::size_t tried = 0;
    /// What the mix found does not ask for.
    std::vector<ServiceResult> withheld = {};
};

struct Sizing {
    std::string name;
    std::size_t most = 0;
    Counts now;
    std::vector<Finding> findings;
    /// It was stopped before its end.
    bool is_partial = false;
    /// The numbers of modules were tried with what a search chose to ask for.
    bool are_chosen = false;
    /// Of the first kind alone.
    Addition addition;
    /// Where there are several kinds.
    std::optional<Mix> mix;
    /// For each kind of limit that helps, the module on which it helps most; the best first.
    std::vector<Raise> raises;
};

/// Sizes a head-end with one kind of module or several; `file` is for messages. The log must be masked.
/// Throws `Failure`.
Sizing size_headend(const Headend& headend, const std::string& file, const std::vector<Module>& kinds,
                    const SizingOptions& options);

} // namespace zarven::tool

#endif
