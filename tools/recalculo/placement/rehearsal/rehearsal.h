// A rehearsal: what the engine would place, found out without it. For those who ask thousands of times how
// many services changed modules would carry, and make up no log and no placement of it.
//
// It takes the engine's decisions one by one, with the engine's own rules (Reglas.h), on arrays instead of
// maps: services are numbers in the order of the index, inputs and outputs hold them by key. That takes about
// a twentieth of the time. An exchange that fails in the middle is not followed: there the rehearsal gives
// up, and the engine has to be asked. A random test holds it to the engine; whoever tells an answer confirms
// it by a run of the engine all the same.
//
// Some hundreds of modules, some thousands of services in some hundreds of streams.

#ifndef RECALCULO_REHEARSAL_H
#define RECALCULO_REHEARSAL_H

#include <array>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <vector>

#include "placement/capacity.h"

namespace zarven::tool {

struct RehearsedService {
    long key = 0;
    std::size_t stream = 0;
    std::uint32_t bitrate = 0;
    std::uint16_t pids = 0;
    std::uint16_t transcoding = 0;
    std::uint16_t sid = 0;
    bool is_hd = false;
    /// Whether it counts when a stream is chosen, by each of the criteria there are.
    std::array<bool, 4> counts = {};
};

/// The services of one stream stand together, by key.
struct RehearsedStream {
    std::size_t first = 0;
    std::size_t last = 0;
    bool has_both_numbers = false;
};

/// The limits of a module.
struct RehearsedModule {
    std::size_t inputs = 0;
    std::vector<OutputCapacity> outputs;
    std::uint16_t pids_max = 0;
    std::uint16_t sd_transcoders = 0;
    std::uint16_t hd_transcoders = 0;
};

RehearsedModule rehearsed(const tRec_Modulo& module);

struct RehearsedHeadend {
    std::vector<RehearsedService> services;
    std::vector<RehearsedStream> streams;
    /// By MAC, as the engine walks them.
    std::vector<RehearsedModule> modules;
    /// Of the engine: which fill its passes begin with.
    int resource = 0;
    /// Two services with one SID may stand on one output.
    bool shares_sids = false;
};

/// What a loaded engine would be run on. Nothing for what only the engine itself can tell: a stream without
/// number, which an untuned input receives, too, or more services than its counters hold.
std::optional<RehearsedHeadend> rehearsed(const EngineRun& loaded);

/// What the tests of one limit came to in a run. When none failed, every value from `enough` on gives the
/// same run. Of bitrates: every value from that of the run up to `next` gives the same run.
struct LimitTests {
    std::uint64_t enough = 0;
    std::uint64_t next = std::numeric_limits<std::uint64_t>::max();
    bool any_failed = false;

    void passed_at(std::uint64_t least) { enough = enough < least ? least : enough; }
    void failed() { any_failed = true; }
    void failed_under(std::uint64_t least) {
        any_failed = true;
        next = next < least ? next : least;
    }
    bool same_with(std::uint64_t value) const { return !any_failed && value >= enough; }
};

struct ModuleTests {
    /// An input beyond the last that is ever tuned changes nothing, as long as there is one.
    LimitTests inputs;
    LimitTests pids;
    LimitTests sd_transcoders;
    LimitTests hd_transcoders;
    /// By output.
    std::vector<LimitTests> bitrate;
};

struct Rehearsed {
    std::size_t placed = 0;
    /// The placement breaks a limit.
    bool is_broken = false;
};

/// Rehearses one run after the other. Not from two threads at once; the head-end must outlive it.
class Rehearsal {
public:
    explicit Rehearsal(const RehearsedHeadend& headend);
    ~Rehearsal();

    /// Runs all strategies on these modules. Nothing where the engine has to be asked.
    std::optional<Rehearsed> run(const std::vector<RehearsedModule>& modules);

    /// Of the last run, by module.
    const std::vector<ModuleTests>& tests() const;

private:
    class Stage;
    std::unique_ptr<Stage> stage_;
};

} // namespace zarven::tool

#endif
