// Whole head-ends, large ones included: loaded, run with the debug level logged, run again without, and ended
// at a bound of lines. The two runs must come to the same result, and what was loaded must stay.

#include <algorithm>
#include <syslog.h>

#include "Generador.h"
#include "fuzz/Bytes.h"
#include "fuzz/Exigir.h"
#include "support/Huella.h"
#include "support/Testigo.h"
#include "tRecalculo.h"

using namespace zarven;
using fuzz::Bytes;
using fuzz::exigir;

namespace {

// Large head-ends come to their end where they are masked only; a logged run costs up to a second.
constexpr std::size_t LLAMADAS_CALLADO = 40000;
constexpr std::size_t LLAMADAS_REGISTRADO = 15000;

void cargarModulo(tRecalculo& motor, Bytes& bytes, unsigned n) {
    const std::string mac = bytes.una_de(16) ? bytes.texto() : std::string(1, static_cast<char>('A' + n));
    const unsigned short salidas = bytes.corto(3);
    if (motor.addModulo(mac, bytes.una_de(16) ? bytes.corto() : 3, bytes.corto(4), salidas, bytes.corto(40),
                        n == 0 || bytes.una_de(16)) != tRecalculo::RETURN_OK)
        return;
    for (unsigned short id = 1; id <= std::min<unsigned short>(salidas, 8); ++id)
        motor.configurarSalida(mac, id, bytes.largo());
    tRec_Modulo& modulo = motor.Mapa_ModulosCabecera_Inicial.find(mac)->second;
    modulo.SD_MAX_Transcoding = bytes.corto(4);
    modulo.HD_MAX_Transcoding = bytes.corto(4);
    modulo.AUX_MAX_Transcoding = bytes.corto(4);
}

void cargarServicio(tRecalculo& motor, Bytes& bytes) {
    const auto s = std::make_shared<tRec_Servicio>();
    s->idService = bytes.una_de(32) ? -static_cast<long>(bytes.corto()) : bytes.corto(200);
    s->SID = s->OSID = bytes.corto(200);
    s->ONID = bytes.corto(2);
    s->TSID = bytes.corto(6);
    s->number_PIDs_CA = bytes.corto(6);
    s->number_PIDs_CA_Max = bytes.corto(12);
    s->peakBitRate = bytes.largo() / 4;
    s->VideoFormatE = bytes.corto(5);
    s->Transcoding = bytes.una_de(4) ? bytes.corto(2) : static_cast<unsigned short>(0);
    s->Parent_SID = bytes.una_de(32) ? bytes.corto(200) : static_cast<unsigned short>(0);
    const int codigo = motor.addRec_Servicio(s);
    exigir(codigo == tRecalculo::RETURN_OK || codigo == tRecalculo::ERROR_CLON_SIN_PADRE,
           "the code of a service");
}

void cargarUnoAUno(tRecalculo& motor, Bytes& bytes) {
    const unsigned modulos = bytes.entre(1, 12);
    for (unsigned n = 0; n < modulos; ++n)
        cargarModulo(motor, bytes, n);
    while (bytes.quedan())
        cargarServicio(motor, bytes);
}

// Of a seed; one in eight is large, with up to 2400 services on 120 modules.
void generar(tRecalculo& motor, Bytes& bytes) {
    generador::Parametros p;
    const bool grande = bytes.una_de(8);
    p.semilla = bytes.largo();
    p.streams = bytes.entre(0, grande ? 200 : 12);
    p.serviciosPorStream = {0, bytes.entre(1, 12)};
    p.redes = bytes.entre(1, 4);
    p.clavesRepetidas = bytes.una_de(3);
    p.streamSinNumero = bytes.una_de(8);
    p.porcentajeTranscoding = bytes.entre(0, 100);
    p.porcentajeClones = bytes.entre(0, 100);
    p.pidsPorServicio = bytes.entre(0, 2);
    p.modulos = bytes.entre(1, grande ? 120 : 8);
    p.entradas = {0, bytes.entre(1, 8)};
    p.salidas = {0, bytes.entre(1, 4)};
    p.bitrateSalida = {0, std::max(bytes.largo(), 1U)};
    p.pidsModulo = {0, bytes.corto(60)};
    p.transcoders = {0, bytes.entre(0, 6)};
    p.holgura = static_cast<generador::Holgura>(bytes.entre(0, 2));
    generador::cargar(motor, p);
}

struct Fin {
    bool detenida = false;
    int codigo = 0;
    std::uint64_t resultado = 0;
    std::size_t segundos = 0;
};

Fin correr(const std::uint8_t* datos, std::size_t cuantos, int mascara) {
    Bytes bytes(datos, cuantos);
    tRecalculo motor;
    Fin fin;
    ::setlogmask(mascara);
    const std::size_t limite = mascara == LOG_UPTO(LOG_DEBUG) ? LLAMADAS_REGISTRADO : LLAMADAS_CALLADO;
    testigo::empezar(limite);
    try {
        if (bytes.una_de(2))
            generar(motor, bytes);
        else
            cargarUnoAUno(motor, bytes);
    } catch (const testigo::Detenida&) {
        fin.detenida = true; // a module of tens of thousands of inputs is dumped as it is loaded
        return fin;
    }
    const std::uint64_t cargado = huella::cargado(motor);
    testigo::empezar(limite);
    try {
        fin.codigo = motor.Main_Recalculo();
        fin.resultado = huella::resultado(motor);
        fin.segundos = testigo::visto().segundos;
    } catch (const testigo::Detenida&) {
        exigir(huella::cargado(motor) == cargado, "what was loaded is whole after a run that was ended");
        fin.detenida = true;
    }
    return fin;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* datos, std::size_t cuantos) {
    const Fin callado = correr(datos, cuantos, LOG_UPTO(LOG_NOTICE));
    if (callado.detenida)
        return 0;
    const Fin registrado = correr(datos, cuantos, LOG_UPTO(LOG_DEBUG));
    if (registrado.detenida)
        return 0;
    exigir(callado.codigo == registrado.codigo, "the mask does not change the code");
    exigir(callado.resultado == registrado.resultado, "the mask does not change the result");
    exigir(callado.segundos == registrado.segundos, "the mask does not change the pauses");
    return 0;
}
