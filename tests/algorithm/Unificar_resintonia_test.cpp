// After the lists of a gathering have been placed: what each input of the two modules receives.
//
// Stream 1 is the one that the two modules share. It gathers on the candidate input of A; everything else
// that A receives moves to B.

#include <gtest/gtest.h>

#include "algorithm/Escena.h"
#include "algorithm/PasadaVista.h"
#include "support/Lineas.h"

namespace Unificar_resintonia_test {

using namespace escena;
using vista::entradas;
using vista::PasadaVista;
using vista::salidas;
using vista::Tramo;

namespace {

using Hechos = std::vector<std::string>;

const std::string HECHO = lineas::REUNION;
const std::string INCOMPATIBLE = lineas::hecho(lineas::INCOMPATIBLE);

class Resintonia : public testing::Test {
protected:
    // Services get keys that tell where they stood: 12 is on input 2 of A, 21 on input 1 of B.
    void poner(const std::string& mac, int numero, int tsid) {
        const int clave = (mac == "A" ? 10 : 20) + numero;
        e.puesto(mac, static_cast<unsigned short>(numero), 1, datos(clave, tsid));
    }

    // The first unify, which looks at A and B before it looks at B and A.
    Tramo unificar() { return PasadaVista(e.motor, 0, 1).tramo(5); }

    Escena e{{modulo("A", 3, {20000}), modulo("B", 3, {20000})}};
};

} // namespace

TEST_F(Resintonia, TheCandidateInputTakesTheWholeStream) {
    poner("A", 1, 1);
    poner("B", 1, 1);
    const Tramo t = unificar();
    EXPECT_TRUE(t.contiene(HECHO));
    EXPECT_EQ(entradas(t.despues.en("A")), "1/1[11 21] -[] -[]");
    EXPECT_EQ(salidas(t.despues.en("A")), "2000x2[11 21]");
}

TEST_F(Resintonia, TheSecondModulesInputOfTheStreamIsLeftUntuned) {
    poner("A", 1, 1);
    poner("B", 1, 1);
    poner("B", 2, 2);
    const Tramo t = unificar();
    EXPECT_EQ(entradas(t.despues.en("B")), "-[] 1/2[22] -[]");
    EXPECT_EQ(salidas(t.despues.en("B")), "1000x1[22]");
}

TEST_F(Resintonia, AStreamOfTheFirstModuleMovesToTheInputThatTheCandidateStreamLeaves) {
    poner("A", 1, 1);
    poner("A", 2, 2);
    poner("B", 1, 1);
    const Tramo t = unificar();
    EXPECT_EQ(entradas(t.despues.en("A")), "1/1[11 21] -[] -[]");
    EXPECT_EQ(entradas(t.despues.en("B")), "1/2[12] -[] -[]");
    EXPECT_EQ(salidas(t.despues.en("A")), "2000x2[11 21]");
    EXPECT_EQ(salidas(t.despues.en("B")), "1000x1[12]");
}

TEST_F(Resintonia, TheCandidateInputNeedNotBeTheFirst) {
    poner("A", 1, 2);
    poner("A", 2, 1);
    poner("B", 1, 1);
    const Tramo t = unificar();
    EXPECT_EQ(entradas(t.despues.en("A")), "-[] 1/1[12 21] -[]");
    EXPECT_EQ(entradas(t.despues.en("B")), "1/2[11] -[] -[]");
}

TEST_F(Resintonia, AStreamWithoutServicesMovesToTheInputToo) {
    poner("A", 1, 1);
    e.sintonizar("A", 2, 1, 2);
    poner("B", 1, 1);
    const Tramo t = unificar();
    EXPECT_EQ(entradas(t.despues.en("B")), "1/2[] -[] -[]");
}

TEST_F(Resintonia, InputsThatTheStreamLeavesAreTakenInOrder) {
    poner("A", 1, 1);
    poner("A", 2, 2);
    poner("A", 3, 3);
    poner("B", 1, 1);
    poner("B", 2, 1);
    poner("B", 3, 1);
    const Tramo t = unificar();
    EXPECT_EQ(entradas(t.despues.en("A")), "1/1[11 21 22 23] -[] -[]");
    EXPECT_EQ(entradas(t.despues.en("B")), "1/2[12] 1/3[13] -[]");
}

TEST_F(Resintonia, AnUntunedInputOfTheFirstModuleTakesItsTurnLikeTheOthers) {
    // Input 2 of A is untuned and hands that on to input 2 of B; stream 3 then takes the first untuned input.
    poner("A", 1, 1);
    poner("A", 3, 3);
    poner("B", 2, 1);
    const Tramo t = unificar();
    EXPECT_EQ(entradas(t.despues.en("A")), "1/1[11 22] -[] -[]");
    EXPECT_EQ(entradas(t.despues.en("B")), "1/3[13] -[] -[]");
}

TEST_F(Resintonia, AFurtherStreamJoinsTheInputTunedToItAlready) {
    poner("A", 1, 1);
    poner("A", 2, 2);
    poner("A", 3, 3);
    poner("B", 1, 1);
    poner("B", 3, 3);
    const Tramo t = unificar();
    EXPECT_EQ(entradas(t.despues.en("B")), "1/2[12] -[] 1/3[13 23]");
    EXPECT_EQ(salidas(t.despues.en("B")), "3000x3[12 13 23]");
}

TEST_F(Resintonia, AFurtherStreamJoinsTheFirstOfTwoInputsTunedToIt) {
    poner("A", 1, 1);
    poner("A", 2, 2);
    poner("A", 3, 3);
    poner("B", 1, 1);
    poner("B", 2, 3);
    poner("B", 3, 3);
    const Tramo t = unificar();
    EXPECT_EQ(entradas(t.despues.en("B")).substr(0, 27), "1/2[12] 1/3[13 22 23] -[]");
}

TEST_F(Resintonia, AFurtherStreamOnlyJoinsWhenOnidAndTsidAgree) {
    poner("A", 1, 1);
    poner("A", 2, 2);
    poner("A", 3, 3);
    poner("B", 1, 1);
    e.sintonizar("B", 2, 2, 3);
    const Tramo t = unificar();
    EXPECT_EQ(entradas(t.despues.en("B")), "1/2[12] 2/3[] 1/3[13]");
}

TEST_F(Resintonia, AFurtherStreamTakesTheFirstUntunedInput) {
    Escena otra({modulo("A", 3, {20000}), modulo("B", 4, {20000})});
    otra.puesto("A", 1, 1, datos(11, 1));
    otra.puesto("A", 2, 1, datos(12, 2));
    otra.puesto("A", 3, 1, datos(13, 3));
    otra.puesto("B", 1, 1, datos(21, 1));
    otra.puesto("B", 2, 1, datos(22, 4));
    const Tramo t = PasadaVista(otra.motor, 0, 1).tramo(5);
    EXPECT_EQ(entradas(t.despues.en("B")), "1/2[12] 1/4[22] 1/3[13] -[]");
}

TEST_F(Resintonia, AHalfTunedInputIsNotUntuned) {
    poner("A", 1, 1);
    poner("A", 2, 2);
    poner("A", 3, 3);
    poner("B", 1, 1);
    e.sintonizar("B", 2, 5, 0);
    const Tramo t = unificar();
    EXPECT_EQ(entradas(t.despues.en("B")), "1/2[12] 5/0[] 1/3[13]");
}

TEST_F(Resintonia, ServicesThatTakeAnUntunedInputJoinWhatItHolds) {
    poner("A", 1, 1);
    poner("A", 2, 2);
    poner("A", 3, 3);
    poner("B", 1, 1);
    e.clavar("B", 2, 1, fabrica::servicio(datos(90, 9)));
    const Tramo t = unificar();
    EXPECT_EQ(entradas(t.despues.en("B")), "1/2[12] 1/3[13 90] -[]");
}

TEST_F(Resintonia, AFurtherStreamWithoutServicesIsDropped) {
    // It would find an untuned input.
    poner("A", 1, 1);
    poner("A", 2, 2);
    e.sintonizar("A", 3, 1, 3);
    poner("B", 1, 1);
    const Tramo t = unificar();
    EXPECT_TRUE(t.contiene(HECHO));
    EXPECT_EQ(entradas(t.despues.en("A")), "1/1[11 21] -[] -[]");
    EXPECT_EQ(entradas(t.despues.en("B")), "1/2[12] -[] -[]");
}

TEST_F(Resintonia, AFurtherStreamWithoutServicesNeedsNoInput) {
    poner("A", 1, 1);
    poner("A", 2, 2);
    e.sintonizar("A", 3, 1, 3);
    poner("B", 1, 1);
    poner("B", 2, 4);
    poner("B", 3, 5);
    const Tramo t = unificar();
    EXPECT_TRUE(t.contiene(HECHO));
    EXPECT_EQ(entradas(t.despues.en("B")), "1/2[12] 1/4[22] 1/5[23]");
}

TEST_F(Resintonia, AFurtherStreamThatFindsNoInputRefusesTheCandidate) {
    poner("A", 1, 1);
    poner("A", 2, 2);
    poner("A", 3, 3);
    poner("B", 1, 1);
    poner("B", 2, 4);
    poner("B", 3, 5);
    const std::string antesA = entradas(e.en("A")) + salidas(e.en("A"));
    const std::string antesB = entradas(e.en("B")) + salidas(e.en("B"));
    const Tramo t = unificar();
    // From B's side the same candidate finds no input either: B is left with two more streams as well.
    EXPECT_FALSE(t.contiene(HECHO));
    EXPECT_EQ(entradas(t.despues.en("A")) + salidas(t.despues.en("A")), antesA);
    EXPECT_EQ(entradas(t.despues.en("B")) + salidas(t.despues.en("B")), antesB);

    // The refusal comes right after the test of bitrates: no pause, no announcement.
    const Hechos candidato = t.desde(" ( ( Bitrate_", "ANTES");
    ASSERT_GE(candidato.size(), 2U);
    EXPECT_EQ(candidato[1], INCOMPATIBLE);
}

TEST_F(Resintonia, OtherInputsOfTheFirstModuleOnTheStreamAreGivenUpAndGoNowhere) {
    // B comes first here: A has no room for anything, so that only B can gather the stream, and B has not
    // been merged with itself yet.
    poner("A", 1, 1);
    poner("B", 1, 1);
    poner("B", 2, 1);
    poner("B", 3, 2);
    e.en("A").PIDsModuloMax = 0;
    e.clavar("A", 1, 1, fabrica::servicio(datos(14, 1, 1000, 1)));
    const Tramo t = unificar();
    ASSERT_EQ(t.cuantas(HECHO), 1U);
    EXPECT_EQ(entradas(t.despues.en("A")), "1/2[23] -[] -[]");
    EXPECT_EQ(entradas(t.despues.en("B")), "1/1[11 14 21 22] -[] -[]");
}

TEST(ResintoniaSinSitio, AnotherInputOnTheStreamNeedsNoInputOfTheSecondModule) {
    // Stream 2 takes the only input of A before input 3 of B, on the candidate stream as well, is given up.
    Escena e({modulo("A", 1, {20000}, 0), modulo("B", 3, {20000})});
    e.puesto("A", 1, 1, datos(11, 3, 1000, 1)); // more PIDs than A may have
    e.puesto("B", 1, 1, datos(21, 3));
    e.puesto("B", 2, 1, datos(22, 2));
    e.puesto("B", 3, 1, datos(23, 3));
    const Tramo t = PasadaVista(e.motor, 0, 1).tramo(5);
    ASSERT_EQ(t.cuantas(HECHO), 1U);
    EXPECT_EQ(entradas(t.despues.en("A")), "1/2[22]");
    EXPECT_EQ(entradas(t.despues.en("B")), "1/3[11 21 23] -[] -[]");
}

TEST_F(Resintonia, EveryServiceOnAnOutputStandsOnTheInputOfItsStream) {
    poner("A", 1, 1);
    poner("A", 2, 2);
    poner("A", 3, 3);
    poner("B", 1, 4);
    poner("B", 2, 3);
    poner("B", 3, 1);
    const Tramo t = unificar();
    // The first mismatch keeps A from B's input 3; B finds A at once and gathers stream 1 on its input 3.
    ASSERT_EQ(t.cuantas(HECHO), 1U);
    EXPECT_EQ(entradas(t.despues.en("B")), "-[] -[] 1/1[11 23]");
    EXPECT_EQ(salidas(t.despues.en("B")), "2000x2[11 23]");
    EXPECT_EQ(entradas(t.despues.en("A")), "1/4[21] 1/2[12] 1/3[13 22]");
    EXPECT_EQ(salidas(t.despues.en("A")), "4000x4[12 13 21 22]");
}

} // namespace Unificar_resintonia_test
