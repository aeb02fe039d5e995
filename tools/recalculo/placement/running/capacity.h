// What the modules of a head-end can give and what its services ask for, read off a loaded engine before it
// runs: there the PIDs of clones have already been charged to their parents. Some hundreds of modules and
// some thousands of services.

#ifndef RECALCULO_CAPACITY_H
#define RECALCULO_CAPACITY_H

#include <cstdint>
#include <string>
#include <vector>

#include "placement/running/engine_run.h"

namespace zarven::tool {

struct OutputCapacity {
    /// The load must stay under it, in kbit/s.
    std::uint32_t bitrate_max = 0;
    std::uint32_t service_max = 0;
};

struct ModuleCapacity {
    std::size_t inputs = 0;
    std::vector<OutputCapacity> outputs;
    std::uint16_t pids_max = 0;
    std::uint16_t sd_transcoders = 0;
    /// The limit once there is an HD service among those that are transcoded.
    std::uint16_t hd_transcoders = 0;

    /// The most services that can be transcoded at once.
    std::uint32_t transcoders() const;
};

ModuleCapacity capacity_of(const tRec_Modulo& module);

/// The modules by MAC, as the engine fills them.
std::vector<ModuleCapacity> capacities_of(const EngineRun& loaded);

/// The module could carry the service if it were empty.
bool could_take(const ModuleCapacity& module, const tRec_Servicio& service);

/// Why none of the modules could carry the service even if they were empty, as a clause; empty if one could.
std::string why_none_could_take(const std::vector<ModuleCapacity>& modules, const tRec_Servicio& service);

} // namespace zarven::tool

#endif
