#include "placement/rehearsal/rehearsed_headend.h"

#include <algorithm>
#include <limits>

#include "Reglas.h"

namespace zarven::tool {

namespace {

RehearsedPart part_of(long key, const tRec_Servicio& service, std::size_t stream) {
    RehearsedPart part;
    part.bitrate = service.peakBitRate;
    part.key = static_cast<std::int32_t>(key);
    part.stream = static_cast<std::uint32_t>(stream);
    part.pids = service.number_PIDs_CA;
    part.transcoding = service.Transcoding;
    part.sid = service.SID;
    part.is_hd = reglas::esHD(service.VideoFormatE);
    return part;
}

template <class Element> std::uint32_t size_of(const std::vector<Element>& list) {
    return static_cast<std::uint32_t>(list.size());
}

bool any_shared_sid(const std::vector<RehearsedPart>& parts) {
    std::vector<std::uint16_t> sids;
    for (const RehearsedPart& part : parts)
        sids.push_back(part.sid);
    std::sort(sids.begin(), sids.end());
    return std::adjacent_find(sids.begin(), sids.end()) != sids.end();
}

} // namespace

void FlatModules::assign(const std::vector<ModuleCapacity>& capacities) {
    modules.clear();
    outputs.clear();
    inputs = 0;
    for (const ModuleCapacity& capacity : capacities) {
        Module module;
        module.first_output = size_of(outputs);
        outputs.insert(outputs.end(), capacity.outputs.begin(), capacity.outputs.end());
        module.last_output = size_of(outputs);
        module.first_input = inputs;
        module.last_input = inputs += static_cast<std::uint32_t>(capacity.inputs);
        module.pids_max = capacity.pids_max;
        module.sd_max = capacity.sd_transcoders;
        module.hd_max = capacity.hd_transcoders;
        modules.push_back(module);
    }
}

RehearsedHeadend::RehearsedHeadend(const EngineRun& loaded)
    : modules(capacities_of(loaded)), flat(modules), resource(loaded.engine.GetRecursoCabecera()) {
    for (const auto& [onid, network] : loaded.engine.Mapa_ONIDs_Inicial)
        for (const auto& [tsid, carried] : network.MapRec_TSIDs) {
            RehearsedStream stream;
            stream.first = size_of(parts);
            stream.has_number = reglas::conAlgunNumero(onid, tsid);
            stream.has_both_numbers = reglas::conAmbosNumeros(onid, tsid);
            for (const auto& [key, service] : carried.MapRec_Services) {
                parts.push_back(part_of(key, *service, streams.size()));
                services.push_back(service.get());
            }
            stream.last = size_of(parts);
            streams.push_back(stream);
        }
    for (const auto& [mac, module] : loaded.engine.Mapa_ModulosCabecera_Inicial)
        macs.push_back(mac);
    shares_sids = any_shared_sid(parts);
    // Every head-end that can be loaded is filled without transcoding.
    allows_passes =
        reglas::estadoDeRelleno(resource) == reglas::Estado::STATUS_FILL_INPUTS_SERVICE_NO_TRASCODING &&
        parts.size() <= std::numeric_limits<std::uint16_t>::max() &&
        std::all_of(streams.begin(), streams.end(),
                    [](const RehearsedStream& stream) { return stream.has_number; });
}

} // namespace zarven::tool
