// Whole passes over tiny head-ends, line by line, to be read beside the code: tests/transcripts/pass_*.txt.

#include <gtest/gtest.h>

#include "algorithm/Escena.h"
#include "algorithm/EscenaDePermuta.h"
#include "support/Registro.h"
#include "support/Transcripcion.h"

namespace Transcripciones_test {

using namespace escena;
using permuta::EscenaDePermuta;

namespace {

// Fills nothing, so that the pass shows the phase that it is about.
constexpr char SIN_RELLENO = 0;
constexpr char MAX = 1;

void comparar(Escena& e, char option, int recurso, const std::string& nombre) {
    registro::vaciar();
    e.motor.RecalculationAlgorithm(option, recurso);
    compararTranscripcion(nombre);
}

// A and B receive stream 1; A receives stream 2 as well.
class Unificar : public testing::Test {
protected:
    Escena e{{modulo("A", 2, {10000}, 10), modulo("B", 1, {10000}, 10)}};

    Unificar() {
        e.puesto("A", 1, 1, datos(1, 1, 2000, 2));
        e.puesto("A", 2, 1, datos(2, 2, 3000, 4));
        e.puesto("B", 1, 1, datos(3, 1, 4000, 5));
    }

    // Both ways round: each module would gather the stream.
    void comparar(const std::string& nombre) { Transcripciones_test::comparar(e, SIN_RELLENO, 1, nombre); }
};

} // namespace

// ---- Fill, check, uncomplete --------------------------------------------------------------------------

TEST(TranscripcionRelleno, WithTranscoding) {
    Escena e({modulo("A", 2, {20000})});
    e.en("A").SD_MAX_Transcoding = 1;
    e.libre(datos(1, 1));
    e.libre(conTranscoding(datos(2, 2)));
    e.libre(datos(3, 2, 1000, 2));
    comparar(e, MAX, 0, "pass_fill_transcoding");
}

TEST(TranscripcionRelleno, WithoutTranscodingAndTheCheck) {
    Escena e({modulo("A", 2, {20000})});
    e.libre(datos(1, 1));
    comparar(e, MAX, 1, "pass_fill_no_transcoding");
}

TEST(TranscripcionCompletar, AModuleWithRoomIsToppedUp) {
    Escena e({modulo("A", 2, {20000})});
    e.puesto("A", 1, 1, datos(1, 1));
    e.puesto("A", 2, 1, datos(2, 1));
    e.libre(datos(3, 1, 1000, 2));
    comparar(e, SIN_RELLENO, 1, "pass_uncomplete");
}

// ---- Unify --------------------------------------------------------------------------------------------

TEST_F(Unificar, GatheringAccepted) {
    comparar("pass_unify_gathering");
}

TEST_F(Unificar, GatheringAcceptedWithServicesLeft) {
    // The uncomplete phase, which the gathering asks for, places the last service.
    e.salida("A", 1).BitRateMax = 20000;
    e.libre(datos(4, 1));
    comparar("pass_unify_gathering_services_left");
}

TEST_F(Unificar, GatheringRefusedByPids) {
    e.en("A").PIDsModuloMax = 6;
    e.en("B").PIDsModuloMax = 6;
    comparar("pass_unify_refused_by_pids");
}

TEST_F(Unificar, GatheringRefusedByTranscoders) {
    e.puesto("A", 1, 1, conTranscoding(datos(5, 1, 500)));
    e.en("A").HD_MAX_Transcoding = 1; // of the wrong kind
    comparar("pass_unify_refused_by_transcoders");
}

TEST_F(Unificar, GatheringRefusedByTheSumOfBitrates) {
    e.salida("A", 1).BitRateMax = 5999;
    e.salida("B", 1).BitRateMax = 5999;
    comparar("pass_unify_refused_by_bitrate");
}

TEST_F(Unificar, GatheringRefusedByThePlacingOfAList) {
    // 6000 in all, but the last service would reach the ceiling.
    e.salida("A", 1).BitRateMax = 6000;
    e.salida("B", 1).BitRateMax = 6000;
    comparar("pass_unify_refused_by_placing");
}

TEST(TranscripcionUnificar, TwoInputsOfOneModuleMerge) {
    Escena e({modulo("A", 2, {20000})});
    e.puesto("A", 1, 1, datos(1, 1));
    e.puesto("A", 2, 1, datos(2, 1));
    comparar(e, SIN_RELLENO, 1, "pass_unify_merge");
}

// ---- Optimize -----------------------------------------------------------------------------------------

TEST(TranscripcionOptimizar, AnExchangePlacesTheLastService) {
    EscenaDePermuta e;
    e.completo();
    comparar(e, SIN_RELLENO, 1, "pass_optimize_result_2");
}

TEST(TranscripcionOptimizar, AnExchangePlacesTheLastServiceOfItsStreamAndAnotherTheNext) {
    // Service 40, of stream 5, finds room on C.
    Escena e({modulo("A", 2, {10000}), modulo("B", 2, {10000}), modulo("C", 2, {10000})});
    e.sintonizar("A", 1, 1, 1);
    e.puesto("A", 2, 1, datos(10, 2, 3000));
    e.sintonizar("B", 1, 1, 3);
    e.puesto("B", 2, 1, datos(20, 2, 2000));
    e.sintonizar("C", 1, 1, 5);
    e.puesto("C", 2, 1, datos(11, 2, 2500));
    e.libre(datos(30, 1, 4000));
    e.libre(datos(40, 5, 4000));
    comparar(e, SIN_RELLENO, 1, "pass_optimize_results_1_and_2");
}

TEST(TranscripcionOptimizar, AnExchangePlacesAServiceAndAnotherTheNextOfItsStream) {
    EscenaDePermuta e({10000}, {10000});
    e.principal(10);
    e.principal(11);
    e.auxiliar(20);
    e.libre(datos(30, permuta::ORIGINAL, 1000));
    e.libre(datos(31, permuta::ORIGINAL, 500));
    comparar(e, SIN_RELLENO, 1, "pass_optimize_results_0_and_2");
}

TEST(TranscripcionOptimizar, FourFruitlessEntries) {
    Escena e({modulo("A", 1, {10000}, 0)});
    e.puesto("A", 1, 1, datos(1, 1));
    e.libre(datos(2, 2));
    comparar(e, SIN_RELLENO, 1, "pass_optimize_four_entries");
}

// ---- The first-input fix-up ---------------------------------------------------------------------------

TEST(TranscripcionPrimeraEntrada, ALaterInputStandsIn) {
    Escena e({modulo("A", 2, {10000})});
    e.puesto("A", 2, 1, datos(1, 1));
    comparar(e, SIN_RELLENO, 1, "pass_first_input_substituted");
    EXPECT_EQ(e.entrada("A", 1).MapaServicios.size(), 1U);
    EXPECT_EQ(e.entrada("A", 1).TSID, 1);
}

TEST(TranscripcionPrimeraEntrada, NoOtherInputCarriesAnything) {
    Escena e({modulo("A", 2, {10000})});
    comparar(e, SIN_RELLENO, 1, "pass_first_input_nothing_found");
}

} // namespace Transcripciones_test
