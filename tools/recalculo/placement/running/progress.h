// How far a recalculation is, read off the lines that the engine logs between its phases. They come whether
// or not the debug level is masked: some tens of them and one for each service that an exchange is searched
// for, among up to millions of others.

#ifndef RECALCULO_PROGRESS_H
#define RECALCULO_PROGRESS_H

#include <cstddef>
#include <string>
#include <string_view>

#include "tRecalculo.h"

namespace zarven::tool {

enum class Phase { prepare, fill, check, complete, unify, optimize, compare, clones, done };

struct Progress {
    /// From 1; 0 before the first.
    std::size_t strategy = 0;
    Phase phase = Phase::prepare;
    /// Times that the strategy has come to the phase of optimizing.
    int optimization = 0;
    /// Services that it has been searching a place for this time.
    int searched = 0;
};

/// Takes note of one line of the engine's log, or of its format where it has values in it.
void take_note(Progress& progress, std::string_view line);

/// The pass of a strategy is under way, so that services are left to place.
bool is_placing(const Progress& progress);

/// Services that the running pass has not placed.
std::size_t services_left(const tRecalculo& engine);

/// In words: "strategy 2 of 4, MAX MIN: optimize 1, service 17".
std::string to_string(const Progress& progress);

} // namespace zarven::tool

#endif
