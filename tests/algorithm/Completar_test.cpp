// After a fill: whether another is worth it, and topping up the modules that still have room.

#include <gtest/gtest.h>

#include "algorithm/Escena.h"
#include "algorithm/PasadaVista.h"
#include "support/Lineas.h"

namespace Completar_test {

using namespace escena;
using vista::entradas;
using vista::indice;
using vista::PasadaVista;

namespace {

constexpr int SIN_RELLENO = 0;
constexpr int MAX = 1;

// A module that is never uncomplete, because it has no PID budget, whose two inputs merge in the first unify
// and so send the pass to the uncomplete modules.
fabrica::DatosModulo quePideCompletar() {
    return modulo("Z", 2, {20000}, 0);
}

void preparar(Escena& e) {
    e.puesto("Z", 1, 1, datos(901, 900));
    e.puesto("Z", 2, 1, datos(902, 900));
}

} // namespace

// ---- The check of empty inputs ------------------------------------------------------------------------

TEST(ComprobarEntradas, LogsItsLineAndNothingElse) {
    Escena e({modulo("A", 1, {20000})});
    e.libre(datos(1, 1));
    e.libre(datos(2, 2));
    const PasadaVista r(e.motor, MAX, 1);
    const std::vector<std::string> esperado = {lineas::hecho(lineas::COMPROBACION)};
    EXPECT_EQ(r.tramo(3).hechos, esperado);
}

TEST(ComprobarEntradas, AnUncompleteModuleWithoutEmptyInputGoesToTheUncompleteModules) {
    Escena e({modulo("A", 1, {20000})});
    e.puesto("A", 1, 1, datos(1, 1));
    e.libre(datos(2, 2));
    const PasadaVista r(e.motor, SIN_RELLENO, 1);
    EXPECT_EQ(r.camino().substr(0, 9), "2 5 6 3 4");
}

TEST(ComprobarEntradas, NoUncompleteModuleGoesToUnifyThoughInputsAreEmpty) {
    Escena e({modulo("A", 2, {20000}, 0)});
    e.puesto("A", 1, 1, datos(1, 1));
    e.libre(datos(2, 2));
    const PasadaVista r(e.motor, SIN_RELLENO, 1);
    EXPECT_EQ(r.camino().substr(0, 9), "2 5 6 3 5");
}

TEST(ComprobarEntradas, AnEmptyInputOfACompleteModuleIsEnoughToFillAgain) {
    Escena e({modulo("A", 1, {20000}), modulo("B", 1, {20000}, 0)});
    e.puesto("A", 1, 1, datos(1, 1));
    e.libre(datos(2, 2));
    const PasadaVista r(e.motor, SIN_RELLENO, 1);
    EXPECT_EQ(r.camino().substr(0, 9), "2 5 6 3 2");
}

TEST(ComprobarEntradas, AnUncompleteModuleAfterOthersIsFound) {
    Escena e({modulo("A", 1, {20000}, 0), modulo("B", 1, {20000})});
    e.puesto("A", 1, 1, datos(1, 1));
    e.puesto("B", 1, 1, datos(2, 2));
    e.libre(datos(3, 3));
    const PasadaVista r(e.motor, SIN_RELLENO, 1);
    EXPECT_EQ(r.camino().substr(0, 9), "2 5 6 3 4");
}

TEST(ComprobarEntradas, ATunedInputWithoutServicesCountsAsEmpty) {
    Escena e({modulo("A", 1, {20000})});
    e.sintonizar("A", 1, 1, 1);
    e.libre(datos(2, 2));
    const PasadaVista r(e.motor, SIN_RELLENO, 0);
    EXPECT_EQ(r.camino().substr(0, 9), "1 5 6 3 1");
}

// ---- The uncomplete modules ---------------------------------------------------------------------------

TEST(Completar, TopsUpEveryTunedInputAndProposesUnify) {
    Escena e({modulo("A", 2, {20000}), quePideCompletar()});
    preparar(e);
    e.puesto("A", 1, 1, datos(1, 1));
    e.puesto("A", 2, 1, datos(2, 2));
    e.libre(datos(11, 1));
    e.libre(datos(12, 2));
    e.libre(datos(13, 3));
    const PasadaVista r(e.motor, SIN_RELLENO, 1);
    ASSERT_EQ(r.camino().substr(0, 7), "2 5 4 5");
    EXPECT_EQ(entradas(r.tramo(4).despues.en("A")), "1/1[1 11] 1/2[2 12]");
    EXPECT_EQ(indice(r.tramo(4).despues.indice), "1/3[13]");
}

TEST(Completar, AModuleThatIsNotUncompleteIsPassedOver) {
    Escena e({modulo("A", 1, {20000}, 0), quePideCompletar()});
    preparar(e);
    e.puesto("A", 1, 1, datos(1, 1));
    e.libre(datos(11, 1));
    const PasadaVista r(e.motor, SIN_RELLENO, 1);
    ASSERT_EQ(r.camino().substr(0, 5), "2 5 4");
    const std::vector<std::string> esperado = {lineas::hecho(lineas::INCOMPLETOS)};
    EXPECT_EQ(r.tramo(4).hechos, esperado);
}

TEST(Completar, RoomIsAskedForOncePerModule) {
    // Input 1 brings the output over the margin; input 2 is topped up all the same.
    Escena e({modulo("A", 2, {10000}), quePideCompletar()});
    preparar(e);
    e.puesto("A", 1, 1, datos(1, 1));
    e.puesto("A", 2, 1, datos(2, 2));
    e.libre(datos(11, 1, 5000));
    e.libre(datos(12, 2));
    const PasadaVista r(e.motor, SIN_RELLENO, 1);
    EXPECT_EQ(entradas(r.tramo(4).despues.en("A")), "1/1[1 11] 1/2[2 12]");
}

TEST(Completar, ServicesThatNeedATranscoderAreToppedUpToo) {
    Escena e({modulo("A", 1, {20000}), quePideCompletar()});
    preparar(e);
    e.en("A").SD_MAX_Transcoding = 1;
    e.puesto("A", 1, 1, datos(1, 1));
    e.libre(conTranscoding(datos(11, 1)));
    const PasadaVista r(e.motor, SIN_RELLENO, 1);
    EXPECT_EQ(entradas(r.tramo(4).despues.en("A")), "1/1[1 11]");
    EXPECT_EQ(r.tramo(4).despues.en("A").SD_Transcoding, 1);
}

TEST(Completar, AnInputIsUntunedOnlyWhenBothNumbersAre0) {
    // The streams 0/7 and 1/0 have one number; their inputs are topped up.
    Escena e({modulo("A", 2, {20000}), quePideCompletar()});
    preparar(e);
    auto con = [](int clave, int onid, int tsid) {
        fabrica::DatosServicio nuevo = datos(clave, tsid);
        nuevo.onid = static_cast<unsigned short>(onid);
        return nuevo;
    };
    e.puesto("A", 1, 1, con(1, 0, 7));
    e.puesto("A", 2, 1, con(2, 1, 0));
    e.libre(con(11, 0, 7));
    e.libre(con(12, 1, 0));
    e.libre(datos(13, 3));
    const PasadaVista r(e.motor, SIN_RELLENO, 1);
    ASSERT_EQ(r.camino().substr(0, 7), "2 5 4 5");
    EXPECT_EQ(entradas(r.tramo(4).despues.en("A")), "0/7[1 11] 1/0[2 12]");
}

TEST(Completar, AnUntunedInputIsNotFilledAndTheSweepGoesOn) {
    Escena e({modulo("A", 3, {20000}), modulo("B", 1, {20000}), quePideCompletar()});
    preparar(e);
    e.puesto("A", 1, 1, datos(1, 1));
    e.puesto("A", 3, 1, datos(3, 3));
    e.puesto("B", 1, 1, datos(4, 4));
    for (const int tsid : {1, 3, 4, 5})
        e.libre(datos(10 + tsid, tsid));
    const PasadaVista r(e.motor, SIN_RELLENO, 1);
    ASSERT_EQ(r.camino().substr(0, 7), "2 5 4 6");
    EXPECT_EQ(entradas(r.tramo(4).despues.en("A")), "1/1[1 11] -[] 1/3[3 13]");
    EXPECT_EQ(entradas(r.tramo(4).despues.en("B")), "1/4[4 14]");
}

TEST(Completar, AnUntunedInputOfACompleteModuleProposesNothing) {
    Escena e({modulo("A", 1, {20000}), modulo("B", 1, {20000}, 0), quePideCompletar()});
    preparar(e);
    e.puesto("A", 1, 1, datos(1, 1));
    e.libre(datos(13, 3));
    const PasadaVista r(e.motor, SIN_RELLENO, 1);
    EXPECT_EQ(r.camino().substr(0, 7), "2 5 4 5");
}

TEST(Completar, AnUntunedInputMetAfterTheIndexRanEmptyProposesNothing) {
    Escena e({modulo("A", 2, {20000}), modulo("B", 1, {20000}), quePideCompletar()});
    preparar(e);
    e.puesto("A", 1, 1, datos(1, 1));
    e.libre(datos(11, 1));
    const PasadaVista r(e.motor, SIN_RELLENO, 1);
    EXPECT_EQ(r.camino(), "2 5 4 5");
    EXPECT_EQ(entradas(r.tramo(4).despues.en("A")), "1/1[1 11] -[]");
}

TEST(Completar, TheProposalOfAnEarlierModuleStands) {
    // A proposes optimize for its untuned input; B takes the last service.
    Escena e({modulo("A", 1, {20000}), modulo("B", 1, {20000}), quePideCompletar()});
    preparar(e);
    e.puesto("B", 1, 1, datos(2, 2));
    e.libre(datos(12, 2));
    const PasadaVista r(e.motor, SIN_RELLENO, 1);
    EXPECT_EQ(r.camino(), "2 5 4 6");
}

TEST(Completar, AnUntunedInputLeadsBackToFillingWhenTheLastFillPlacedSomething) {
    // The fill places service 3 on A and leaves no module uncomplete, so the check goes to unify. The
    // gathering there gives B little to carry: it is uncomplete then, and its input 2 is free.
    Escena e({modulo("A", 2, {8000}), modulo("B", 2, {8000})});
    e.puesto("A", 1, 1, datos(1, 1, 1500));
    e.puesto("B", 1, 1, datos(2, 1, 2500));
    e.libre(datos(3, 3, 1000));
    e.libre(datos(4, 4, 7500));
    const PasadaVista r(e.motor, MAX, 1);
    EXPECT_EQ(r.camino().substr(0, 9), "2 3 5 4 2");
    EXPECT_EQ(entradas(r.tramo(4).antes.en("A")), "1/1[1 2] -[]");
    EXPECT_EQ(entradas(r.tramo(4).antes.en("B")), "1/3[3] -[]");
}

TEST(Completar, TheStateLogsTheServicesThatItTries) {
    Escena e({modulo("A", 1, {20000}), quePideCompletar()});
    preparar(e);
    e.puesto("A", 1, 1, datos(1, 1));
    e.libre(datos(11, 1));
    const PasadaVista r(e.motor, SIN_RELLENO, 1);
    const std::vector<std::string> esperado = {
        lineas::hecho(lineas::INCOMPLETOS),
        "7 Salida 1 BitrateActual 1000 BitrateMax 20000",
        "7 if ( ( (itSalida->second.BitRateActual (1000) + itService->second->peakBitRate (1000) ) < "
        "itSalida->second.BitRateMax (20000) ) &&  )",
        "7 if ( && ( itModulo->second.PIDsModulo (0) + itService->second->number_PIDs_CA (0) <= "
        "itModulo->second.PIDsModuloMax (100) ) )",
        "7 He añadido el servicio: 11",
        "7 ELIMINAMOS EL TSID: 1",
        "7 ELIMINAMOS EL ONID: 1",
    };
    EXPECT_EQ(r.tramo(4).hechos, esperado);
}

} // namespace Completar_test
