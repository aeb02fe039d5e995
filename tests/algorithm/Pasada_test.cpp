// The frame of the pass: where it starts, what the option decides, and that it ends.

#include <gtest/gtest.h>

#include "algorithm/Escena.h"
#include "algorithm/PasadaVista.h"
#include "support/Lineas.h"

namespace Pasada_test {

using namespace escena;
using vista::PasadaVista;

namespace {

const std::string NO_MAS = lineas::NO_SE_PUEDE_MAS;
const std::string FIN = lineas::FIN_DEL_RELLENO;

// No option at all: the fills place nothing and the pass goes on from unify with what the test set up.
constexpr int SIN_RELLENO = 0;
constexpr int MAX = 1;

// A module without room for anything: no phase can place a service on it.
fabrica::DatosModulo sinSitio(const std::string& mac, int numEntradas) {
    return modulo(mac, numEntradas, {6000}, 0);
}

} // namespace

// ---- Entry --------------------------------------------------------------------------------------------

TEST(PasadaEntrada, Resource1StartsWithTheFillWithoutTranscoding) {
    Escena e({modulo("A", 1, {10000})});
    e.libre(datos(1, 1));
    const PasadaVista r(e.motor, MAX, 1);
    EXPECT_EQ(r.camino(), "2 3 5");
}

TEST(PasadaEntrada, Resource0StartsWithTheTranscodingFill) {
    Escena e({modulo("A", 1, {10000})});
    e.libre(datos(1, 1));
    const PasadaVista r(e.motor, MAX, 0);
    EXPECT_EQ(r.camino(), "1 2 5");
}

TEST(PasadaEntrada, Resource3StartsWithTheTranscodingFill) {
    Escena e({modulo("A", 1, {10000})});
    e.libre(datos(1, 1));
    const PasadaVista r(e.motor, MAX, 3);
    EXPECT_EQ(r.camino(), "1 2 5");
}

TEST(PasadaEntrada, Resource1NeverEntersTheTranscodingFill) {
    // Two modules with an input each, three streams and room: the pass returns to filling after every
    // optimize.
    Escena e({modulo("A", 1, {20000}), modulo("B", 1, {20000})});
    for (const int clave : {1, 2, 3})
        e.libre(conTranscoding(datos(clave, clave)));
    e.libre(datos(4, 4));
    const PasadaVista r(e.motor, MAX, 1);
    EXPECT_EQ(registro::cuantas(lineas::RELLENO_CON_TRANSCODING), 0U);
    EXPECT_GT(registro::cuantas(lineas::RELLENO_SIN_TRANSCODING), 1U);
}

// ---- The pass as a whole ------------------------------------------------------------------------------

TEST(Pasada, WithoutModulesAndServicesItEndsAfterUnify) {
    Escena e;
    const PasadaVista r(e.motor, MAX, 1);
    EXPECT_EQ(r.camino(), "2 5");
    EXPECT_TRUE(r.final().empty());
}

TEST(Pasada, WithoutModulesItEndsAfterTheFourthOptimize) {
    Escena e;
    e.libre(datos(1, 1));
    const PasadaVista r(e.motor, MAX, 0);
    EXPECT_EQ(r.camino(), "1 5 6 3 5 6 3 5 6 3 5 6");
    EXPECT_TRUE(r.tramo(1).contiene(NO_MAS));
    EXPECT_TRUE(r.tramo(1).contiene(FIN));
    EXPECT_EQ(vista::indice(e.motor.Mapa_ONIDs), "1/1[1]");
}

TEST(Pasada, OptionOutsideOneToFourAssignsNothingButRunsTheOtherPhases) {
    for (const int option : {0, 5, -1, 127}) {
        Escena e({modulo("A", 2, {8000}, 0)});
        e.libre(datos(1, 1));
        e.puesto("A", 1, 1, datos(2, 2, 2500));
        const PasadaVista r(e.motor, option, 0);
        EXPECT_EQ(r.camino(), "1 5 6 3 5 6 3 5 6 3 5 6") << option;
        EXPECT_EQ(registro::cuantasEmpiezan("exists_Transcoding_Services"), 0U) << option;
        EXPECT_EQ(vista::entradas(e.en("A")), "1/2[2] -[]") << option;
    }
}

TEST(Pasada, ServicesThatCanNeverBePlacedEndItAfterFourOptimizes) {
    Escena e({modulo("A", 1, {20000})});
    e.libre(datos(1, 1, 30000));
    const PasadaVista r(e.motor, MAX, 1);
    EXPECT_EQ(registro::cuantas(" Hemos hecho 4 vueltas del Optimize"), 1U);
    EXPECT_EQ(registro::cuantasEmpiezan(" Hemos hecho "), 4U);
    EXPECT_EQ(registro::cuantas(lineas::OPTIMIZAR), 4U);
}

TEST(Pasada, CountersStartAnewWithEveryPass) {
    Escena e({sinSitio("A", 1)});
    e.libre(datos(1, 1, 7000));
    const PasadaVista primera(e.motor, SIN_RELLENO, 1);
    const PasadaVista segunda(e.motor, SIN_RELLENO, 1);
    EXPECT_EQ(segunda.camino(), primera.camino());
}

TEST(Pasada, TheOptionDecidesNothingButTheFills) {
    // From the same placement every option goes the same way when the fills have nothing to offer.
    std::vector<std::string> esperado;
    for (const int option : {1, 2, 3, 4}) {
        Escena e({sinSitio("A", 1), sinSitio("B", 1)});
        e.puesto("A", 1, 1, datos(1, 1));
        e.puesto("B", 1, 1, datos(2, 1));
        e.libre(datos(3, 3, 7000));
        const PasadaVista r(e.motor, option, 1);
        if (option == 1)
            esperado = registro::hechos();
        EXPECT_EQ(registro::hechos(), esperado) << option;
    }
}

TEST(Pasada, LeavesWhatItCouldNotPlaceInTheIndexAndTheRestOnTheModules) {
    Escena e({modulo("A", 1, {10000})});
    e.libre(datos(1, 1));
    e.libre(datos(2, 2));
    e.libre(datos(3, 2));
    const PasadaVista r(e.motor, MAX, 1);
    EXPECT_EQ(vista::entradas(e.en("A")), "1/2[2 3]");
    EXPECT_EQ(vista::salidas(e.en("A")), "2000x2[2 3]");
    EXPECT_EQ(vista::indice(e.motor.Mapa_ONIDs), "1/1[1]");
}

} // namespace Pasada_test
