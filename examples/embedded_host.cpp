// A host on the controller: it takes the library's log and pauses into its own hands, loads a small head-end,
// lets the library place it and reads everything there is to read. docs/embedding.md goes through it.

#include <tRecalculo.h>

#include <syslog.h>

#include <cstdarg>
#include <cstdio>
#include <memory>
#include <string>

// ---- What the library calls -------------------------------------------------------------------------------
//
// Where the C library is linked into the program, a host that defines syslog defines setlogmask as well: the
// two lie in one object there, and the one would bring the other's name in a second time.

namespace {

unsigned seconds_asked_for = 0;
int log_mask = LOG_UPTO(LOG_DEBUG);

// Nobody waits longer than a day for a placement.
constexpr unsigned MOST_SECONDS = 24 * 60 * 60;
struct GiveUp {};

} // namespace

// The library asks setlogmask(0) what it may leave away.
extern "C" __attribute__((visibility("default"))) int setlogmask(int mask) {
    const int before = log_mask;
    if (mask != 0)
        log_mask = mask;
    return before;
}

// The summary goes where this host keeps its messages. Nothing here may block.
extern "C" __attribute__((visibility("default"))) void syslog(int level, const char* format, ...) {
    if ((LOG_MASK(level) & log_mask) == 0)
        return;
    std::va_list arguments;
    va_start(arguments, format);
    std::vprintf(format, arguments);
    va_end(arguments);
    std::putchar('\n');
}

// No pause, and the place to feed a watchdog: the library comes by here between the sections of its log. What
// is thrown ends the run.
extern "C" __attribute__((visibility("default"))) unsigned int sleep(unsigned int seconds) {
    seconds_asked_for += seconds;
    if (seconds_asked_for > MOST_SECONDS)
        throw GiveUp();
    return 0;
}

// ---- Loading ----------------------------------------------------------------------------------------------

namespace {

using zarven::tRec_Modulo;
using zarven::tRec_PID;
using zarven::tRec_Servicio;
using zarven::tRecalculo;

constexpr unsigned short ONID = 1;

bool done(int code) {
    if (code != tRecalculo::RETURN_OK)
        std::fprintf(stderr, "refused: %d\n", code);
    return code == tRecalculo::RETURN_OK;
}

// A module of two inputs, two outputs of 38 Mbit/s and one transcoder for clones, that descrambles 8 PIDs.
bool load_module(tRecalculo& engine, const std::string& mac, bool controller) {
    if (!done(engine.addModulo(mac, tRec_Modulo::MODELO_SOPORTADO, 2, 2, 8, controller)))
        return false;
    engine.Mapa_ModulosCabecera_Inicial.at(mac).AUX_MAX_Transcoding = 1; // no operation sets it
    return done(engine.configurarSalida(mac, 1, 38000)) && done(engine.configurarSalida(mac, 2, 38000));
}

// The key is the logical channel number, unique within the stream; the bitrate is in kbit/s.
std::shared_ptr<tRec_Servicio> make_service(unsigned short tsid, unsigned short lcn, const char* name,
                                            unsigned bitrate) {
    auto service = std::make_shared<tRec_Servicio>();
    service->conLCN(lcn).conSID(lcn).conOSID(lcn);
    service->conONID(ONID).conTSID(tsid);
    service->conNombreEntrada(name).conNombreSalida(name).conBitRate(bitrate);
    return service;
}

bool load_services(tRecalculo& engine) {
    auto sports = make_service(1002, 21, "Deportes", 9000);
    sports->conDescifrar(1).conPIDsCA(3).conPIDsCAMax(3);

    // The key is taken in that stream, so this one is a clone of "Noticias" and goes where that one goes.
    auto clone = make_service(1001, 12, "Noticias SD", 0);
    clone->conTranscoding(1);

    return done(engine.addRec_Servicio(make_service(1001, 11, "Canal Uno", 6000))) &&
           done(engine.addRec_Servicio(make_service(1001, 12, "Noticias", 4000))) &&
           done(engine.addRec_Servicio(sports)) &&
           done(engine.addRec_Servicio(make_service(1002, 22, "Cine", 8000))) &&
           done(engine.addRec_Servicio(make_service(1003, 31, "Demasiado", 40000))) &&
           done(engine.addRec_Servicio(clone));
}

bool load(tRecalculo& engine) {
    return load_module(engine, "02:00:00:00:00:01", true) &&
           load_module(engine, "02:00:00:00:00:02", false) && load_services(engine) &&
           done(engine.addRec_PID(std::make_unique<tRec_PID>(100, 0, 0, 0, "spa", 1, 21))) &&
           done(engine.addHomeChannel(ONID, 1001));
}

// ---- Reading the result -----------------------------------------------------------------------------------

void print(const tRecalculo& engine) {
    for (const auto& [mac, module] : engine.Mapa_ModulosCabecera_Final) {
        std::printf("module %s, %u of %u PIDs\n", mac.c_str(), static_cast<unsigned>(module.PIDsModulo),
                    static_cast<unsigned>(module.PIDsModuloMax));
        for (const auto& [number, input] : module.mapEntradas)
            if (input.TSID != 0)
                std::printf("  input %u receives stream %u\n", static_cast<unsigned>(number),
                            static_cast<unsigned>(input.TSID));
        for (const auto& [number, output] : module.mapSalidas)
            for (const auto& [key, service] : output.MapaServicios)
                std::printf("  output %u carries %s\n", static_cast<unsigned>(number),
                            service->NombreSalida.c_str());
    }
    for (const auto& [onid, network] : engine.Mapa_ONIDs_Final)
        for (const auto& [tsid, stream] : network.MapRec_TSIDs)
            for (const auto& [key, service] : stream.MapRec_Services)
                std::printf("left out: %s\n", service->NombreSalida.c_str());
    for (const auto& clone : engine.listaServiciosClonados)
        std::printf("without parent: %s\n", clone->NombreSalida.c_str());
    std::printf("%u seconds of pauses skipped\n", seconds_asked_for);
}

} // namespace

int main() {
    setlogmask(LOG_UPTO(LOG_NOTICE)); // spares the library the work for lines that go nowhere
    tRecalculo engine;
    try {
        if (!load(engine) || engine.Main_Recalculo() != tRecalculo::RETURN_OK)
            return 1;
    } catch (const GiveUp&) {
        std::puts("given up; what was loaded is whole, and could run again");
        return 1;
    }
    print(engine);
    return 0;
}
