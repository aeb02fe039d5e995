#include "placement/choosing/fill_model.h"

#include "Reglas.h"

namespace zarven::tool {

namespace {

FillPart part_of(std::int32_t key, const tRec_Servicio& service, std::size_t stream) {
    FillPart part;
    part.bitrate = service.peakBitRate;
    part.pids = service.number_PIDs_CA;
    part.transcoding = service.Transcoding;
    part.key = key;
    part.stream = static_cast<std::uint32_t>(stream);
    part.takes_transcoder = reglas::ocupaTranscoder(service.Transcoding);
    part.is_hd = reglas::esHD(service.VideoFormatE);
    // Every head-end that can be loaded is filled without transcoding.
    part.enters_fill = reglas::entraEnRelleno(service.Transcoding, false);
    return part;
}

template <class Element> std::uint32_t size_of(const std::vector<Element>& list) {
    return static_cast<std::uint32_t>(list.size());
}

} // namespace

FillModel::FillModel(const EngineRun& loaded) : resource(loaded.engine.GetRecursoCabecera()) {
    for (const auto& [onid, network] : loaded.engine.Mapa_ONIDs_Inicial)
        for (const auto& [tsid, carried] : network.MapRec_TSIDs) {
            FillStream stream;
            stream.first = size_of(parts);
            stream.has_number = reglas::conAlgunNumero(onid, tsid);
            for (const auto& [key, service] : carried.MapRec_Services) {
                parts.push_back(part_of(static_cast<std::int32_t>(key), *service, streams.size()));
                services.push_back(service.get());
            }
            stream.last = size_of(parts);
            streams.push_back(stream);
        }
    for (const auto& [mac, loaded_module] : loaded.engine.Mapa_ModulosCabecera_Inicial) {
        FillModule module;
        module.mac = mac;
        module.pids_max = loaded_module.PIDsModuloMax;
        module.sd_max = loaded_module.SD_MAX_Transcoding;
        module.hd_max = loaded_module.HD_MAX_Transcoding;
        module.first_output = size_of(outputs);
        for (const auto& [number, output] : loaded_module.mapSalidas)
            outputs.push_back({output.BitRateMax, output.NumServiciosMax});
        module.last_output = size_of(outputs);
        module.first_input = size_of(inputs);
        for (const auto& [number, input] : loaded_module.mapEntradas)
            inputs.push_back(number);
        module.last_input = size_of(inputs);
        modules.push_back(module);
    }
}

} // namespace zarven::tool
