#include "generated_headend.h"

namespace zarven::tool {

namespace {

Module module_of(const tRec_Modulo& loaded) {
    Module module;
    module.mac = loaded.MAC;
    module.controller = loaded.Controlador;
    module.inputs = static_cast<std::uint16_t>(loaded.mapEntradas.size());
    for (const auto& [number, output] : loaded.mapSalidas)
        module.outputs.push_back(output.BitRateMax);
    module.pids_max = loaded.PIDsModuloMax;
    module.sd_transcoders = loaded.SD_MAX_Transcoding;
    module.hd_transcoders = loaded.HD_MAX_Transcoding;
    module.aux_transcoders = loaded.AUX_MAX_Transcoding;
    return module;
}

Service service_of(const tRec_Servicio& loaded) {
    Service service;
    service.lcn = loaded.LCN;
    service.name = loaded.NombreEntrada;
    service.onid = loaded.ONID;
    service.tsid = loaded.TSID;
    service.sid = loaded.SID;
    service.osid = loaded.OSID;
    service.video_format = loaded.VideoFormatE;
    service.transcoding = loaded.Transcoding;
    service.bitrate = loaded.peakBitRate;
    service.video_bitrate = loaded.videoPeakBitRate;
    service.ca_pids = loaded.number_PIDs_CA;
    service.ca_pids_max = loaded.number_PIDs_CA_Max;
    return service;
}

} // namespace

Headend generated_headend(const std::string& name, const generador::Parametros& parameters) {
    tRecalculo engine;
    generador::cargar(engine, parameters);
    Headend headend;
    headend.name = name;
    for (const auto& [mac, module] : engine.Mapa_ModulosCabecera_Inicial)
        headend.modules.push_back(module_of(module));
    for (const auto& service : engine.listaServicios)
        headend.services.push_back(service_of(*service));
    return headend;
}

Headend crowded_headend(unsigned services) {
    generador::Parametros parameters;
    parameters.streams = services / 8;
    parameters.serviciosPorStream = {1, 15};
    parameters.modulos = services / 50;
    parameters.entradas = {2, 4};
    parameters.salidas = {4, 4};
    parameters.pidsModulo = {40, 60};
    parameters.holgura = generador::Holgura::ESCASA;
    return generated_headend("bench", parameters);
}

} // namespace zarven::tool
