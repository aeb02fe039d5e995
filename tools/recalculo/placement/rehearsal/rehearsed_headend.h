// A head-end as a rehearsal sees it, in flat arrays: services by stream and key, modules by MAC. Made once of
// a loaded engine and read by all threads. Some hundreds of modules, some thousands of services.
//
// The parts that can be asked for are the engine's services. A second service of the same key is a clone to
// the engine, so it comes and goes with the first; both are one part.

#ifndef RECALCULO_REHEARSED_HEADEND_H
#define RECALCULO_REHEARSED_HEADEND_H

#include <cstdint>
#include <string>
#include <vector>

#include "placement/running/capacity.h"
#include "placement/running/engine_run.h"

namespace zarven::tool {

/// A place in `RehearsedHeadend::parts`.
using PartIndex = std::uint32_t;

/// A place in one of the lists of a rehearsal that stands for none.
inline constexpr std::uint32_t no_index = 0xFFFFFFFF;

struct RehearsedPart {
    std::uint32_t bitrate = 0;
    std::int32_t key = 0;
    std::uint32_t stream = 0;
    std::uint16_t pids = 0;
    std::uint16_t transcoding = 0;
    std::uint16_t sid = 0;
    bool is_hd = false;
};

struct RehearsedStream {
    /// Its parts, ascending by key: from the first up to the one before the last.
    PartIndex first = 0;
    PartIndex last = 0;
    /// An input that receives it is known to be tuned: to be topped up, and to be gathered.
    bool has_number = true;
    bool has_both_numbers = true;
};

/// The limits of modules, their outputs and inputs in one list each.
struct FlatModules {
    struct Module {
        std::uint32_t first_output = 0;
        std::uint32_t last_output = 0;
        std::uint32_t first_input = 0;
        std::uint32_t last_input = 0;
        std::uint16_t pids_max = 0;
        std::uint16_t sd_max = 0;
        std::uint16_t hd_max = 0;
    };

    FlatModules() = default;
    explicit FlatModules(const std::vector<ModuleCapacity>& capacities) { assign(capacities); }
    void assign(const std::vector<ModuleCapacity>& capacities);

    std::vector<Module> modules;
    std::vector<OutputCapacity> outputs;
    std::uint32_t inputs = 0;
};

struct RehearsedHeadend {
    /// The engine must be loaded with all that may be asked for, and not have run.
    explicit RehearsedHeadend(const EngineRun& loaded);

    std::vector<RehearsedPart> parts;
    /// The engine's service of each part.
    std::vector<const tRec_Servicio*> services;
    std::vector<RehearsedStream> streams;
    /// In the order in which the engine walks them.
    std::vector<ModuleCapacity> modules;
    FlatModules flat;
    std::vector<std::string> macs;
    /// Of the engine: which fill its passes begin with.
    int resource = 0;
    /// Two services with one SID may stand on one output.
    bool shares_sids = false;
    /// Whole passes can be rehearsed, and not only how they begin. Not with a stream without number, which an
    /// untuned input receives, too, nor with more services than the engine's counters hold.
    bool allows_passes = false;
};

} // namespace zarven::tool

#endif
