// The limits are the engine's own rules, asked of an empty module.

#include "placement/running/capacity.h"

#include <algorithm>

#include <fmt/format.h>

#include "Reglas.h"
#include "base/counted.h"

namespace zarven::tool {

namespace {

std::uint32_t largest_output(const ModuleCapacity& module) {
    std::uint32_t largest = 0;
    for (const OutputCapacity& output : module.outputs)
        if (reglas::cabeOtroServicio(0, output.service_max))
            largest = std::max(largest, output.bitrate_max);
    return largest;
}

/// What the service asks of a module, for the case that no single limit tells it.
std::string needs_of(const tRec_Servicio& service) {
    std::vector<std::string> others;
    if (service.number_PIDs_CA != 0)
        others.push_back(counted(service.number_PIDs_CA, "PID"));
    if (reglas::ocupaTranscoder(service.Transcoding))
        others.emplace_back("a transcoder");
    std::string text = fmt::format("{} kbit/s", service.peakBitRate);
    for (const std::string& need : others)
        text += (&need == &others.back() ? " and " : ", ") + need;
    return text;
}

/// The most of each kind that any module has, of those with an input and an output.
ModuleCapacity most_of(const std::vector<ModuleCapacity>& modules) {
    ModuleCapacity most;
    OutputCapacity output;
    for (const ModuleCapacity& module : modules) {
        if (module.inputs == 0 || module.outputs.empty())
            continue;
        most.inputs = std::max(most.inputs, module.inputs);
        output.bitrate_max = std::max(output.bitrate_max, largest_output(module));
        most.pids_max = std::max(most.pids_max, module.pids_max);
        most.sd_transcoders = std::max(most.sd_transcoders, module.sd_transcoders);
        most.hd_transcoders = std::max(most.hd_transcoders, module.hd_transcoders);
    }
    most.outputs = {output};
    return most;
}

} // namespace

std::uint32_t ModuleCapacity::transcoders() const {
    return reglas::masTranscoders(sd_transcoders, hd_transcoders);
}

ModuleCapacity capacity_of(const tRec_Modulo& module) {
    ModuleCapacity capacity;
    capacity.inputs = module.mapEntradas.size();
    for (const auto& [number, output] : module.mapSalidas)
        capacity.outputs.push_back({output.BitRateMax, output.NumServiciosMax});
    capacity.pids_max = module.PIDsModuloMax;
    capacity.sd_transcoders = module.SD_MAX_Transcoding;
    capacity.hd_transcoders = module.HD_MAX_Transcoding;
    return capacity;
}

std::vector<ModuleCapacity> capacities_of(const EngineRun& loaded) {
    std::vector<ModuleCapacity> all;
    for (const auto& [mac, module] : loaded.engine.Mapa_ModulosCabecera_Inicial)
        all.push_back(capacity_of(module));
    return all;
}

bool could_take(const ModuleCapacity& module, const tRec_Servicio& service) {
    return module.inputs != 0 && reglas::cabeBitrate(0, service.peakBitRate, largest_output(module)) &&
           reglas::cabenPIDs(0, service.number_PIDs_CA, module.pids_max) &&
           (!reglas::ocupaTranscoder(service.Transcoding) || module.transcoders() != 0);
}

std::string why_none_could_take(const std::vector<ModuleCapacity>& modules, const tRec_Servicio& service) {
    const auto takes = [&service](const ModuleCapacity& module) { return could_take(module, service); };
    if (std::any_of(modules.begin(), modules.end(), takes))
        return "";
    const ModuleCapacity most = most_of(modules);
    const std::uint32_t bitrate_max = most.outputs.front().bitrate_max;
    if (most.inputs == 0)
        return "none has an input and an output";
    if (!reglas::cabeBitrate(0, service.peakBitRate, bitrate_max))
        return fmt::format("its {} kbit/s must stay below the maximum of an output, and the largest is {}",
                           service.peakBitRate, bitrate_max);
    if (!reglas::cabenPIDs(0, service.number_PIDs_CA, most.pids_max))
        return fmt::format("it needs {} and the largest budget is {}", counted(service.number_PIDs_CA, "PID"),
                           most.pids_max);
    const bool needs_transcoder = reglas::ocupaTranscoder(service.Transcoding);
    if (needs_transcoder && most.hd_transcoders == 0 && most.transcoders() == 0)
        return "it needs a transcoder and none has one";
    if (needs_transcoder && most.transcoders() == 0)
        return "it needs a transcoder, and the limit for the first one, that for SD, is 0 everywhere";
    return fmt::format("not even when empty does one offer the {} that it needs", needs_of(service));
}

} // namespace zarven::tool
