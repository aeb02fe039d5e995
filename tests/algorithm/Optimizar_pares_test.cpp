// The tests on a pair of services, each at its limit.
//
// In the scene as it is the exchange leaves A with 6000 of bitrate and B with 3000.

#include <gtest/gtest.h>

#include "algorithm/EscenaDePermuta.h"
#include "support/Lineas.h"

namespace Optimizar_pares_test {

using namespace permuta;
using vista::indice;
using vista::PasadaVista;
using vista::Tramo;

namespace {

using Hechos = std::vector<std::string>;

constexpr char BITRATE[] = " Mirar si el cambio también es viable también teniendo en cuenta los BitRate";

class Par : public testing::Test {
protected:
    EscenaDePermuta e;
};

} // namespace

// ---- Which services are weighed -----------------------------------------------------------------------

TEST_F(Par, ThePairIsLoggedFromTheOutputsToTheLastTest) {
    e.completo();
    const Tramo t = e.optimizar();
    EXPECT_EQ(
        t.desde(" MAC 1 A itSalida", PERMUTA),
        (Hechos{"7  MAC 1 A itSalida 1", "7 itService_Salida->first 10", "sleep 1",
                "7  MAC 2 B itSalida_Aux 1", "7 itService_Salida_Aux->first 20", "sleep 10",
                "7  Evaluando nuevo Servicio Principal 10", "7  Evaluando nuevo Servicio Auxiliar 20",
                "7 if ( itService_Salida_Aux->second->TSID != TSID ) continue;", lineas::hecho(OTRA_CLAVE),
                "7  1. Si el número de pids libres en el módulo .... idService 10 idService_Aux 20 "
                "idService_Out 30",
                "7  Mirar si el cambio también es viable también teniendo en cuenta los BitRate",
                "sleep 1"}));
    EXPECT_EQ(t.cuantasEmpiezan(PERMUTA), 1U);
}

TEST_F(Par, EveryOutputOfMac1IsDumpedAgainForEveryOutputOfMac0) {
    EscenaDePermuta dos({10000, 20000}, {30000, 40000});
    dos.puesto("A", 1, 1, datos(1, ORIGINAL));
    dos.puesto("A", 1, 1, datos(2, ORIGINAL));
    dos.puesto("B", 1, 2, datos(3, OTRO));
    dos.original();
    EXPECT_EQ(dos.optimizar().desde(" MAC 1 A itSalida", " Hemos hecho"),
              (Hechos{"7  MAC 1 A itSalida 1",
                      "7 itService_Salida->first 1",
                      "7 itService_Salida->first 2",
                      "sleep 1",
                      "7  MAC 2 B itSalida_Aux 1",
                      "sleep 10",
                      "7  Evaluando nuevo Servicio Principal 1",
                      "7  Evaluando nuevo Servicio Principal 2",
                      "7  MAC 2 B itSalida_Aux 2",
                      "7 itService_Salida_Aux->first 3",
                      "sleep 10",
                      "7  Evaluando nuevo Servicio Principal 1",
                      "7  Evaluando nuevo Servicio Principal 2",
                      "7  MAC 1 A itSalida 2",
                      "sleep 1",
                      "7  MAC 2 B itSalida_Aux 1",
                      "sleep 10",
                      "7  MAC 2 B itSalida_Aux 2",
                      "7 itService_Salida_Aux->first 3",
                      "sleep 10"}));
}

TEST_F(Par, APrincipalOfAnotherStreamMeetsNoAuxiliar) {
    e.puesto("A", 1, 1, datos(9, ORIGINAL));
    e.auxiliar();
    e.original();
    EXPECT_EQ(paseo(e.optimizar()),
              (Hechos{"soy el servicio nº1", "Hay servicios sin asignar con  idServicio: (itService_Out) 30",
                      principal(9)}));
}

TEST_F(Par, APrincipalOfTheSameTsidInAnotherNetworkMeetsNoAuxiliar) {
    const Servicio otro = e.principal();
    otro->ONID = 2;
    e.auxiliar();
    e.original();
    const Tramo t = e.optimizar();
    EXPECT_TRUE(t.contiene(principal(10)));
    EXPECT_FALSE(t.contiene(auxiliar(20)));
}

TEST_F(Par, AnAuxiliarOfAnotherStreamIsPassedOver) {
    e.principal();
    e.puesto("B", 1, 1, datos(19, OTRO));
    e.original();
    const Tramo t = e.optimizar();
    EXPECT_TRUE(t.contiene(auxiliar(19)));
    EXPECT_FALSE(t.contiene(MISMO_STREAM));
    EXPECT_EQ(t.cuantasEmpiezan(PERMUTA), 0U);
}

TEST_F(Par, AnAuxiliarOfTheSameTsidInAnotherNetworkIsPassedOver) {
    e.principal();
    const Servicio otro = e.auxiliar();
    otro->ONID = 2;
    e.original();
    const Tramo t = e.optimizar();
    EXPECT_TRUE(t.contiene(auxiliar(20)));
    EXPECT_FALSE(t.contiene(MISMO_STREAM));
    EXPECT_EQ(t.cuantasEmpiezan(PERMUTA), 0U);
}

TEST_F(Par, AnAuxiliarOfTheStreamPassesTheFirstTest) {
    e.completo();
    EXPECT_EQ(e.optimizar().cuantas(MISMO_STREAM), 1U);
}

// ---- Keys ---------------------------------------------------------------------------------------------

TEST_F(Par, ServicesWithTheSameKeyAreNeverExchanged) {
    e.principal(10);
    e.clavar("B", 2, 1, fabrica::servicio(datos(10, COMUN)));
    e.original();
    const Tramo t = e.optimizar();
    EXPECT_EQ(t.cuantas(MISMO_STREAM), 1U);
    EXPECT_FALSE(t.contiene(OTRA_CLAVE));
    EXPECT_EQ(t.cuantasEmpiezan(PIDS_BASTAN), 0U);
    EXPECT_EQ(t.cuantasEmpiezan(PERMUTA), 0U);
}

TEST_F(Par, ServicesWithDifferentKeysGoOn) {
    e.principal(10);
    e.auxiliar(11);
    e.original();
    EXPECT_EQ(e.optimizar().cuantas(OTRA_CLAVE), 1U);
}

// ---- PIDs ---------------------------------------------------------------------------------------------
// The principal frees 5 on A and takes 5 on B, the auxiliar the other way round with 3, the original takes 2.

TEST_F(Par, PidsOfMac0AreEnoughWhenNoneIsLeft) {
    e.completo();
    e.en("A").PIDsModuloMax = 5; // 0 free, and 5 - 3 - 2 = 0 after the exchange
    EXPECT_EQ(e.optimizar().cuantasEmpiezan(PIDS_BASTAN), 1U);
}

TEST_F(Par, OnePidShortOnMac0FailsThePair) {
    e.completo();
    e.en("A").PIDsModuloMax = 4;
    const Tramo t = e.optimizar();
    EXPECT_TRUE(t.contiene(OTRA_CLAVE));
    EXPECT_EQ(t.cuantasEmpiezan(PIDS_BASTAN), 0U);
    EXPECT_EQ(t.cuantasEmpiezan(PERMUTA), 0U);
    EXPECT_FALSE(t.contiene(BITRATE));
}

TEST_F(Par, PidsOfMac1AreEnoughWhenNoneIsLeft) {
    e.completo();
    e.en("B").PIDsModuloMax = 5; // 2 free, and 2 + 3 - 5 = 0
    EXPECT_EQ(e.optimizar().cuantasEmpiezan(PIDS_BASTAN), 1U);
}

TEST_F(Par, OnePidShortOnMac1FailsThePair) {
    e.completo();
    e.en("B").PIDsModuloMax = 4;
    const Tramo t = e.optimizar();
    EXPECT_TRUE(t.contiene(OTRA_CLAVE));
    EXPECT_EQ(t.cuantasEmpiezan(PIDS_BASTAN), 0U);
    EXPECT_EQ(t.cuantasEmpiezan(PERMUTA), 0U);
}

TEST_F(Par, PidsInUseBeyondTheBudgetCountAsNegative) {
    // A uses 20 of 15; the principal would free 10, which leaves room for 3 + 2.
    const Servicio va = e.principal();
    va->number_PIDs_CA = 10;
    e.auxiliar();
    e.original();
    e.en("A").PIDsModulo = 20;
    e.en("A").PIDsModuloMax = 15;
    EXPECT_EQ(e.optimizar().cuantasEmpiezan(PIDS_BASTAN), 1U);

    EscenaDePermuta otra;
    const Servicio corto = otra.principal();
    corto->number_PIDs_CA = 9;
    otra.auxiliar();
    otra.original();
    otra.en("A").PIDsModulo = 20;
    otra.en("A").PIDsModuloMax = 15;
    EXPECT_EQ(otra.optimizar().cuantasEmpiezan(PIDS_BASTAN), 0U);
}

TEST_F(Par, ThePairThatPassesThePidsPauses) {
    e.completo();
    e.salida("A", 1).BitRateMax = 1; // and fails the next test
    const Tramo t = e.optimizar();
    const Hechos tras = t.desde(PIDS_BASTAN);
    ASSERT_GE(tras.size(), 3U);
    EXPECT_EQ(tras[1], std::string("7 ") + BITRATE);
    EXPECT_EQ(tras[2], "sleep 1");
    EXPECT_EQ(t.cuantasEmpiezan(PERMUTA), 0U);
}

// ---- Bitrate ------------------------------------------------------------------------------------------

TEST_F(Par, BitrateOfMac0MustStayUnderTheCeiling) {
    e.completo();
    e.salida("A", 1).BitRateMax = 6001;
    EXPECT_EQ(e.optimizar().cuantasEmpiezan(PERMUTA), 1U);
}

TEST_F(Par, BitrateOfMac0AtTheCeilingFailsThePair) {
    e.completo();
    e.salida("A", 1).BitRateMax = 6000;
    const Tramo t = e.optimizar();
    EXPECT_TRUE(t.contiene(BITRATE));
    EXPECT_EQ(t.cuantasEmpiezan(PERMUTA), 0U);
}

TEST_F(Par, BitrateOfMac1MustStayUnderTheCeiling) {
    e.completo();
    e.salida("B", 1).BitRateMax = 3001;
    EXPECT_EQ(e.optimizar().cuantasEmpiezan(PERMUTA), 1U);
}

TEST_F(Par, BitrateOfMac1AtTheCeilingFailsThePair) {
    e.completo();
    e.salida("B", 1).BitRateMax = 3000;
    const Tramo t = e.optimizar();
    EXPECT_TRUE(t.contiene(BITRATE));
    EXPECT_EQ(t.cuantasEmpiezan(PERMUTA), 0U);
}

TEST_F(Par, ABitrateOfMac0BelowZeroIsALargeOne) {
    // 0 + 400 - 3000 + 2000
    e.principal();
    e.auxiliar();
    e.libre(datos(30, ORIGINAL, 400));
    e.salida("A", 1).BitRateActual = 0;
    EXPECT_EQ(e.optimizar().cuantasEmpiezan(PERMUTA), 0U);
}

TEST_F(Par, ABitrateOfMac1BelowZeroIsALargeOne) {
    // 0 + 3000 - 4000
    e.principal();
    e.puesto("B", 2, 1, datos(20, COMUN, 4000));
    e.original();
    e.salida("B", 1).BitRateActual = 0;
    e.salida("A", 1).BitRateMax = 20000;
    EXPECT_EQ(e.optimizar().cuantasEmpiezan(PERMUTA), 0U);
}

TEST_F(Par, CeilingsBeyond31BitsAreNotNegative) {
    e.completo();
    e.salida("A", 1).BitRateMax = 3000000000U;
    e.salida("B", 1).BitRateMax = 3000000000U;
    EXPECT_TRUE(e.optimizar().contiene("clear = 2"));
}

TEST_F(Par, BothBitratesAreThoseOfTheOutputsOfThePair) {
    // Output 1 of A carries the principal but has no room; output 2 has room, and a principal of its own.
    EscenaDePermuta dos({6000, 6001}, {10000});
    dos.principal(10, 1);
    dos.principal(11, 2);
    dos.auxiliar();
    dos.original();
    const Tramo t = dos.optimizar();
    EXPECT_EQ(t.cuantasEmpiezan(PIDS_BASTAN), 2U);
    EXPECT_TRUE(t.contiene(" Añadiremos el servicio principal ( 11 ) a la lista de servicios sin asignar "));
    EXPECT_EQ(t.cuantasEmpiezan(PERMUTA), 1U);
}

// ---- The input of the exchange stream -----------------------------------------------------------------

TEST(ParSinEntrada, APairThatPassesIsPassedOverWhenMac0HasNoInputForIt) {
    // A receives nothing but stream 1, so the stream to exchange is 0/0, of input 0; B's untuned input
    // matches. Services of a stream without numbers stand on both.
    Escena e({escena::modulo("A", 1, {10000}), escena::modulo("B", 2, {10000})});
    e.sintonizar("A", 1, 1, ORIGINAL);
    e.sintonizar("B", 1, 1, OTRO);
    fabrica::DatosServicio sinNumero = datos(10, 0, 3000, 5);
    sinNumero.onid = 0;
    e.clavar("A", 1, 1, fabrica::servicio(sinNumero));
    sinNumero.clave = 20;
    e.clavar("B", 2, 1, fabrica::servicio(sinNumero));
    e.libre(datos(30, ORIGINAL, 4000, 2));
    const Tramo t = PasadaVista(e.motor, 0, 1).tramo(6);
    EXPECT_TRUE(t.contiene(" MAC 1 A y MAC 2 B "));
    EXPECT_TRUE(t.contiene(" Buscaremos modulos con ONID 0  y TSID 0 NumEntrada 0 "));
    EXPECT_EQ(
        t.desde(PIDS_BASTAN),
        (Hechos{"7  1. Si el número de pids libres en el módulo .... idService 10 idService_Aux 20 "
                "idService_Out 30",
                std::string("7 ") + BITRATE, "sleep 1", "7  Hemos hecho 1 vueltas del Optimize",
                lineas::hecho(lineas::NO_SE_PUEDE_MAS), lineas::hecho(lineas::TRAS_OPTIMIZAR_COMPROBAR)}));
    EXPECT_EQ(indice(t.despues.indice), "1/1[30]");
}

} // namespace Optimizar_pares_test
