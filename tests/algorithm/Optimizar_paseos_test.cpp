// The walks of the optimize phase over services, while exchanges that fail half way change what they walk.

#include <gtest/gtest.h>

#include "algorithm/EscenaDePermuta.h"
#include "support/Lineas.h"

namespace Optimizar_paseos_test {

using namespace permuta;
using vista::entradas;
using vista::indice;
using vista::PasadaVista;
using vista::Tramo;

namespace {

using Hechos = std::vector<std::string>;

std::string enMano(int n) {
    return "soy el servicio nº" + std::to_string(n);
}
std::string clave(int n) {
    return "Hay servicios sin asignar con  idServicio: (itService_Out) " + std::to_string(n);
}

// What was weighed for the first service in hand.
Hechos pares(const Tramo& tramo) {
    Hechos pasos = paseo(tramo);
    pasos.erase(pasos.begin(), pasos.begin() + 2);
    const auto fin = std::find(pasos.begin(), pasos.end(), enMano(2));
    pasos.erase(fin, pasos.end());
    return pasos;
}

} // namespace

// ---- Over the services left out -----------------------------------------------------------------------

TEST(PaseoSinAsignar, WhatIsStagedAheadWaitsForTheNextEntry) {
    // The principal stands on no input, so that the exchange ends with both staged, after service 5.
    EscenaDePermuta e;
    e.principal();
    e.auxiliar();
    e.original(5);
    e.entrada("A", 2).MapaServicios.clear();
    const PasadaVista r = e.pasar();
    const Tramo& primera = r.tramo(6, 1);
    EXPECT_EQ(primera.cuantasEmpiezan("soy el servicio"), 1U);
    EXPECT_TRUE(primera.contiene("Hay servicios ( 1 ) sin asignar con TSID 1 "));
    EXPECT_EQ(indice(primera.despues.indice), "1/1[5 10 20]");

    const Tramo& segunda = r.tramo(6, 2);
    EXPECT_TRUE(segunda.contiene("Hay servicios ( 3 ) sin asignar con TSID 1 "));
    EXPECT_TRUE(segunda.contiene(clave(10)));
    EXPECT_TRUE(segunda.contiene(clave(20)));
}

TEST(PaseoSinAsignar, AServiceThatIsStagedTwiceIsInHandOnce) {
    EscenaDePermuta e;
    e.principal();
    e.auxiliar();
    e.original(5);
    e.entrada("A", 2).MapaServicios.clear();
    const PasadaVista r = e.pasar();
    // Every service in hand stages both once more.
    const Tramo& tercera = r.tramo(6, 3);
    EXPECT_EQ(indice(tercera.antes.indice), "1/1[5 10 10 10 10 20 20 20 20]");
    EXPECT_TRUE(tercera.contiene("Hay servicios ( 9 ) sin asignar con TSID 1 "));
    EXPECT_EQ(tercera.cuantasEmpiezan("soy el servicio"), 3U);
    for (const int n : {5, 10, 20})
        EXPECT_EQ(tercera.cuantas(clave(n)), 1U);
}

TEST(PaseoSinAsignar, TwoServicesOfOneKeyAreBothInHand) {
    Escena e;
    e.libre(datos(30, ORIGINAL));
    e.motor.Mapa_ONIDs.at(1).MapRec_TSIDs.at(1).MapRec_Services.emplace(
        30, fabrica::servicio(datos(30, ORIGINAL)));
    const Tramo t = PasadaVista(e.motor, 0, 1).tramo(6);
    EXPECT_EQ(t.cuantas(clave(30)), 2U);
    EXPECT_TRUE(t.contiene(enMano(2)));
}

TEST(PaseoSinAsignar, AServiceThatHasGoneIsPassedOverAndNotCounted) {
    // Placing the principal 40 on B takes the other 40 out of the index.
    EscenaDePermuta e;
    e.principal(40);
    e.auxiliar(20);
    for (const int n : {30, 40, 50})
        e.original(n);
    EXPECT_EQ(paseo(e.optimizar()),
              (Hechos{enMano(1), clave(30), principal(40), auxiliar(20), "clear = 0", enMano(2), clave(50),
                      principal(20), auxiliar(40), principal(30)}));
}

TEST(PaseoSinAsignar, AnotherServiceOfTheKeyDoesNotStandInForOneThatHasGone) {
    // The principal 40 takes the other 40 along. Come to B, it is staged as the auxiliar of 41, which stands
    // on no input: there is a 40 again, but not the one that waited for its turn.
    EscenaDePermuta e({30000}, {30000});
    const Servicio va = e.principal(40);
    e.principal(41);
    e.entrada("A", 2).MapaServicios.erase(41);
    e.auxiliar(20);
    sinTranscoder(e.original(30));
    e.original(40);
    const Tramo t = e.optimizar();
    EXPECT_EQ(indice(t.despues.indice), "1/1[30 40 41]");
    EXPECT_EQ(t.despues.indice.at(1).MapRec_TSIDs.at(1).MapRec_Services.find(40)->second, va);
    EXPECT_EQ(t.cuantas(clave(40)), 0U);
    EXPECT_EQ(t.cuantasEmpiezan("soy el servicio"), 1U);
}

TEST(PaseoSinAsignar, EveryServiceTakesTheFreePidsAnew) {
    // The first exchange leaves A with 4 more free PIDs, which the second needs.
    EscenaDePermuta e({30000}, {30000});
    e.principal(10)->number_PIDs_CA = 9;
    e.principal(11);
    e.auxiliar(20);
    e.auxiliar(21);
    e.original(30);
    e.original(31)->number_PIDs_CA = 6;
    e.en("A").PIDsModulo = 14;
    e.en("A").PIDsModuloMax = 14;
    const PasadaVista r = e.pasar();
    EXPECT_EQ(r.tramo(6).cuantasEmpiezan("clear = "), 2U);
    EXPECT_TRUE(e.motor.Mapa_ONIDs.empty());
}

// ---- Over the principals ------------------------------------------------------------------------------

TEST(PaseoPrincipales, GoesInAscendingKey) {
    EscenaDePermuta e({30000});
    for (const int n : {12, 10, 11})
        e.principal(n);
    e.original();
    EXPECT_EQ(pares(e.optimizar()), (Hechos{principal(10), principal(11), principal(12)}));
}

TEST(PaseoPrincipales, AServiceThatStandsTwiceOnTheOutputIsVisitedOnce) {
    EscenaDePermuta e({30000});
    e.clavar("A", 2, 1, e.principal(10));
    e.original();
    const Tramo t = e.optimizar();
    EXPECT_EQ(t.cuantas("itService_Salida->first 10"), 2U); // the dump shows what stands there
    EXPECT_EQ(pares(t), (Hechos{principal(10)}));
}

TEST(PaseoPrincipales, TwoServicesOfOneKeyAreBothVisited) {
    EscenaDePermuta e({30000});
    e.principal(10);
    e.clavar("A", 2, 1, fabrica::servicio(datos(10, COMUN)));
    e.original();
    EXPECT_EQ(pares(e.optimizar()), (Hechos{principal(10), principal(10)}));
}

TEST(PaseoPrincipales, AServiceThatHasGoneIsPassedOver) {
    // Taking the first 10 off takes the other along; 11 comes next.
    EscenaDePermuta e({30000});
    sinTranscoder(e.principal(10));
    e.en("A").SD_Transcoding = 1;
    e.clavar("A", 2, 1, fabrica::servicio(datos(10, COMUN)));
    e.puesto("A", 1, 1, datos(11, ORIGINAL));
    e.auxiliar();
    e.original();
    EXPECT_EQ(pares(e.optimizar()), (Hechos{principal(10), auxiliar(20),
                                            std::string(lineas::NO_LLEVAR_PRINCIPAL) + "10", principal(11)}));
}

TEST(PaseoPrincipales, WhatIsMovedIsMetByTheNextWalk) {
    // No transcoder for the original, so that every exchange ends with both services moved. On output 1 of B
    // 11 meets 10, which has just come; 20 is a principal only for output 2 of B.
    EscenaDePermuta e({30000}, {30000, 30000});
    e.principal(10);
    e.principal(11);
    e.auxiliar(20);
    sinTranscoder(e.original());
    EXPECT_EQ(pares(e.optimizar()),
              (Hechos{principal(10), auxiliar(20), std::string(lineas::NO_PONER_ORIGINAL) + "30",
                      principal(11), auxiliar(10), std::string(lineas::NO_PONER_ORIGINAL) + "30",
                      // output 2 of B
                      principal(10), principal(20)}));
}

TEST(PaseoPrincipales, StaysWithThePrincipalInHandUntilTheAuxiliarsAreOver) {
    // 10 is off A after the first auxiliar; the others find it gone, and it is staged each time.
    EscenaDePermuta e({30000}, {30000});
    sinTranscoder(e.principal(10));
    e.en("A").SD_Transcoding = 1;
    e.principal(11)->number_PIDs_CA = 1000; // fits nowhere
    for (const int n : {20, 21, 22})
        e.auxiliar(n);
    e.original();
    const Tramo t = e.optimizar();
    EXPECT_EQ(pares(t), (Hechos{principal(10), auxiliar(20), std::string(lineas::NO_LLEVAR_PRINCIPAL) + "10",
                                auxiliar(21), std::string(lineas::NO_QUITAR_PRINCIPAL) + "10", auxiliar(22),
                                std::string(lineas::NO_QUITAR_PRINCIPAL) + "10", principal(11), auxiliar(21),
                                auxiliar(22)}));
    EXPECT_EQ(indice(t.despues.indice), "1/1[10 10 10 20 21 22 30]");
}

TEST(PaseoPrincipales, APrincipalInHandIsWeighedWithTheOutputAsItIsNow) {
    // Off its output, 10 no longer counts there: 0 + 4000 - 3000 and what the second auxiliar brings.
    for (const unsigned long trae : {5000UL, 5001UL}) {
        EscenaDePermuta e({6001}, {30000});
        sinTranscoder(e.principal(10));
        e.en("A").SD_Transcoding = 1;
        e.auxiliar(20);
        e.puesto("B", 2, 1, datos(21, COMUN, trae, 3));
        e.original();
        EXPECT_EQ(e.optimizar().cuantasEmpiezan(PERMUTA), trae == 5000 ? 2U : 1U);
    }
}

// ---- Over the auxiliars -------------------------------------------------------------------------------

TEST(PaseoAuxiliares, GoesInAscendingKeyForEveryPrincipal) {
    EscenaDePermuta e({30000}, {30000});
    e.principal(10);
    e.principal(11);
    for (const int n : {22, 20, 21})
        e.auxiliar(n);
    e.libre(datos(30, ORIGINAL, 60000));
    EXPECT_EQ(pares(e.optimizar()), (Hechos{principal(10), auxiliar(20), auxiliar(21), auxiliar(22),
                                            principal(11), auxiliar(20), auxiliar(21), auxiliar(22)}));
}

TEST(PaseoAuxiliares, AServiceThatStandsTwiceOnTheOutputIsVisitedOnce) {
    EscenaDePermuta e({30000}, {30000});
    e.principal();
    e.clavar("B", 2, 1, e.auxiliar(20));
    e.libre(datos(30, ORIGINAL, 60000));
    EXPECT_EQ(pares(e.optimizar()), (Hechos{principal(10), auxiliar(20)}));
}

TEST(PaseoAuxiliares, AServiceThatHasGoneIsPassedOver) {
    // Taking the first 20 off takes the other along; 21 comes next.
    EscenaDePermuta e({30000}, {30000});
    sinTranscoder(e.principal(10));
    e.en("A").SD_Transcoding = 1;
    e.auxiliar(20);
    e.clavar("B", 2, 1, fabrica::servicio(datos(20, COMUN, 2000, 3)));
    e.auxiliar(21)->number_PIDs_CA = 1000; // fits nowhere
    e.original();
    EXPECT_EQ(pares(e.optimizar()), (Hechos{principal(10), auxiliar(20),
                                            std::string(lineas::NO_LLEVAR_PRINCIPAL) + "10", auxiliar(21)}));
}

TEST(PaseoAuxiliares, WhatComesToTheOutputIsNotMetByTheWalkThatBroughtIt) {
    // 10 moves to B under a key before 30, the auxiliar still to come.
    EscenaDePermuta e({30000}, {30000});
    e.principal(25);
    e.auxiliar(20);
    e.auxiliar(30)->number_PIDs_CA = 1000;
    sinTranscoder(e.original(40));
    EXPECT_EQ(pares(e.optimizar()), (Hechos{principal(25), auxiliar(20),
                                            std::string(lineas::NO_PONER_ORIGINAL) + "40", auxiliar(30)}));
}

TEST(PaseoAuxiliares, EveryOutputOfMac1HasAWalkOfItsOwn) {
    EscenaDePermuta e({30000}, {30000, 30000});
    e.principal();
    e.auxiliar(20, 1);
    e.auxiliar(21, 2);
    e.libre(datos(30, ORIGINAL, 60000));
    const Tramo t = e.optimizar();
    EXPECT_EQ(pares(t), (Hechos{principal(10), auxiliar(20), principal(10), auxiliar(21)}));
    // The second walk comes after the dump of output 2 and its pause.
    const Hechos segunda = t.desde(" MAC 2 B itSalida_Aux 2");
    EXPECT_EQ(segunda[1], "7 itService_Salida_Aux->first 21");
    EXPECT_EQ(segunda[2], "sleep 10");
    EXPECT_EQ(segunda[3], "7 " + principal(10));
}

// ---- Over networks and streams ------------------------------------------------------------------------

TEST(PaseoIndice, ServicesStagedInAnEarlierStreamAreNotMetInThisEntry) {
    EscenaDePermuta e;
    e.completo();
    e.entrada("A", 2).MapaServicios.clear();
    e.libre(datos(40, 7));
    const Tramo t = e.optimizar();
    EXPECT_EQ(t.cuantasEmpiezan("Hay servicios ( "), 2U);
    EXPECT_EQ(t.cuantas("Hay servicios ( 1 ) sin asignar con TSID 1 "), 1U);
    EXPECT_EQ(t.cuantas("Hay servicios ( 1 ) sin asignar con TSID 7 "), 1U);
}

TEST(PaseoIndice, AFruitlessPassLeavesEverythingWhereItWas) {
    EscenaDePermuta e;
    e.principal();
    e.auxiliar();
    e.libre(datos(30, ORIGINAL, 60000));
    const PasadaVista r = e.pasar();
    EXPECT_EQ(r.tramo(6, 4).cuantasEmpiezan("soy el servicio"), 1U);
    EXPECT_EQ(indice(e.motor.Mapa_ONIDs), "1/1[30]");
}

} // namespace Optimizar_paseos_test
