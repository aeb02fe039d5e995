// The limits are those of the engine: a load under the maximum of its output, PIDs up to the budget.

#include "placement/capacity.h"

#include <algorithm>

#include <fmt/format.h>

namespace zarven::tool {

namespace {

/// The engine asks for the SD ceiling until the first HD service is transcoded, and for the HD ceiling from
/// then on. So without the former nothing begins, and with it the larger one is the most.
std::uint32_t transcoders_of(const tRec_Modulo& module) {
    return module.SD_MAX_Transcoding == 0 ? 0
                                          : std::max(module.SD_MAX_Transcoding, module.HD_MAX_Transcoding);
}

std::uint32_t largest_output(const ModuleCapacity& module) {
    std::uint32_t largest = 0;
    for (const OutputCapacity& output : module.outputs)
        if (output.service_max != 0)
            largest = std::max(largest, output.bitrate_max);
    return largest;
}

} // namespace

std::vector<ModuleCapacity> capacities_of(const EngineRun& loaded) {
    std::vector<ModuleCapacity> all;
    for (const auto& [mac, module] : loaded.engine.Mapa_ModulosCabecera_Inicial) {
        ModuleCapacity capacity;
        capacity.inputs = module.mapEntradas.size();
        for (const auto& [number, output] : module.mapSalidas)
            capacity.outputs.push_back({output.BitRateMax, output.NumServiciosMax});
        capacity.pids_max = module.PIDsModuloMax;
        capacity.transcoders = transcoders_of(module);
        all.push_back(std::move(capacity));
    }
    return all;
}

bool could_take(const ModuleCapacity& module, const tRec_Servicio& service) {
    return module.inputs != 0 && service.peakBitRate < largest_output(module) &&
           service.number_PIDs_CA <= module.pids_max && (service.Transcoding != 1 || module.transcoders != 0);
}

std::string why_none_could_take(const std::vector<ModuleCapacity>& modules, const tRec_Servicio& service) {
    std::uint32_t bitrate = 0;
    std::uint32_t pids = 0;
    std::uint32_t transcoders = 0;
    for (const ModuleCapacity& module : modules) {
        if (could_take(module, service))
            return "";
        if (module.inputs == 0)
            continue;
        bitrate = std::max(bitrate, largest_output(module));
        pids = std::max(pids, module.pids_max);
        transcoders = std::max(transcoders, module.transcoders);
    }
    if (bitrate == 0)
        return "no module has an input and an output";
    if (service.peakBitRate >= bitrate)
        return fmt::format("its {} kbit/s are not under the {} of the largest output", service.peakBitRate,
                           bitrate);
    if (service.number_PIDs_CA > pids)
        return fmt::format("its {} PIDs are above the {} of the largest budget", service.number_PIDs_CA,
                           pids);
    if (service.Transcoding == 1 && transcoders == 0)
        return "it needs a transcoder, and no module has one";
    return "no module has the output, the PIDs and the transcoder for it at once";
}

} // namespace zarven::tool
