// A host ends a run by throwing from its syslog or sleep: what was loaded is whole, and the engine runs again
// as one that was never disturbed. At every call of both functions.

#include <cstdio>
#include <cstring>
#include <stdexcept>
#include <string>
#include <syslog.h>

#include <gtest/gtest.h>

#include "support/Cabeceras.h"
#include "support/Huella.h"
#include "support/Lineas.h"
#include "support/SinDepuracion.h"
#include "support/Testigo.h"
#include "tRecalculo.h"

using namespace zarven;

namespace {

// What is known of a head-end: how it is loaded, and what a run of it comes to that nothing disturbs.
struct Corrida {
    explicit Corrida(std::uint32_t semilla) : parametros(cabeceras::pequena(semilla)) {
        tRecalculo motor;
        generador::cargar(motor, parametros);
        cargado = huella::cargado(motor);
        testigo::empezar();
        EXPECT_EQ(motor.Main_Recalculo(), tRecalculo::RETURN_OK);
        visto = testigo::visto();
        resultado = huella::resultado(motor);
    }

    // Ends a run at the call of that number, and lets the engine run again.
    void parar(std::size_t llamada) const {
        tRecalculo motor;
        testigo::empezar();
        generador::cargar(motor, parametros);
        testigo::empezar(llamada);
        ASSERT_THROW(motor.Main_Recalculo(), testigo::Detenida);
        ASSERT_EQ(testigo::visto().llamadas, llamada + 1);
        ASSERT_EQ(huella::cargado(motor), cargado);
        seguir(motor);
    }

    void seguir(tRecalculo& motor) const {
        testigo::empezar();
        ASSERT_EQ(motor.Main_Recalculo(), tRecalculo::RETURN_OK);
        ASSERT_EQ(testigo::visto().llamadas, visto.llamadas);
        ASSERT_EQ(testigo::visto().huella.valor(), visto.huella.valor());
        ASSERT_EQ(huella::resultado(motor), resultado);
    }

    generador::Parametros parametros;
    std::uint64_t cargado = 0;
    std::uint64_t resultado = 0;
    testigo::Visto visto;
};

// The log is masked as a controller has it, or not at all.
class Parada : public testing::TestWithParam<int> {
    const Mascara mascara{GetParam()};
};

INSTANTIATE_TEST_SUITE_P(Mascaras, Parada, testing::Values(LOG_UPTO(LOG_DEBUG), LOG_UPTO(LOG_NOTICE)),
                         [](const auto& mascara) {
                             return mascara.param == LOG_UPTO(LOG_DEBUG) ? "logged" : "masked";
                         });

// What the run of a test reaches.
struct Alcanzado {
    unsigned unify = 0;
    unsigned optimize = 0;
    unsigned clones = 0;
    unsigned fallos = 0;
};
Alcanzado alcanzado;

void anotar(int, const char* linea, unsigned) {
    const auto empieza = [linea](const char* texto) {
        return std::strncmp(linea, texto, std::strlen(texto)) == 0;
    };
    alcanzado.unify += empieza(lineas::REUNION);
    alcanzado.optimize += empieza("clear = ");
    alcanzado.clones += empieza("Encontrado el Servicio Padre");
    alcanzado.fallos += empieza(lineas::FALLO_DE_PERMUTA);
}

Alcanzado alcanzar(std::uint32_t semilla) {
    tRecalculo motor;
    generador::cargar(motor, cabeceras::pequena(semilla));
    alcanzado = Alcanzado();
    testigo::empezar();
    testigo::escuchar(anotar);
    motor.Main_Recalculo();
    return alcanzado;
}

} // namespace

TEST_P(Parada, TheRunsReachGatheringsExchangesClonesAndFailures) {
    const Alcanzado conTodo = alcanzar(cabeceras::CON_TODO);
    EXPECT_NE(conTodo.unify, 0U);
    EXPECT_NE(conTodo.optimize, 0U);
    EXPECT_NE(conTodo.clones, 0U);
    EXPECT_NE(alcanzar(cabeceras::CON_FALLOS).fallos, 0U);
}

TEST_P(Parada, AtAnyCallTheEngineStaysWholeAndRunsAgain) {
    const Corrida corrida(cabeceras::CON_TODO);
    for (std::size_t llamada = 0; llamada < corrida.visto.llamadas && !HasFatalFailure(); ++llamada) {
        SCOPED_TRACE("call " + std::to_string(llamada));
        corrida.parar(llamada);
    }
    std::printf("ended at each of %zu calls\n", corrida.visto.llamadas);
}

// Four strategies, and exchanges that fail half way; at some hundred calls.
TEST_P(Parada, WithServicesLeftOutTheEngineStaysWholeAndRunsAgain) {
    const Corrida corrida(cabeceras::CON_FALLOS);
    const std::size_t paso = corrida.visto.llamadas / 150 + 1;
    for (std::size_t llamada = 0; llamada < corrida.visto.llamadas && !HasFatalFailure(); llamada += paso) {
        SCOPED_TRACE("call " + std::to_string(llamada));
        corrida.parar(llamada);
    }
}

// Ended once at every call, one after the other, and never run to its end in between.
TEST_P(Parada, OneEngineIsEndedAgainAndAgain) {
    const Corrida corrida(cabeceras::CON_TODO);
    tRecalculo motor;
    testigo::empezar();
    generador::cargar(motor, corrida.parametros);
    for (std::size_t llamada = corrida.visto.llamadas; llamada-- != 0;) {
        testigo::empezar(llamada);
        ASSERT_THROW(motor.Main_Recalculo(), testigo::Detenida);
    }
    ASSERT_EQ(huella::cargado(motor), corrida.cargado);
    corrida.seguir(motor);
}

// A run that is told to be ended by time, as a host would do it.
TEST_P(Parada, TheHostsOwnExceptionArrives) {
    struct Harto : std::runtime_error {
        using std::runtime_error::runtime_error;
    };
    tRecalculo motor;
    testigo::empezar();
    generador::cargar(motor, cabeceras::pequena(cabeceras::CON_TODO));
    testigo::empezar();
    testigo::escuchar([](int, const char*, unsigned) {
        if (testigo::visto().segundos > 5)
            throw Harto("enough");
    });
    EXPECT_THROW(motor.Main_Recalculo(), Harto);
    EXPECT_GT(testigo::visto().segundos, 5U);
    EXPECT_LT(testigo::visto().segundos, 12U);
}

// Loading logs, too.
TEST(ParadaAlCargar, ALineOfLoadingThatThrowsLeavesTheElementWholeOrOut) {
    tRecalculo motor;
    testigo::empezar(3);
    EXPECT_THROW(motor.addModulo("A", 3, 2, 2, 10, true), testigo::Detenida);
    EXPECT_TRUE(motor.Mapa_ModulosCabecera_Inicial.empty());
    testigo::empezar();
    EXPECT_EQ(motor.addModulo("A", 3, 2, 2, 10, true), tRecalculo::RETURN_OK);

    const auto servicio = std::make_shared<tRec_Servicio>();
    servicio->SID = 7;
    EXPECT_EQ(motor.addRec_Servicio(servicio), tRecalculo::RETURN_OK);
    auto pid = std::make_unique<tRec_PID>();
    pid->SID = 7;
    testigo::empezar(0);
    EXPECT_THROW(motor.addRec_PID(std::move(pid)), testigo::Detenida);
    EXPECT_EQ(servicio->MapaPIDs.size(), 1U);
    EXPECT_EQ(servicio->MapaPIDs.begin()->second->pServicio, servicio.get());
}
