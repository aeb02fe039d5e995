// The generator of head-ends: the same from a seed on every platform, of the size and tightness asked for.

#include "Generador.h"

#include <set>

#include <gtest/gtest.h>

#include "support/Registro.h"

namespace Generador_test {

using namespace zarven;
using generador::Dado;
using generador::Holgura;
using generador::Parametros;

namespace {

void generar(tRecalculo& motor, const Parametros& p) {
    registro::vaciar();
    registro::callar();
    generador::cargar(motor, p);
    registro::vaciar();
}

// Bitrate of all services for every hundred that the outputs have.
std::uint64_t ocupacion(Holgura holgura) {
    Parametros p;
    p.holgura = holgura;
    tRecalculo motor;
    generar(motor, p);
    std::uint64_t pedido = 0;
    std::uint64_t hay = 0;
    for (const auto& servicio : motor.listaServicios)
        pedido += servicio->peakBitRate;
    for (const auto& [mac, modulo] : motor.Mapa_ModulosCabecera_Inicial)
        for (const auto& [id, salida] : modulo.mapSalidas)
            hay += salida.BitRateMax;
    return pedido * 100 / hay;
}

} // namespace

TEST(Dado, GivesTheSameNumbersEverywhere) {
    // std::mt19937 of seed 1 begins with 1791095845 and 4282876139.
    Dado dado(1);
    EXPECT_EQ(dado.entre(1, 100), 42U);
    EXPECT_EQ(dado.entre(1, 100), 100U);
}

TEST(Dado, KeepsToItsRangeAndReachesBothEnds) {
    Dado dado(7);
    bool menor = false;
    bool mayor = false;
    for (int n = 0; n < 1000; ++n) {
        const unsigned numero = dado.entre(3, 5);
        ASSERT_TRUE(numero >= 3 && numero <= 5);
        menor = menor || numero == 3;
        mayor = mayor || numero == 5;
    }
    EXPECT_TRUE(menor);
    EXPECT_TRUE(mayor);
    EXPECT_EQ(dado.entre(9, 9), 9U);
}

TEST(Generador, LoadsTheSmallestAndTheLargestHeadEnd) {
    for (const unsigned modulos : {30U, 960U}) {
        Parametros p;
        p.modulos = modulos;
        p.streams = modulos == 30 ? 50 : 1600;
        tRecalculo motor;
        generar(motor, p);
        EXPECT_EQ(motor.Mapa_ModulosCabecera_Inicial.size(), modulos);
        EXPECT_EQ(motor.listaServicios.size(), p.streams * 10);
        const tRec_Modulo& primero = motor.Mapa_ModulosCabecera_Inicial.begin()->second;
        EXPECT_TRUE(primero.Controlador);
        EXPECT_EQ(primero.mapEntradas.size(), 2U);
        EXPECT_EQ(primero.mapSalidas.size(), 2U);
        EXPECT_EQ(primero.mapSalidas.at(1).BitRateMax, 38000U);
        EXPECT_EQ(primero.PIDsModuloMax, 30);
    }
}

TEST(Generador, TightnessIsWhatTheServicesNeedOfWhatThereIs) {
    EXPECT_NEAR(static_cast<double>(ocupacion(Holgura::AMPLIA)), 50, 3);
    EXPECT_NEAR(static_cast<double>(ocupacion(Holgura::JUSTA)), 85, 4);
    EXPECT_NEAR(static_cast<double>(ocupacion(Holgura::ESCASA)), 120, 5);
}

TEST(Generador, KeysAreGivenOnceOrShared) {
    for (const bool repetidas : {false, true}) {
        Parametros p;
        p.clavesRepetidas = repetidas;
        tRecalculo motor;
        generar(motor, p);
        std::set<long> claves;
        for (const auto& servicio : motor.listaServicios)
            claves.insert(servicio->idService);
        EXPECT_EQ(claves.size(), repetidas ? 10U : 500U);
    }
}

TEST(Generador, ClonesTranscodingAndPidsCome) {
    Parametros p;
    p.porcentajeClones = 50;
    p.porcentajeTranscoding = 50;
    p.pidsPorServicio = 2;
    p.streamSinNumero = true;
    tRecalculo motor;
    generar(motor, p);
    EXPECT_NEAR(static_cast<double>(motor.listaServiciosClonados.size()), 250, 50);
    std::size_t transcoding = 0;
    for (const auto& servicio : motor.listaServicios) {
        transcoding += servicio->Transcoding;
        EXPECT_EQ(servicio->MapaPIDs.size(), 2U);
    }
    EXPECT_NEAR(static_cast<double>(transcoding), 250, 50);
    EXPECT_EQ(motor.Mapa_ONIDs_Inicial.count(0), 1U);
    EXPECT_EQ(motor.Mapa_ONIDs_Inicial.at(0).MapRec_TSIDs.count(0), 1U);
}

} // namespace Generador_test
