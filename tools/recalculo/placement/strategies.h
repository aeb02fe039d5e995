// The four strategies of the engine side by side: what each would leave out by itself, and which one the
// driver keeps. Clones play no part: the driver attaches them when it has chosen.

#ifndef RECALCULO_STRATEGIES_H
#define RECALCULO_STRATEGIES_H

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "headend/headend.h"
#include "placement/result.h"
#include "placement/running/engine_run.h"
#include "placement/strategy_names.h"

namespace zarven::tool {

enum class Verdict {
    /// The driver's choice.
    kept,
    /// The driver kept it until `rival` left fewer out.
    surpassed,
    /// It leaves as many out as `rival`, which the driver had kept before.
    tie,
    /// It leaves more out than `rival`, which the driver had kept before.
    worse,
    /// The driver had stopped, because `rival` places everything.
    not_tried
};

/// One strategy alone on the head-end.
struct Strategy {
    std::string name;
    /// Services on one output at least, and services left out.
    std::size_t placed = 0;
    std::size_t left_out = 0;
    /// Neither placed nor left out.
    std::size_t neither = 0;
    /// What the driver compares: it counts a service each time that it is left out.
    std::size_t left_out_counted = 0;
    /// What the audit found.
    std::size_t findings = 0;
    std::size_t broken = 0;
    std::size_t inputs_used = 0;
    std::size_t inputs = 0;
    Verdict verdict = Verdict::kept;
    /// The strategy that the verdict speaks of, by its place in the list; of one that is kept, its own.
    std::size_t rival = 0;
    /// So that the driver tries no further one. What it counts as left out does not tell: it counts in 16
    /// bits.
    bool places_everything = false;
};

/// A service that only some strategies place.
struct Contested {
    ServiceResult service;
    std::array<bool, strategy_count> is_placed_by = {};
};

struct Strategies {
    /// In the order in which the driver tries them.
    std::array<Strategy, strategy_count> list;
    /// Those that the kept strategy leaves out, then the others, each in the order of loading.
    std::vector<Contested> contested;
};

/// Does with a loaded engine what the driver does for one strategy; the outcome stands where the driver puts
/// its own. Of the strategy it tells the name, and what the driver asks for. Throws `Failure` if it does not
/// end within the limits; `file` is for that.
Strategy run_strategy(EngineRun& run, std::size_t index, const std::string& file);

/// The driver's choice among strategies whose counts are known: the fewest left out, the earliest on a tie,
/// none after one that places everything. Fills in every verdict.
void judge(std::array<Strategy, strategy_count>& list);

/// The place of the driver's choice among strategies that are judged.
std::size_t index_of_kept(const std::array<Strategy, strategy_count>& list);

/// Runs each strategy on an engine of its own, at the same time as the others. The log must be off. Throws
/// `Failure`; `file` is for messages.
Strategies strategies_of(const Headend& headend, const std::string& file);

} // namespace zarven::tool

#endif
