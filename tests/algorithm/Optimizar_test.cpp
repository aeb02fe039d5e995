// The sweep of the optimize phase over the services left out, and how it goes on after an exchange.

#include <gtest/gtest.h>

#include "algorithm/EscenaDePermuta.h"
#include "support/Lineas.h"

namespace Optimizar_test {

using namespace permuta;
using escena::modulo;
using vista::entradas;
using vista::indice;
using vista::PasadaVista;
using vista::Tramo;

namespace {

using Hechos = std::vector<std::string>;

const std::string ESTADO = lineas::hecho(lineas::OPTIMIZAR);

fabrica::DatosServicio deRed(int onid, int clave, int tsid) {
    fabrica::DatosServicio nuevo = datos(clave, tsid);
    nuevo.onid = static_cast<unsigned short>(onid);
    return nuevo;
}

// The lines of the sweep itself.
Hechos barrido(const Tramo& tramo) {
    Hechos resultado;
    for (const std::string& hecho : tramo.hechos)
        for (const char* principio : {"7 Hay servicios", "7 soy el servicio", "7 clear = "})
            if (hecho.compare(0, std::string(principio).size(), principio) == 0)
                resultado.push_back(hecho.substr(2));
    return resultado;
}

} // namespace

TEST(Optimizar, WalksNetworksStreamsAndServicesInAscendingOrder) {
    Escena e;
    e.libre(deRed(2, 4, 1));
    e.libre(deRed(1, 7, 9));
    e.libre(deRed(1, 5, 9));
    e.libre(deRed(1, 6, 3));
    const Tramo t = PasadaVista(e.motor, 0, 1).tramo(6);
    EXPECT_EQ(t.hechos, (Hechos{ESTADO,
                                "7 Hay servicios sin asignar con ONID 1 ",
                                "7 Hay servicios ( 1 ) sin asignar con TSID 3 ",
                                "7 soy el servicio nº1",
                                "7 Hay servicios sin asignar con  idServicio: (itService_Out) 6",
                                "7  MAC 1  y MAC 2  ",
                                "7 Hay servicios ( 2 ) sin asignar con TSID 9 ",
                                "7 soy el servicio nº1",
                                "7 Hay servicios sin asignar con  idServicio: (itService_Out) 5",
                                "7  MAC 1  y MAC 2  ",
                                "7 soy el servicio nº2",
                                "7 Hay servicios sin asignar con  idServicio: (itService_Out) 7",
                                "7  MAC 1  y MAC 2  ",
                                "7 Hay servicios sin asignar con ONID 2 ",
                                "7 Hay servicios ( 1 ) sin asignar con TSID 1 ",
                                "7 soy el servicio nº1",
                                "7 Hay servicios sin asignar con  idServicio: (itService_Out) 4",
                                "7  MAC 1  y MAC 2  ",
                                "7  Hemos hecho 1 vueltas del Optimize",
                                lineas::hecho(lineas::NO_SE_PUEDE_MAS),
                                lineas::hecho(lineas::TRAS_OPTIMIZAR_COMPROBAR)}));
}

TEST(Optimizar, AServiceWhoseStreamNoModuleReceivesIsGivenUpAtOnce) {
    Escena e({modulo("A", 2, {10000}, 0), modulo("B", 1, {10000}, 0)});
    e.sintonizar("A", 1, 1, 2);
    e.libre(datos(1, 1));
    const Tramo t = PasadaVista(e.motor, 0, 1).tramo(6);
    EXPECT_EQ(
        t.desde("soy el servicio", " Hemos hecho"),
        (Hechos{"7 soy el servicio nº1", "7 Hay servicios sin asignar con  idServicio: (itService_Out) 1",
                "7  itModulo A ", "7  itModulo A itEntradaModulo 1", "7  itModulo A itEntradaModulo 2",
                "7  itModulo B ", "7  itModulo B itEntradaModulo 1", "7  MAC 1  y MAC 2  "}));
}

// ---- Going on after an exchange -----------------------------------------------------------------------

TEST(OptimizarResultado, With0TheNextServiceOfTheStreamIsTried) {
    EscenaDePermuta e;
    e.completo();
    e.original(31);
    const Tramo t = e.optimizar();
    EXPECT_EQ(barrido(t),
              (Hechos{"Hay servicios sin asignar con ONID 1 ", "Hay servicios ( 2 ) sin asignar con TSID 1 ",
                      "soy el servicio nº1", "Hay servicios sin asignar con  idServicio: (itService_Out) 30",
                      "clear = 0", "soy el servicio nº2",
                      "Hay servicios sin asignar con  idServicio: (itService_Out) 31"}));
    EXPECT_EQ(indice(t.despues.indice), "1/1[31]");
    EXPECT_EQ(entradas(t.despues.en("A")), "1/1[30] 1/2[20]");
}

TEST(OptimizarResultado, With0NoFurtherPairIsTriedForTheServicePlaced) {
    // A second auxiliar and a second principal stand ready.
    EscenaDePermuta e({30000}, {30000});
    e.completo();
    e.principal(11);
    e.auxiliar(21);
    e.libre(datos(31, ORIGINAL, 60000));
    const Tramo t = e.optimizar();
    const Hechos pasos = paseo(t);
    const auto clear = std::find(pasos.begin(), pasos.end(), "clear = 0");
    ASSERT_NE(clear, pasos.end());
    EXPECT_EQ(*(clear + 1), "soy el servicio nº2");
}

TEST(OptimizarResultado, With1TheNextStreamOfTheNetworkIsTried) {
    EscenaDePermuta e;
    e.completo();
    e.libre(datos(40, 7));
    e.libre(deRed(2, 50, 1));
    const Tramo t = e.optimizar();
    EXPECT_EQ(
        barrido(t),
        (Hechos{"Hay servicios sin asignar con ONID 1 ", "Hay servicios ( 1 ) sin asignar con TSID 1 ",
                "soy el servicio nº1", "Hay servicios sin asignar con  idServicio: (itService_Out) 30",
                "clear = 1", "Hay servicios ( 1 ) sin asignar con TSID 7 ", "soy el servicio nº1",
                "Hay servicios sin asignar con  idServicio: (itService_Out) 40",
                "Hay servicios sin asignar con ONID 2 ", "Hay servicios ( 1 ) sin asignar con TSID 1 ",
                "soy el servicio nº1", "Hay servicios sin asignar con  idServicio: (itService_Out) 50"}));
    EXPECT_EQ(indice(t.despues.indice), "1/7[40] 2/1[50]");
}

TEST(OptimizarResultado, With1AndNoStreamLeftTheNextNetworkIsTried) {
    // The stream walked is the last of its network but not the only one.
    EscenaDePermuta e;
    e.completo();
    e.libre(datos(40, 0));
    e.libre(deRed(2, 50, 1));
    const Tramo t = e.optimizar();
    const Hechos lineas = barrido(t);
    const auto clear = std::find(lineas.begin(), lineas.end(), "clear = 1");
    ASSERT_NE(clear, lineas.end());
    EXPECT_EQ(*(clear + 1), "Hay servicios sin asignar con ONID 2 ");
}

TEST(OptimizarResultado, With2TheNextNetworkIsTried) {
    EscenaDePermuta e;
    e.completo();
    e.libre(deRed(2, 50, 1));
    const Tramo t = e.optimizar();
    EXPECT_EQ(barrido(t),
              (Hechos{"Hay servicios sin asignar con ONID 1 ", "Hay servicios ( 1 ) sin asignar con TSID 1 ",
                      "soy el servicio nº1", "Hay servicios sin asignar con  idServicio: (itService_Out) 30",
                      "clear = 2", "Hay servicios sin asignar con ONID 2 ",
                      "Hay servicios ( 1 ) sin asignar con TSID 1 ", "soy el servicio nº1",
                      "Hay servicios sin asignar con  idServicio: (itService_Out) 50"}));
    EXPECT_EQ(indice(t.despues.indice), "2/1[50]");
}

TEST(OptimizarResultado, With2AndNothingLeftTheSweepAndThePassEnd) {
    EscenaDePermuta e;
    e.completo();
    const PasadaVista r = e.pasar();
    EXPECT_EQ(r.camino(), "2 5 6");
    EXPECT_EQ(r.tramo(6).desde("clear = "),
              (Hechos{"7 clear = 2", "7  Hemos hecho 1 vueltas del Optimize",
                      lineas::hecho(lineas::NO_SE_PUEDE_MAS), lineas::hecho(lineas::TRAS_OPTIMIZAR_NADA)}));
    EXPECT_TRUE(e.motor.Mapa_ONIDs.empty());
}

TEST(OptimizarResultado, SeveralServicesArePlacedInOneSweep) {
    // Each takes the place of an exchange of its own.
    EscenaDePermuta e({30000}, {30000});
    e.principal(10);
    e.principal(11);
    e.auxiliar(20);
    e.auxiliar(21);
    e.original(30);
    e.original(31);
    const PasadaVista r = e.pasar();
    EXPECT_EQ(r.camino(), "2 5 6");
    EXPECT_EQ(r.tramo(6).cuantasEmpiezan("clear = "), 2U);
    EXPECT_EQ(entradas(e.en("A")).substr(0, 10), "1/1[30 31]");
}

// ---- Fruitless ----------------------------------------------------------------------------------------

TEST(OptimizarVueltas, ServicesThatCanNeverBePlacedAreTriedFourTimes) {
    EscenaDePermuta e;
    e.principal();
    e.auxiliar();
    e.libre(datos(30, ORIGINAL, 60000));
    const PasadaVista r = e.pasar();
    EXPECT_EQ(registro::cuantas(lineas::OPTIMIZAR), 4U);
    for (int vuelta = 1; vuelta <= 4; ++vuelta) {
        EXPECT_TRUE(
            r.tramo(6, vuelta).contiene("Hay servicios sin asignar con  idServicio: (itService_Out) 30"));
        EXPECT_TRUE(r.tramo(6, vuelta).contiene(auxiliar(20)));
    }
    EXPECT_EQ(indice(e.motor.Mapa_ONIDs), "1/1[30]");
    EXPECT_EQ(entradas(e.en("A")), "1/1[] 1/2[10]");
    EXPECT_EQ(entradas(e.en("B")), "1/3[] 1/2[20]");
}

} // namespace Optimizar_test
