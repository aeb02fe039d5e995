#include "generated_headend.h"

#include <utility>

#include <fmt/format.h>

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

/// Of the services of a stream, as they are added.
class LineUp {
public:
    LineUp(Headend& headend, std::uint32_t seed) : headend_(headend), dice_(seed) {}

    void add_streams(std::size_t services) {
        while (headend_.services.size() < services)
            add_stream();
        headend_.services.resize(services);
    }

private:
    void add_stream() {
        ++stream_;
        is_scrambled_ = dice_.porcentaje(45);
        const unsigned kind = dice_.entre(1, 10);
        if (kind == 1) {
            add_radios(dice_.entre(8, 40));
            add(dice_.entre(0, 4), {2000, 5000});
        } else if (kind <= 6) {
            add(dice_.entre(4, 12), {1800, 4500});
            add_radios(dice_.porcentaje(40) ? dice_.entre(2, 4) : 0);
        } else {
            add(dice_.entre(1, 7), {4000, 9000});
        }
    }

    void add_radios(unsigned number) {
        const bool before = std::exchange(is_scrambled_, false);
        add(number, {213, 213});
        is_scrambled_ = before;
    }

    void add(unsigned number, generador::Rango bitrates) {
        for (; number != 0; --number) {
            const auto lcn = static_cast<std::uint16_t>(headend_.services.size() + 1);
            Service service;
            service.lcn = service.sid = lcn;
            service.name = "Service " + std::to_string(lcn);
            service.onid = 1;
            service.tsid = stream_;
            service.bitrate = dice_.entre(bitrates);
            if (is_scrambled_ && dice_.porcentaje(80))
                service.ca_pids = service.ca_pids_max = static_cast<std::uint16_t>(dice_.entre(2, 3));
            headend_.services.push_back(std::move(service));
        }
    }

    Headend& headend_;
    generador::Dado dice_;
    std::uint16_t stream_ = 0;
    bool is_scrambled_ = false;
};

} // namespace

Headend line_up(const std::string& name, std::uint32_t seed, const AlikeModules& modules) {
    Headend headend;
    headend.name = name;
    for (unsigned number = 0; number < modules.number; ++number) {
        Module module;
        module.mac = fmt::format("02:00:00:00:00:{:02X}", number);
        module.controller = number == 0;
        module.inputs = modules.inputs;
        module.outputs.assign(modules.outputs, 38000);
        module.pids_max = modules.pids;
        headend.modules.push_back(std::move(module));
    }
    LineUp(headend, seed).add_streams(1234);
    return headend;
}

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
