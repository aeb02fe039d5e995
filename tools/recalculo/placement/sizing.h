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
    /// Called after each run with the runs done and those planned so far; one call at a time.
    std::function<void(std::size_t done, std::size_t planned)> progress = [](std::size_t, std::size_t) {};
};

struct Attempt {
    std::size_t number = 0;
    std::size_t placed = 0;
    std::size_t left_out = 0;
    std::size_t findings = 0;
    /// Limits and services that are broken.
    std::size_t broken = 0;
};

/// A limit of which there is not enough, and which modules of the kind do not raise.
struct Shortage {
    BoundLimit Bound::*which = nullptr;
    BoundLimit limit;
};

struct Addition {
    Module kind;
    /// None if no number suffices; `impossible` is not asked for.
    std::optional<std::size_t> number;
    std::size_t at_least = 0;
    /// Every number from `at_least` on, up to the one that suffices or to the most.
    std::vector<Attempt> attempts;
    /// Each with its reason.
    std::vector<ServiceResult> impossible;
    /// If there are any, no number suffices, however large.
    std::vector<Shortage> shortages;
    /// Apart from `impossible`; where there are shortages, each with its reason.
    std::vector<ServiceResult> remaining;
};

struct Sizing {
    std::string name;
    std::size_t most = 0;
    Counts now;
    std::vector<Finding> findings;
    Addition addition;
    /// For each kind of limit that helps, the module on which it helps most; the best first.
    std::vector<Raise> raises;
};

/// Sizes a head-end; `file` is for messages. The log must be masked. Throws `Failure`.
Sizing size_headend(const Headend& headend, const std::string& file, const Module& kind,
                    const SizingOptions& options);

} // namespace zarven::tool

#endif
