// A head-end as the filling of inputs sees it, in flat arrays: services by stream and key, modules by MAC.
// Made once of a loaded engine and read by all threads; what a fill does with it is `FillRun`'s.
//
// The parts that can be asked for are the engine's services. A second service of the same key is a clone to
// the engine, so it comes and goes with the first; both are one part.

#ifndef RECALCULO_CHOOSING_FILL_MODEL_H
#define RECALCULO_CHOOSING_FILL_MODEL_H

#include <cstdint>
#include <string>
#include <vector>

#include "placement/engine_run.h"

namespace zarven::tool {

/// A place in `FillModel::parts`.
using PartIndex = std::uint32_t;

/// A place in one of the lists of the model that stands for none.
inline constexpr std::uint32_t no_index = 0xFFFFFFFF;

struct FillPart {
    std::uint32_t bitrate = 0;
    std::uint16_t pids = 0;
    std::uint16_t transcoding = 0;
    std::int32_t key = 0;
    std::uint32_t stream = 0;
    bool takes_transcoder = false;
    bool is_hd = false;
    /// Rides along when its stream is filled; the others come by topping up only.
    bool enters_fill = false;
};

struct FillStream {
    /// Its parts, ascending by key: from the first up to the one before the last.
    PartIndex first = 0;
    PartIndex last = 0;
    /// An input that receives it is known to be tuned.
    bool has_number = true;
};

struct FillOutput {
    std::uint32_t bitrate_max = 0;
    std::uint32_t services_max = 0;
};

struct FillModule {
    std::string mac;
    std::uint32_t first_output = 0;
    std::uint32_t last_output = 0;
    std::uint32_t first_input = 0;
    std::uint32_t last_input = 0;
    std::uint16_t pids_max = 0;
    std::uint16_t sd_max = 0;
    std::uint16_t hd_max = 0;
};

struct FillModel {
    /// The engine must be loaded with all that may be asked for, and not have run.
    explicit FillModel(const EngineRun& loaded);

    std::vector<FillPart> parts;
    /// The engine's service of each part.
    std::vector<const tRec_Servicio*> services;
    std::vector<FillStream> streams;
    std::vector<FillModule> modules;
    std::vector<FillOutput> outputs;
    /// The number of each input within its module.
    std::vector<std::uint16_t> inputs;
    int resource = 0;
};

} // namespace zarven::tool

#endif
