// A complete caller of the library: two modules, a few services, one recalculation, the result printed.
//
// It also shows how a host takes the log and the pauses into its own hands: it defines syslog and sleep, and
// the library's calls arrive there. Leave both definitions out and the log goes to the system's, with pauses.

#include <tRecalculo.h>

#include <cstdarg>
#include <cstdio>
#include <memory>
#include <string>

namespace {

int log_lines = 0;

} // namespace

extern "C" void syslog(int /*level*/, const char* /*format*/, ...) {
    ++log_lines;
}

extern "C" unsigned int sleep(unsigned int /*seconds*/) {
    return 0;
}

namespace {

using zarven::tRec_Servicio;
using zarven::tRecalculo;

// A module of two inputs and one output of 38 Mbit/s that can descramble 8 PIDs.
bool load_module(tRecalculo& engine, const std::string& mac, bool is_controller) {
    const unsigned short model = zarven::tRec_Modulo::MODELO_SOPORTADO;
    return engine.addModulo(mac, model, 2, 1, 8, is_controller) == tRecalculo::RETURN_OK &&
           engine.configurarSalida(mac, 1, 38000) == tRecalculo::RETURN_OK;
}

// A service that is free to air; most of what a service can tell stays 0.
bool load_service(tRecalculo& engine, unsigned short tsid, unsigned short lcn, const std::string& name,
                  unsigned long bitrate) {
    const unsigned short sid = lcn;
    const unsigned short onid = 1;
    const unsigned short television = 1;
    auto service = std::make_shared<tRec_Servicio>(sid, sid, lcn, 0, 0, 0, 0, 0, bitrate, bitrate, television,
                                                   0, 0, name, name, 0, 0, onid, tsid, 0, 0);
    return engine.addRec_Servicio(service) == tRecalculo::RETURN_OK;
}

bool load(tRecalculo& engine) {
    return load_module(engine, "02:00:00:00:00:01", true) &&
           load_module(engine, "02:00:00:00:00:02", false) &&
           load_service(engine, 1001, 1, "Canal Uno", 8000) &&
           load_service(engine, 1001, 2, "Canal Dos", 4000) &&
           load_service(engine, 1002, 3, "Noticias", 3500) &&
           load_service(engine, 1003, 4, "Deportes", 9000) && load_service(engine, 1003, 5, "Música", 3500);
}

void print(const tRecalculo& engine) {
    for (const auto& [mac, module] : engine.Mapa_ModulosCabecera_Final)
        for (const auto& [number, output] : module.mapSalidas) {
            std::printf("Module %s, output %u: %u of %u kbit/s\n", mac.c_str(), static_cast<unsigned>(number),
                        static_cast<unsigned>(output.BitRateActual),
                        static_cast<unsigned>(output.BitRateMax));
            for (const auto& [key, service] : output.MapaServicios)
                std::printf("  %3ld  %s\n", key, service->NombreSalida.c_str());
        }
    std::printf("%zu networks with services left out, %d lines of log\n", engine.Mapa_ONIDs_Final.size(),
                log_lines);
}

} // namespace

int main() {
    tRecalculo engine;
    if (!load(engine)) {
        std::fputs("The engine refused something.\n", stderr);
        return 1;
    }
    if (engine.Main_Recalculo() != tRecalculo::RETURN_OK) {
        std::fputs("No module is the controller.\n", stderr);
        return 1;
    }
    print(engine);
    return 0;
}
