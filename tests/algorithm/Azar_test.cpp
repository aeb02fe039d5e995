// Whole runs over random head-ends: each keeps the invariants, ends within its bound, comes to the same
// result without a debug log and to the one that was recorded; and all together they reach every branch of
// the pass.

#include <array>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <syslog.h>

#include <gtest/gtest.h>

#include "Generador.h"
#include "algorithm/Cota.h"
#include "algorithm/Escena.h"
#include "algorithm/Resumen.h"
#include "support/Invariantes.h"
#include "support/Lineas.h"
#include "support/Registro.h"
#include "support/SinDepuracion.h"
#include "support/Transcripcion.h"
#include "tRecalculo.h"

using namespace zarven;
using generador::Dado;
using generador::Holgura;
using generador::Parametros;

namespace {

// Enough for every branch. A slower build (valgrind) may ask for fewer, which are checked all the same.
constexpr std::uint32_t CORRIDAS = 2000;
std::uint32_t corridas() {
    const char* pedidas = std::getenv("RECALCULO_RANDOM_RUNS");
    if (pedidas == nullptr)
        return CORRIDAS;
    std::uint32_t n = 0;
    const char* fin = pedidas + std::strlen(pedidas);
    const auto [leido, error] = std::from_chars(pedidas, fin, n);
    return error == std::errc() && leido == fin ? n : 0;
}

// So many runs share one line of the record.
constexpr std::uint32_t POR_LINEA = 10;
constexpr char GRABADAS[] = "random_runs";

// The most lines that a dump of one of these services takes (none has PIDs).
constexpr std::size_t LINEAS_DE_SERVICIO = 12;

// A line that tells of a branch, and how often it must be met in all the runs, so that the generator does
// not go stale.
struct Rama {
    std::string principio;
    std::size_t minimo;
    std::size_t veces = 0;
};

class Ramas {
public:
    void leer(const std::string& linea) {
        for (Rama& rama : porLetra[letra(linea)])
            rama.veces += linea.compare(0, rama.principio.size(), rama.principio) == 0;
    }
    void comprobar() const {
        for (const auto& grupo : porLetra)
            for (const Rama& rama : grupo)
                EXPECT_GE(rama.veces, rama.minimo) << rama.principio;
    }

    Ramas() {
        for (const Rama& rama : {
                 // fills, check, uncomplete modules
                 Rama{lineas::RELLENO_SIN_TRANSCODING, 1000},
                 Rama{lineas::COMPROBACION, 1000},
                 Rama{lineas::INCOMPLETOS, 1000},
                 Rama{"exists_Transcoding_Services 1", 1000},
                 // unify
                 Rama{lineas::CANDIDATO, 1000},
                 Rama{"El intercambio no es problema para la CAM", 1000},
                 Rama{lineas::REUNION, 200},
                 Rama{lineas::COMPLETAR_TRAS_REUNION, 200},
                 Rama{lineas::COMPLETAR_TRAS_UNION, 10},
                 // optimize
                 Rama{" Añadiremos el servicio principal", 200},
                 Rama{lineas::NO_QUITAR_PRINCIPAL, 50},
                 Rama{lineas::NO_QUITAR_AUXILIAR, 2},
                 Rama{lineas::NO_LLEVAR_PRINCIPAL, 5},
                 Rama{lineas::NO_TRAER_AUXILIAR, 5},
                 Rama{lineas::NO_PONER_ORIGINAL, 50},
                 Rama{"clear = 0", 50},
                 Rama{"clear = 1", 50},
                 Rama{"clear = 2", 5},
                 Rama{" Hemos hecho 4 vueltas", 500},
                 Rama{lineas::TRAS_OPTIMIZAR_NADA, 500},
                 // the fix-up
                 Rama{"PRIMERA ENTRADA VACIA", 200},
                 Rama{"SUSTITUIMOS CON OTRA ENTRADA", 200},
                 // the driver
                 Rama{"END OPTION", 200},
                 Rama{lineas::QUEDAN_SERVICIOS, 1000},
                 Rama{"Encontrado el Servicio Padre", 200},
             })
            porLetra[letra(rama.principio)].push_back(rama);
    }

private:
    // The second letter tells most of them apart.
    static std::size_t letra(const std::string& texto) {
        return texto.size() < 2 ? 0 : static_cast<unsigned char>(texto[1]);
    }
    std::array<std::vector<Rama>, 256> porLetra;
};

// A module with two inputs, and a few streams that spread over the modules: where services stay out, there
// is something to exchange.
Parametros paraOptimizar(Dado& dado) {
    Parametros p;
    p.streams = dado.entre(2, 4);
    p.serviciosPorStream = {2, 6};
    p.modulos = dado.entre(2, 3);
    p.entradas = {2, 2};
    p.bitrateSalida = {10000, 38000};
    if (dado.porcentaje(25)) {
        p.salidas = {1, 1};
        p.pidsModulo = {60, 60};
    } else {
        p.salidas = {1, 2};
        p.pidsModulo = {10, 40};
        p.porcentajeTranscoding = dado.entre(20, 50);
        p.transcoders = {0, 4};
        p.clavesRepetidas = dado.porcentaje(30);
    }
    return p;
}

// Of every kind and tightness.
Parametros cualquiera(Dado& dado) {
    Parametros p;
    p.streams = dado.entre(1, 5);
    const unsigned servicios = dado.entre(1, 4);
    p.serviciosPorStream = {dado.entre(0, servicios), servicios};
    p.redes = dado.entre(1, 3);
    p.clavesRepetidas = dado.porcentaje(25);
    p.streamSinNumero = dado.porcentaje(10);
    p.porcentajeTranscoding = dado.porcentaje(50) ? dado.entre(5, 60) : 0;
    p.porcentajeClones = dado.porcentaje(50) ? dado.entre(5, 40) : 0;
    p.modulos = dado.entre(1, 4);
    const unsigned entradas = dado.entre(1, 3);
    p.entradas = {dado.entre(0, entradas), entradas};
    const unsigned salidas = dado.entre(1, 2);
    p.salidas = {dado.entre(0, salidas), salidas};
    p.bitrateSalida = {dado.entre(5000, 20000), 38000};
    p.pidsModulo = {dado.entre(2, 10), dado.entre(10, 30)};
    p.transcoders = {0, dado.entre(0, 4)};
    p.holgura = dado.porcentaje(20)   ? Holgura::AMPLIA
                : dado.porcentaje(40) ? Holgura::JUSTA
                                      : Holgura::ESCASA;
    return p;
}

Parametros parametros(std::uint32_t semilla) {
    Dado dado(semilla * 2654435761U);
    Parametros p = dado.porcentaje(70) ? paraOptimizar(dado) : cualquiera(dado);
    p.semilla = semilla;
    return p;
}

// Who stands where, and every counter.
std::string huella(const tMapaServicios& servicios) {
    std::string texto;
    for (const auto& [clave, servicio] : servicios)
        texto += " " + std::to_string(clave) + "(" + std::to_string(servicio->SID) + ")";
    return texto + ";";
}
std::string huella(const tRecalculo& motor) {
    std::string texto;
    for (const auto& [mac, modulo] : motor.Mapa_ModulosCabecera_Final) {
        texto += mac;
        for (const unsigned short contador :
             {modulo.PIDsModulo, modulo.SD_Transcoding, modulo.HD_Transcoding, modulo.AUX_Transcoding})
            texto += " " + std::to_string(contador);
        for (const auto& [numero, entrada] : modulo.mapEntradas)
            texto += " in " + std::to_string(entrada.ONID) + "/" + std::to_string(entrada.TSID) +
                     huella(entrada.MapaServicios);
        for (const auto& [id, salida] : modulo.mapSalidas)
            texto += " out " + std::to_string(salida.BitRateActual) + "x" +
                     std::to_string(salida.NumServicios) + huella(salida.MapaServicios);
        texto += "\n";
    }
    for (const auto& [onid, rec_onid] : motor.Mapa_ONIDs_Final)
        for (const auto& [tsid, rec_tsid] : rec_onid.MapRec_TSIDs)
            texto += std::to_string(onid) + "/" + std::to_string(tsid) + huella(rec_tsid.MapRec_Services);
    return texto + " clones " + std::to_string(motor.listaServiciosClonados.size());
}

// What a run leaves behind: the result, the pauses and the lines above debug.
struct Rastro {
    std::string resultado;
    std::vector<unsigned> pausas;
    std::vector<std::string> avisos;

    explicit Rastro(const tRecalculo& motor) : resultado(huella(motor)), pausas(registro::pausas()) {
        for (const std::string& hecho : registro::hechos())
            if (hecho.compare(0, 2, "5 ") == 0 || hecho.compare(0, 2, "3 ") == 0)
                avisos.push_back(hecho);
    }
};

// What the runs do and end in, in the form of the record: a line for every ten seeds.
class Registradas {
public:
    // To be called after each run, while its log stands; a line is compared as soon as it is whole.
    void leer(std::uint32_t semilla, const Rastro& rastro) {
        for (const std::string& hecho : registro::hechos())
            if (hecho.compare(0, 4, "7 ||") != 0) // the dumps show what the result holds
                suma.anadir(hecho);
        suma.anadir(rastro.resultado);
        if (semilla % POR_LINEA != 0)
            return;
        lineas.push_back(std::to_string(semilla) + " " + suma.texto());
        suma = {};
        if (!grabado::grabando() && lineas.size() <= esperadas.size()) {
            EXPECT_EQ(lineas.back(), esperadas[lineas.size() - 1]) << "one of the last ten runs";
        }
    }

    void terminar() const {
        if (!grabado::grabando()) {
            EXPECT_EQ(esperadas.size(), CORRIDAS / POR_LINEA);
            return;
        }
        ASSERT_EQ(lineas.size(), CORRIDAS / POR_LINEA) << "a record needs all runs";
        grabado::escribir(GRABADAS, lineas);
    }

private:
    const std::vector<std::string> esperadas =
        grabado::grabando() ? std::vector<std::string>() : grabado::leer(GRABADAS);
    std::vector<std::string> lineas;
    resumen::Resumen suma;
};

// One run of one head-end.
class Corrida {
public:
    explicit Corrida(const Parametros& p) {
        generador::cargar(motor, p);
        registro::vaciar();
    }

    // With everything checked along the way.
    void vigilada(Ramas& ramas) {
        invariantes::Vigilante vigilante(motor);
        cota::Cota cota(motor, LINEAS_DE_SERVICIO);
        registro::escuchar([&](const std::string& linea) {
            cota.leer(linea);
            if (linea.compare(0, 2, "||") == 0)
                return; // a dump
            ramas.leer(linea);
            vigilante.leer(linea);
        });
        correr();
        if (testing::Test::HasFatalFailure())
            return;
        EXPECT_LE(registro::total(), cota.concedidas());

        vigilante.comprobarResultado();
        EXPECT_TRUE(vigilante.violaciones().empty()) << vigilante.violaciones().front();
        EXPECT_GE(vigilante.comprobaciones(), 4U);
        limpia = !vigilante.historia().fallo && !vigilante.historia().claveCompartida;
    }

    // With the debug level masked, as a host has it that keeps no debug log.
    void callada() {
        const SinDepuracion silencio;
        correr();
    }

    tRecalculo motor;
    // Nothing happened in the last pass that suspends most of the rules.
    bool limpia = false;

private:
    void correr() {
        int resultado = 0;
        ASSERT_NO_THROW(resultado = motor.Main_Recalculo());
        registro::escuchar({});
        ASSERT_EQ(resultado, 1);
    }
};

// A head-end with one module and one service that is unassigned, and the bound of its run.
struct Aqui : escena::Escena {
    Aqui() : Escena({escena::modulo("A", 1, {20000}, 0)}) { libre(escena::datos(1, 1)); }
    cota::Cota cota{motor, LINEAS_DE_SERVICIO};
};

void repetir(cota::Cota& cota, const std::string& linea) {
    for (int n = 0; n < 1000; ++n)
        cota.leer(linea);
}

} // namespace

TEST(Azar, RunsKeepTheInvariantsAndEndWithinTheirBoundAndReachEveryBranch) {
    const std::uint32_t cuantas = corridas();
    ASSERT_NE(cuantas, 0U) << "RECALCULO_RANDOM_RUNS is not a number of runs";
    Registradas registradas;
    Ramas ramas;
    std::size_t limpias = 0;
    for (std::uint32_t semilla = 1; semilla <= cuantas && !HasFailure(); ++semilla) {
        SCOPED_TRACE("seed " + std::to_string(semilla));
        Corrida corrida(parametros(semilla));
        corrida.vigilada(ramas);
        limpias += corrida.limpia;
        const Rastro rastro(corrida.motor);
        registradas.leer(semilla, rastro);

        // Where nobody reads the debug log the engine takes shorter ways to the same end.
        Corrida otra(parametros(semilla));
        otra.callada();
        const Rastro callado(otra.motor);
        EXPECT_EQ(callado.resultado, rastro.resultado);
        EXPECT_EQ(callado.pausas, rastro.pausas);
        EXPECT_EQ(callado.avisos, rastro.avisos);
    }
    registro::vaciar();
    registradas.terminar();
    if (HasFailure() || cuantas < CORRIDAS)
        return;
    ramas.comprobar();
    EXPECT_GE(limpias, CORRIDAS / 2);
}

// ---- The bound itself ---------------------------------------------------------------------------------

TEST(Cota, EndsARunThatLogsTooMuch) {
    Aqui e;
    EXPECT_THROW(repetir(e.cota, "a line"), std::runtime_error);
}

TEST(Cota, GrantsAStateWhatItsSizeAllows) {
    // The check logs its own line; two more would be the fix-up's.
    Aqui e;
    e.cota.leer(lineas::COMPROBACION);
    e.cota.leer("PRIMERA ENTRADA VACIA");
    e.cota.leer("SUSTITUIMOS CON OTRA ENTRADA");
    EXPECT_THROW(e.cota.leer("one more"), std::runtime_error);
}

TEST(Cota, EndsAPassThatGoesThroughTooManyStates) {
    Aqui e;
    EXPECT_THROW(repetir(e.cota, lineas::UNIFICAR), std::runtime_error);
}

TEST(Cota, EndsASweepWithTooManyServicesInHand) {
    Aqui e;
    e.cota.leer(lineas::OPTIMIZAR);
    e.cota.leer("soy el servicio nº1");
    EXPECT_THROW(e.cota.leer("soy el servicio nº2"), std::runtime_error);
}

TEST(Cota, EndsAPassThatOptimizesTooOften) {
    Aqui e;
    for (int n = 0; n < 4; ++n) {
        e.cota.leer(lineas::OPTIMIZAR);
        e.cota.leer(" Hemos hecho " + std::to_string(n + 1) + " vueltas del Optimize");
    }
    EXPECT_THROW(e.cota.leer(lineas::OPTIMIZAR), std::runtime_error);
}
