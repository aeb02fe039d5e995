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
#include "placement/result.h"

namespace zarven::tool {

struct SizingOptions {
    /// The most modules to add.
    std::uint32_t most = 32;
    unsigned jobs = 1;
    /// Called after each run with the runs done and those planned so far; one call at a time.
    std::function<void(std::size_t done, std::size_t planned)> progress = [](std::size_t, std::size_t) {};
};

/// A run with a number of further modules.
struct Attempt {
    std::size_t number = 0;
    std::size_t placed = 0;
    std::size_t left_out = 0;
    /// What the audit found.
    std::size_t findings = 0;
};

/// A limit of which there is not enough, and which modules of the kind do not raise.
struct Shortage {
    BoundLimit Bound::*which = nullptr;
    BoundLimit limit;
};

struct Addition {
    Module kind;
    /// The smallest number with which everything is placed but `impossible`.
    std::optional<std::size_t> number;
    /// With fewer, no arrangement that keeps the limits could do that.
    std::size_t at_least = 0;
    /// Every number from `at_least` on, up to the one that suffices or to the most.
    std::vector<Attempt> attempts;
    /// Each with its reason: placed with no number of modules.
    std::vector<ServiceResult> impossible;
    /// If there are any, no number suffices, however large.
    std::vector<Shortage> shortages;
    /// Where no number suffices, what else is left out by the attempt that places most; where there are
    /// shortages, by the head-end as it is, each with its reason.
    std::vector<ServiceResult> remaining;
};

enum class LimitKind { pids, bitrate, inputs, sd_transcoders, hd_transcoders, one_more_output };

/// One limit of one module raised.
struct Raise {
    LimitKind kind = LimitKind::pids;
    std::string mac;
    /// The output, from 1; 0 for a limit of the module.
    std::size_t output = 0;
    /// What it is, and the smallest found that places as many as a value without bounds does. For one more
    /// output: its bitrate.
    std::uint32_t from = 0;
    std::uint32_t to = 0;
    std::size_t placed = 0;
    /// What the audit then found.
    std::size_t findings = 0;
    /// The change as --set takes it.
    std::string setting;
};

struct Sizing {
    std::string name;
    /// The most modules that could be added.
    std::size_t most = 0;
    /// Of the head-end as it is.
    Counts now;
    /// What the audit found in it.
    std::vector<std::string> warnings;
    Addition addition;
    /// For each kind of limit that helps, the module on which it helps most; the best first.
    std::vector<Raise> raises;
};

/// Sizes a head-end; `file` is for messages. The log must be masked. Throws `Failure`.
Sizing size_headend(const Headend& headend, const std::string& file, const Module& kind,
                    const SizingOptions& options);

} // namespace zarven::tool

#endif
