// Which services to ask the engine for, so that it places the most that matters. The engine is not
// monotonous: asked for less it often places more. docs/choose.md tells how the search goes about it. Some
// thousands of services on some hundreds of modules.

#ifndef RECALCULO_CHOOSING_H
#define RECALCULO_CHOOSING_H

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <string>
#include <vector>

#include "headend/headend.h"

namespace zarven::tool {

/// What a search may spend. The same seed, runs and jobs give the same answer if the runs end it and not the
/// time.
struct ChoosingLimits {
    std::chrono::milliseconds time{20000};
    /// States tried by each job; 0: as many as the time allows.
    std::uint64_t runs = 0;
    std::uint64_t seed = 1;
    unsigned jobs = 1;
    /// At the end, so many groups of services and single ones are tried to be given back.
    std::uint64_t giving_back = std::numeric_limits<std::uint64_t>::max();
};

/// Where services stand today, by their place in `Headend::services`. The lists are empty, or as long as
/// that.
struct StaysPut {
    /// The MAC; empty for a service that stands nowhere, which cannot move.
    std::vector<std::string> module;
    /// The output of that module, from 1; 0 if any output of it will do.
    std::vector<std::uint32_t> output;
    /// The input of that module, from 1; 0 if any input of it will do.
    std::vector<std::uint16_t> input = {};
    /// Whether it is asked for today.
    std::vector<bool> asked = {};
};

/// What a choice gives, as the engine placed it and the audit saw it.
struct ChoiceWorth {
    /// Services that must be placed, and are.
    std::size_t musts = 0;
    /// The sum of the values of the services placed, those of `must` among them.
    std::uint64_t value = 0;
    /// Services placed; clones are no services of their own.
    std::size_t placed = 0;
    /// Services that are not placed where they stay put: elsewhere, or nowhere.
    std::size_t moved = 0;
    /// Services that could be asked for and are not.
    std::size_t withheld = 0;
};

/// More musts, then a greater value, then fewer moved, then fewer withheld.
bool is_better(const ChoiceWorth& one, const ChoiceWorth& other);

struct ChoosingProgress {
    ChoiceWorth best;
    /// The audit finds nothing broken there. False at most until the first sound choice is found.
    bool is_sound = false;
    std::uint64_t states = 0;
    std::uint64_t engine_runs = 0;
    std::chrono::milliseconds elapsed{0};
};

/// Called on the caller's thread at most every 100 ms; false ends the search, which then gives the best it
/// has.
using ChoosingWatch = std::function<bool(const ChoosingProgress&)>;

struct Choice {
    /// One for each of `Headend::services`.
    std::vector<bool> asked;
    ChoiceWorth worth;
    /// Whatever the audit says of that.
    ChoiceWorth asked_for_all;
    bool is_asked_for_all_sound = true;
    /// Each service withheld was tried to be given back; else the time or the watch ended it before.
    bool is_given_back = true;
    /// Whether the audit finds nothing broken in `worth`. False only if no sound choice was found at all.
    bool is_sound = true;
    std::uint64_t states = 0;
    std::uint64_t engine_runs = 0;
};

/// Finds which services to ask for. Never asked for are those with `ask` false, and those of value 0 that
/// are no `must`. The log must be masked. Throws `Failure`.
Choice choose_services(const Headend& headend, const ChoosingLimits& limits, const StaysPut& stays,
                       const ChoosingWatch& watch);

} // namespace zarven::tool

#endif
