// Every way of the pass from state to state.

#include <gtest/gtest.h>

#include "algorithm/Escena.h"
#include "algorithm/PasadaVista.h"
#include "support/Lineas.h"

namespace Pasada_transiciones_test {

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

// ---- From the fills -----------------------------------------------------------------------------------

TEST(PasadaRelleno, TranscodingFillThatPlacedGoesToTheOtherFill) {
    // The one transcoder goes with service 1; service 2 keeps the plain stream out of the first fill.
    Escena e({modulo("A", 2, {20000})});
    e.en("A").SD_MAX_Transcoding = 1;
    e.libre(conTranscoding(datos(1, 1)));
    e.libre(conTranscoding(datos(2, 2)));
    e.libre(datos(3, 3));
    const PasadaVista r(e.motor, MAX, 0);
    EXPECT_EQ(r.camino().substr(0, 5), "1 2 3");
    EXPECT_EQ(vista::entradas(r.tramo(1).despues.en("A")), "1/1[1] -[]");
    EXPECT_EQ(vista::entradas(r.tramo(2).despues.en("A")), "1/1[1] 1/3[3]");
}

TEST(PasadaRelleno, TranscodingFillThatPlacedNothingGoesToUnifyPastTheOtherFill) {
    // The stream is chosen by its transcoded service, for which there is no transcoder. The other fill could
    // place service 2, but has not run when the pass gets to unify.
    Escena e({modulo("A", 1, {20000})});
    e.libre(conTranscoding(datos(1, 1)));
    e.libre(datos(2, 2));
    const PasadaVista r(e.motor, MAX, 0);
    EXPECT_EQ(r.camino().substr(0, 5), "1 5 6");
}

TEST(PasadaRelleno, PlainFillThatPlacedNothingGoesToUnify) {
    Escena e({sinSitio("A", 1)});
    e.libre(datos(1, 1, 7000));
    const PasadaVista r(e.motor, MAX, 1);
    EXPECT_EQ(r.camino(), "2 5 6 3 5 6 3 5 6 3 5 6");
}

TEST(PasadaRelleno, PlainFillAfterTheOtherThatPlacedNothingGoesToUnify) {
    Escena e({modulo("A", 1, {10000})});
    e.en("A").SD_MAX_Transcoding = 1;
    e.libre(conTranscoding(datos(1, 1)));
    const PasadaVista r(e.motor, MAX, 0);
    EXPECT_EQ(r.camino(), "1 2 5");
}

TEST(PasadaRelleno, WithoutModulesTheTranscodingFillGoesToUnify) {
    Escena e;
    const PasadaVista r(e.motor, MAX, 0);
    EXPECT_EQ(r.camino(), "1 5");
    const std::vector<std::string> esperado = {
        lineas::hecho(lineas::RELLENO_CON_TRANSCODING),
        std::string("7 ") + NO_MAS,
        std::string("7 ") + FIN,
    };
    EXPECT_EQ(r.tramo(1).hechos, esperado);
}

TEST(PasadaRelleno, WithoutModulesThePlainFillGoesToUnify) {
    Escena e;
    const PasadaVista r(e.motor, MAX, 1);
    EXPECT_EQ(r.camino(), "2 5");
    const std::vector<std::string> esperado = {
        lineas::hecho(lineas::RELLENO_SIN_TRANSCODING),
        std::string("7 ") + NO_MAS,
        std::string("7 ") + FIN,
    };
    EXPECT_EQ(r.tramo(2).hechos, esperado);
}

// ---- From the check of empty inputs -------------------------------------------------------------------

TEST(PasadaComprobacion, NothingUnassignedGoesToUnify) {
    Escena e({modulo("A", 2, {20000})});
    e.libre(datos(1, 1));
    const PasadaVista r(e.motor, MAX, 1);
    EXPECT_EQ(r.camino(), "2 3 5");
    EXPECT_TRUE(r.tramo(3).antes.indice.empty());
}

TEST(PasadaComprobacion, NoUncompleteModuleGoesToUnify) {
    // The one service placed leaves less than the margin of 6000.
    Escena e({modulo("A", 2, {8000})});
    e.libre(datos(1, 1, 2000));
    e.libre(datos(2, 2, 7000));
    const PasadaVista r(e.motor, MAX, 1);
    EXPECT_EQ(r.camino().substr(0, 7), "2 3 5 6");
}

TEST(PasadaComprobacion, AnEmptyInputGoesBackToThePlainFillWithResource1) {
    Escena e({modulo("A", 2, {20000})});
    e.libre(datos(1, 1));
    e.libre(datos(2, 2, 19000)); // fits on nothing any more
    const PasadaVista r(e.motor, MAX, 1);
    EXPECT_EQ(r.camino().substr(0, 7), "2 3 2 5");
}

TEST(PasadaComprobacion, AnEmptyInputGoesBackToTheTranscodingFillOtherwise) {
    Escena e({modulo("A", 3, {20000})});
    e.en("A").SD_MAX_Transcoding = 1;
    e.libre(conTranscoding(datos(1, 1)));
    e.libre(conTranscoding(datos(2, 2)));
    e.libre(datos(3, 3));
    e.libre(datos(4, 4, 19000)); // fits on nothing: input 3 stays empty
    const PasadaVista r(e.motor, MAX, 0);
    EXPECT_EQ(r.camino().substr(0, 9), "1 2 3 1 5");
}

TEST(PasadaComprobacion, NoEmptyInputGoesToTheUncompleteModules) {
    Escena e({modulo("A", 1, {20000})});
    e.libre(datos(1, 1));
    e.libre(datos(2, 2));
    const PasadaVista r(e.motor, MAX, 1);
    EXPECT_EQ(r.camino().substr(0, 7), "2 3 4 5");
}

// ---- From the uncomplete modules ----------------------------------------------------------------------

namespace {

// A stream without network and stream id (some cable line-ups have one): the input that carries it looks
// untuned, so the uncomplete phase takes it for a free one although the check found none empty.
void conStreamSinNumero(Escena& e) {
    fabrica::DatosServicio sin = datos(1, 0);
    sin.onid = 0;
    e.libre(sin);
    e.libre(datos(2, 2));
}

} // namespace

TEST(PasadaIncompletos, UntunedInputAfterAFillThatPlacedGoesToThePlainFillWithResource1) {
    Escena e({modulo("A", 1, {20000})});
    conStreamSinNumero(e);
    const PasadaVista r(e.motor, MAX, 1);
    EXPECT_EQ(r.camino().substr(0, 9), "2 3 4 2 5");
}

TEST(PasadaIncompletos, UntunedInputAfterAFillThatPlacedGoesToTheTranscodingFillOtherwise) {
    // A fill for each flag places something, so that state 2 hands over to the check.
    Escena e({modulo("A", 1, {20000}), modulo("B", 1, {20000})});
    e.en("B").SD_MAX_Transcoding = 1;
    conStreamSinNumero(e);
    e.libre(conTranscoding(datos(3, 3)));
    e.libre(datos(4, 4));
    // On A no transcoder is left, so the stream 3 goes to B and the stream without number to A.
    const PasadaVista r(e.motor, MAX, 0);
    EXPECT_EQ(r.camino().substr(0, 9), "1 2 3 4 1");
}

TEST(PasadaIncompletos, UntunedInputAfterAFillThatPlacedNothingGoesToOptimize) {
    // The merge frees input 2 of A, which has room; no fill has placed anything.
    Escena e({modulo("A", 2, {20000})});
    e.puesto("A", 1, 1, datos(1, 1));
    e.puesto("A", 2, 1, datos(2, 1));
    e.libre(datos(3, 3, 30000));
    const PasadaVista r(e.motor, SIN_RELLENO, 1);
    EXPECT_EQ(r.camino().substr(0, 7), "2 5 4 6");
}

TEST(PasadaIncompletos, WithoutUntunedInputGoesToUnify) {
    Escena e({modulo("A", 1, {20000})});
    e.libre(datos(1, 1));
    e.libre(datos(2, 2));
    const PasadaVista r(e.motor, MAX, 1);
    EXPECT_EQ(r.camino().substr(0, 9), "2 3 4 5 6");
}

TEST(PasadaIncompletos, NothingUnassignedOnEntryGoesToUnify) {
    Escena e({modulo("A", 2, {20000})});
    e.puesto("A", 1, 1, datos(1, 1));
    e.puesto("A", 2, 1, datos(2, 1));
    const PasadaVista r(e.motor, SIN_RELLENO, 1);
    EXPECT_EQ(r.camino(), "2 5 4 5");
}

TEST(PasadaIncompletos, TheProposalStandsWhenTheLastServiceIsPlacedOnTheWay) {
    // Input 1 is untuned and proposes optimize; input 2 then takes the last unassigned service.
    Escena e({modulo("A", 3, {20000})});
    e.puesto("A", 2, 1, datos(1, 1));
    e.puesto("A", 3, 1, datos(2, 1));
    e.libre(datos(3, 1));
    const PasadaVista r(e.motor, SIN_RELLENO, 1);
    EXPECT_EQ(r.camino(), "2 5 4 6");
    EXPECT_TRUE(r.tramo(6).antes.indice.empty());
}

// ---- From unify ---------------------------------------------------------------------------------------

TEST(PasadaUnificar, AMergeGoesToTheUncompleteModules) {
    Escena e({modulo("A", 2, {20000})});
    e.puesto("A", 1, 1, datos(1, 1));
    e.puesto("A", 2, 1, datos(2, 1));
    const PasadaVista r(e.motor, SIN_RELLENO, 1);
    EXPECT_EQ(r.camino(), "2 5 4 5");
}

TEST(PasadaUnificar, AGatheringWithServicesLeftGoesToTheUncompleteModules) {
    Escena e({modulo("A", 1, {20000}), modulo("B", 1, {20000})});
    e.puesto("A", 1, 1, datos(1, 1));
    e.puesto("B", 1, 1, datos(2, 1));
    e.libre(datos(3, 3, 30000));
    const PasadaVista r(e.motor, SIN_RELLENO, 1);
    EXPECT_EQ(r.camino().substr(0, 5), "2 5 4");
}

TEST(PasadaUnificar, AGatheringWithNothingLeftEndsThePass) {
    Escena e({modulo("A", 1, {20000}), modulo("B", 1, {20000})});
    e.puesto("A", 1, 1, datos(1, 1));
    e.puesto("B", 1, 1, datos(2, 1));
    const PasadaVista r(e.motor, SIN_RELLENO, 1);
    EXPECT_EQ(r.camino(), "2 5");
    EXPECT_EQ(vista::entradas(e.en("A")), "1/1[1 2]");
}

TEST(PasadaUnificar, WithoutRequestServicesLeftGoToOptimize) {
    Escena e({sinSitio("A", 1)});
    e.libre(datos(1, 1, 7000));
    const PasadaVista r(e.motor, SIN_RELLENO, 1);
    EXPECT_EQ(r.camino().substr(0, 5), "2 5 6");
}

TEST(PasadaUnificar, WithoutRequestAndWithNothingLeftThePassEnds) {
    Escena e({modulo("A", 1, {20000})});
    const PasadaVista r(e.motor, SIN_RELLENO, 1);
    EXPECT_EQ(r.camino(), "2 5");
    EXPECT_EQ(registro::cuantasEmpiezan(lineas::TRAS_OPTIMIZAR), 0U);
}

TEST(PasadaUnificar, TheRequestIsForgottenAtTheNextEntry) {
    // The first entry merges; the second has nothing to merge and goes to optimize.
    Escena e({modulo("A", 2, {3000, 3000}, 0)});
    e.puesto("A", 1, 1, datos(1, 1));
    e.puesto("A", 2, 1, datos(2, 1));
    e.libre(datos(3, 3, 5000));
    const PasadaVista r(e.motor, SIN_RELLENO, 1);
    EXPECT_EQ(r.camino().substr(0, 9), "2 5 4 5 6");
}

// ---- From optimize ------------------------------------------------------------------------------------

TEST(PasadaOptimizar, ServicesLeftGoToTheCheck) {
    Escena e({sinSitio("A", 1)});
    e.libre(datos(1, 1, 7000));
    const PasadaVista r(e.motor, SIN_RELLENO, 1);
    EXPECT_EQ(r.camino().substr(0, 9), "2 5 6 3 5");
    const auto fin = r.tramo(6).desde(" Hemos hecho");
    const std::vector<std::string> esperado = {"7  Hemos hecho 1 vueltas del Optimize",
                                               std::string("7 ") + NO_MAS,
                                               lineas::hecho(lineas::TRAS_OPTIMIZAR_COMPROBAR)};
    EXPECT_EQ(fin, esperado);
}

TEST(PasadaOptimizar, NothingLeftEndsThePass) {
    Escena e({modulo("A", 3, {20000})});
    e.puesto("A", 2, 1, datos(1, 1));
    e.puesto("A", 3, 1, datos(2, 1));
    e.libre(datos(3, 1));
    const PasadaVista r(e.motor, SIN_RELLENO, 1);
    ASSERT_EQ(r.camino(), "2 5 4 6");
    const std::vector<std::string> esperado = {
        lineas::hecho(lineas::OPTIMIZAR), "7  Hemos hecho 1 vueltas del Optimize", std::string("7 ") + NO_MAS,
        lineas::hecho(lineas::TRAS_OPTIMIZAR_NADA)};
    EXPECT_EQ(r.tramo(6).hechos, esperado);
}

TEST(PasadaOptimizar, TheFourthEntryEndsThePassWithServicesLeft) {
    Escena e({sinSitio("A", 1)});
    e.libre(datos(1, 1, 7000));
    const PasadaVista r(e.motor, SIN_RELLENO, 1);
    EXPECT_EQ(r.camino(), "2 5 6 3 5 6 3 5 6 3 5 6");
    for (int vuelta = 1; vuelta <= 3; ++vuelta) {
        EXPECT_TRUE(
            r.tramo(6, vuelta).contiene(" Hemos hecho " + std::to_string(vuelta) + " vueltas del Optimize"));
        EXPECT_TRUE(r.tramo(6, vuelta).contiene(NO_MAS));
        EXPECT_TRUE(r.tramo(6, vuelta).contiene(lineas::TRAS_OPTIMIZAR_COMPROBAR));
    }
    const std::vector<std::string> esperado = {"7  Hemos hecho 4 vueltas del Optimize",
                                               lineas::hecho(lineas::TRAS_OPTIMIZAR_NADA)};
    EXPECT_EQ(r.tramo(6, 4).desde(" Hemos hecho"), esperado);
}

} // namespace Pasada_transiciones_test
