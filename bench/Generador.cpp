#include "Generador.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

using namespace zarven;

namespace generador {

namespace {

unsigned short corto(unsigned numero) {
    return static_cast<unsigned short>(numero);
}

void exigir(bool condicion, const char* que) {
    if (!condicion)
        throw std::logic_error(std::string("the generated head-end is refused: ") + que);
}

// What the services need for every hundred that the modules have.
unsigned ocupacion(Holgura holgura) {
    switch (holgura) {
    case Holgura::AMPLIA:
        return 50;
    case Holgura::JUSTA:
        return 85;
    case Holgura::ESCASA:
        break;
    }
    return 120;
}

class Generador {
public:
    Generador(tRecalculo& engine, const Parametros& parametros)
        : motor(engine), p(parametros), dado(parametros.semilla) {}

    void cargar() {
        cargarModulos();
        elegirStreams();
        for (std::size_t i = 0; i < streams.size(); ++i)
            cargarStream(i);
        cargarClones();
        cargarPIDs();
    }

private:
    struct Stream {
        unsigned short onid;
        unsigned short tsid;
        unsigned servicios;
    };

    void cargarModulos();
    void elegirStreams();
    void cargarStream(std::size_t indice);
    void cargarClones();
    void cargarPIDs();
    std::shared_ptr<tRec_Servicio> servicio(const Stream& stream, unsigned clave);

    tRecalculo& motor;
    const Parametros& p;
    Dado dado;
    std::uint64_t bitrateTotal = 0;
    std::uint64_t pidsTotal = 0;
    std::vector<Stream> streams;
    // What a service needs on average.
    unsigned bitrateMedio = 0;
    unsigned pidsMedio = 0;
    unsigned proximaClave = 1;
    unsigned proximoSID = 1;
    std::vector<std::shared_ptr<tRec_Servicio>> servicios;
};

std::string mac(unsigned n) {
    std::array<char, 18> texto{};
    std::snprintf(texto.data(), texto.size(), "02:00:00:00:%02X:%02X", (n >> 8) & 0xFFU, n & 0xFFU);
    return texto.data();
}

void Generador::cargarModulos() {
    for (unsigned n = 0; n < p.modulos; ++n) {
        const std::string esta = mac(n);
        const unsigned salidas = dado.entre(p.salidas);
        const unsigned pids = dado.entre(p.pidsModulo);
        exigir(motor.addModulo(esta, tRec_Modulo::MODELO_SOPORTADO, corto(dado.entre(p.entradas)),
                               corto(salidas), corto(pids), n == 0) == 1,
               "module");
        pidsTotal += pids;
        for (unsigned id = 1; id <= salidas; ++id) {
            const unsigned bitrate = dado.entre(p.bitrateSalida);
            exigir(motor.configurarSalida(esta, corto(id), bitrate) == 1, "output");
            bitrateTotal += bitrate;
        }
        tRec_Modulo& modulo = motor.Mapa_ModulosCabecera_Inicial.at(esta);
        modulo.SD_MAX_Transcoding = corto(dado.entre(p.transcoders));
        modulo.HD_MAX_Transcoding = corto(dado.entre(p.transcoders));
        modulo.AUX_MAX_Transcoding = corto(dado.entre(p.transcoders));
    }
}

void Generador::elegirStreams() {
    std::uint64_t total = 0;
    for (unsigned n = 0; n < p.streams; ++n) {
        const bool sinNumero = p.streamSinNumero && n == 0;
        streams.push_back({corto(sinNumero ? 0 : n % std::max(p.redes, 1U) + 1), corto(sinNumero ? 0 : n + 1),
                           dado.entre(p.serviciosPorStream)});
        total += streams.back().servicios;
    }
    if (total != 0) {
        bitrateMedio = static_cast<unsigned>(bitrateTotal * ocupacion(p.holgura) / 100 / total);
        pidsMedio = static_cast<unsigned>(pidsTotal * ocupacion(p.holgura) / 100 / total);
    }
}

// Half the mean at least and half more at most for the bitrate; PIDs vary from none to twice the mean.
std::shared_ptr<tRec_Servicio> Generador::servicio(const Stream& stream, unsigned clave) {
    const unsigned bitrate = dado.entre(bitrateMedio / 2, bitrateMedio + bitrateMedio / 2);
    const unsigned pids = dado.entre(0, 2 * pidsMedio);
    const bool hd = dado.porcentaje(p.porcentajeHD);
    const bool transcoding = dado.porcentaje(p.porcentajeTranscoding);
    const unsigned short sid = corto(proximoSID++);
    const std::string nombre = "Service " + std::to_string(sid);
    const unsigned short cero = 0;
    return std::make_shared<tRec_Servicio>(sid, sid, corto(clave), cero, cero, corto(pids != 0), corto(pids),
                                           corto(pids + pids / 2), bitrate, bitrate, corto(1),
                                           hd ? tRec_Servicio::VIDEO_HD : cero, cero, nombre, nombre, cero,
                                           corto(transcoding), stream.onid, stream.tsid, cero, cero);
}

void Generador::cargarStream(std::size_t indice) {
    const Stream& stream = streams[indice];
    for (unsigned n = 1; n <= stream.servicios; ++n) {
        auto nuevo = servicio(stream, p.clavesRepetidas ? n : proximaClave++);
        exigir(motor.addRec_Servicio(nuevo) == 1, "service");
        servicios.push_back(std::move(nuevo));
    }
}

// A clone comes as a second service of the same key; the engine makes it one.
void Generador::cargarClones() {
    for (const auto& padre : servicios) {
        if (!dado.porcentaje(p.porcentajeClones))
            continue;
        const Stream stream{padre->ONID, padre->TSID, 0};
        exigir(motor.addRec_Servicio(servicio(stream, static_cast<unsigned>(padre->idService))) == 1,
               "clone");
    }
}

void Generador::cargarPIDs() {
    const unsigned short cero = 0;
    long idPSG = 1;
    for (const auto& de : servicios)
        for (unsigned n = 0; n < p.pidsPorServicio; ++n)
            exigir(motor.addRec_PID(std::make_unique<tRec_PID>(idPSG++, cero, cero, cero, n == 0 ? "" : "spa",
                                                               corto(n), de->SID)) == 1,
                   "PID");
}

} // namespace

unsigned Dado::entre(unsigned min, unsigned max) {
    const std::uint64_t cuantos = static_cast<std::uint64_t>(max) - min + 1;
    return min + static_cast<unsigned>((static_cast<std::uint64_t>(motor()) * cuantos) >> 32);
}

void cargar(tRecalculo& motor, const Parametros& parametros) {
    Generador(motor, parametros).cargar();
}

Parametros escasa(std::uint32_t semilla) {
    Dado dado(semilla * 2654435761U);
    Parametros p;
    p.semilla = semilla;
    p.streams = dado.entre(1, 6);
    p.serviciosPorStream = {1, dado.entre(1, 8)};
    p.redes = dado.entre(1, 3);
    p.clavesRepetidas = dado.porcentaje(25);
    p.streamSinNumero = dado.porcentaje(10);
    p.porcentajeTranscoding = dado.porcentaje(60) ? dado.entre(5, 60) : 0;
    p.porcentajeClones = dado.porcentaje(30) ? dado.entre(5, 40) : 0;
    p.modulos = dado.entre(1, 4);
    p.entradas = {dado.entre(0, 1), 2};
    p.salidas = {dado.entre(0, 1), 3};
    p.bitrateSalida = {dado.entre(5000, 20000), 38000};
    p.pidsModulo = {dado.entre(2, 10), dado.entre(10, 30)};
    p.transcoders = {0, dado.entre(0, 4)};
    p.holgura = dado.porcentaje(30) ? Holgura::JUSTA : Holgura::ESCASA;
    return p;
}

} // namespace generador
