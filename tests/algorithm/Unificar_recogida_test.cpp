// What an output carries after a gathering stands on an input, also where a service stood on an input of
// another stream.
//
// Stream 1 gathers on the candidate input of A; everything else moves to B, whose input 1 it leaves.

#include <gtest/gtest.h>

#include "algorithm/Escena.h"
#include "algorithm/PasadaVista.h"
#include "support/Lineas.h"

namespace Unificar_recogida_test {

using namespace escena;
using vista::entradas;
using vista::PasadaVista;
using vista::salidas;
using vista::Tramo;

namespace {

const std::string HECHO = lineas::REUNION;
const std::string INCOMPATIBLE = lineas::hecho(lineas::INCOMPATIBLE);

class Recogida : public testing::Test {
protected:
    Recogida() {
        e.puesto("A", 1, 1, datos(11, 1));
        e.puesto("B", 1, 1, datos(21, 1));
    }

    Servicio poner(const std::string& mac, int numero, int clave, int tsid) {
        return e.puesto(mac, static_cast<unsigned short>(numero), 1, datos(clave, tsid));
    }

    // A service on an input that receives another stream.
    Servicio extraviar(const std::string& mac, int numero, int clave, int tsid) {
        Servicio perdido = fabrica::servicio(datos(clave, tsid));
        e.clavar(mac, static_cast<unsigned short>(numero), 1, perdido);
        return perdido;
    }

    // The first unify, which looks at A and B before it looks at B and A.
    Tramo unificar() { return PasadaVista(e.motor, 0, 1).tramo(5); }

    Escena e{{modulo("A", 3, {30000}), modulo("B", 3, {30000})}};
};

} // namespace

TEST_F(Recogida, FromTheCandidateInputAServiceGoesToTheInputOfItsStream) {
    extraviar("A", 1, 15, 2);
    poner("B", 2, 22, 2);
    const Tramo t = unificar();
    ASSERT_EQ(t.cuantas(HECHO), 1U);
    EXPECT_EQ(entradas(t.despues.en("A")), "1/1[11 21] -[] -[]");
    EXPECT_EQ(entradas(t.despues.en("B")), "-[] 1/2[15 22] -[]");
    EXPECT_EQ(salidas(t.despues.en("B")), "2000x2[15 22]");
}

TEST_F(Recogida, SoItDoesFromTheInputThatTheCandidateStreamLeaves) {
    extraviar("B", 1, 25, 2);
    poner("B", 2, 22, 2);
    const Tramo t = unificar();
    ASSERT_EQ(t.cuantas(HECHO), 1U);
    EXPECT_EQ(entradas(t.despues.en("B")), "-[] 1/2[22 25] -[]");
    EXPECT_EQ(salidas(t.despues.en("B")), "2000x2[22 25]");
}

TEST_F(Recogida, AndFromAnInputThatMovedAsAWhole) {
    poner("A", 2, 12, 3);
    extraviar("A", 2, 16, 2);
    poner("B", 2, 22, 2);
    const Tramo t = unificar();
    ASSERT_EQ(t.cuantas(HECHO), 1U);
    EXPECT_EQ(entradas(t.despues.en("B")), "1/3[12] 1/2[16 22] -[]");
}

TEST_F(Recogida, ItLeavesEveryInputThatItStoodOn) {
    const Servicio perdido = extraviar("A", 2, 16, 2);
    e.sintonizar("A", 2, 1, 3);
    e.sintonizar("A", 3, 1, 4);
    e.entrada("A", 3).MapaServicios = {{16, perdido}, {16, perdido}};
    poner("B", 2, 22, 2);
    poner("B", 3, 23, 4);
    const Tramo t = unificar();
    ASSERT_EQ(t.cuantas(HECHO), 1U);
    EXPECT_EQ(entradas(t.despues.en("B")), "1/3[] 1/2[16 22] 1/4[23]");
}

TEST_F(Recogida, ItStandsBehindEqualKeysOfTheFirstInputOfItsStream) {
    const Servicio perdido = extraviar("A", 1, 22, 2);
    const Servicio estaba = poner("B", 2, 22, 2);
    e.sintonizar("B", 3, 1, 2);
    const Tramo t = unificar();
    ASSERT_GE(t.cuantas(HECHO), 1U);
    const auto& servicios = t.despues.en("B").mapEntradas.at(2).MapaServicios;
    ASSERT_EQ(servicios.size(), 2U);
    EXPECT_EQ(servicios.begin()->second, estaba);
    EXPECT_EQ(std::next(servicios.begin())->second, perdido);
    EXPECT_TRUE(t.despues.en("B").mapEntradas.at(3).MapaServicios.empty());
}

TEST_F(Recogida, NetworkAndStreamMustBothBeItsOwn) {
    extraviar("A", 1, 15, 2);
    e.sintonizar("B", 2, 2, 2);
    poner("B", 3, 22, 2);
    const Tramo t = unificar();
    ASSERT_EQ(t.cuantas(HECHO), 1U);
    EXPECT_EQ(entradas(t.despues.en("B")), "-[] 2/2[] 1/2[15 22]");
}

TEST_F(Recogida, AServiceWhoseStreamNoInputReceivesStaysWhereItStands) {
    poner("A", 2, 12, 3);
    extraviar("A", 2, 16, 9);
    const Tramo t = unificar();
    ASSERT_EQ(t.cuantas(HECHO), 1U);
    EXPECT_EQ(entradas(t.despues.en("B")), "1/3[12 16] -[] -[]");
    EXPECT_EQ(salidas(t.despues.en("B")), "2000x2[12 16]");
}

TEST_F(Recogida, AServiceOfNoStreamGoesToAnUntunedInput) {
    fabrica::DatosServicio sinStream = datos(15, 0);
    sinStream.onid = 0;
    e.clavar("A", 1, 1, fabrica::servicio(sinStream));
    const Tramo t = unificar();
    ASSERT_EQ(t.cuantas(HECHO), 1U);
    EXPECT_EQ(entradas(t.despues.en("B")), "-[15] -[] -[]");
}

TEST_F(Recogida, AServiceThatNoInputCanTakeRefusesTheCandidate) {
    extraviar("A", 1, 15, 9);
    const std::string antesA = entradas(e.en("A")) + salidas(e.en("A"));
    const std::string antesB = entradas(e.en("B")) + salidas(e.en("B"));
    const Tramo t = unificar();
    // B finds no input for it either.
    EXPECT_FALSE(t.contiene(HECHO));
    EXPECT_EQ(entradas(t.despues.en("A")) + salidas(t.despues.en("A")), antesA);
    EXPECT_EQ(entradas(t.despues.en("B")) + salidas(t.despues.en("B")), antesB);

    // The refusal comes right after the test of bitrates: no pause, no announcement.
    const std::vector<std::string> candidato = t.desde(" ( ( Bitrate_", "ANTES");
    ASSERT_GE(candidato.size(), 2U);
    EXPECT_EQ(candidato[1], INCOMPATIBLE);
}

// ---- An input that finds no place -----------------------------------------------------------------------

TEST_F(Recogida, AnInputOfAnotherNetworkThatFindsNoPlaceRefusesTheGathering) {
    // Input 2 of A takes the only input that B leaves. Input 3 has the number of the candidate stream in
    // another network, so it must go to B as well.
    poner("A", 2, 12, 2);
    fabrica::DatosServicio deOtraRed = datos(13, 1);
    deOtraRed.onid = 2;
    e.puesto("A", 3, 1, deOtraRed);
    poner("B", 2, 22, 8);
    poner("B", 3, 23, 9);
    const Tramo t = unificar();
    EXPECT_FALSE(t.contiene(HECHO));
    EXPECT_EQ(entradas(t.despues.en("A")), "1/1[11] 1/2[12] 2/1[13]");
    EXPECT_EQ(entradas(t.despues.en("B")), "1/1[21] 1/8[22] 1/9[23]");
}

TEST_F(Recogida, SoDoesAnInputThatCarriesServicesOfTheCandidateStreamAlone) {
    poner("A", 2, 12, 2);
    extraviar("A", 3, 13, 1);
    e.sintonizar("A", 3, 1, 3);
    poner("B", 2, 22, 8);
    poner("B", 3, 23, 9);
    const Tramo t = unificar();
    EXPECT_FALSE(t.contiene(HECHO));
    EXPECT_EQ(entradas(t.despues.en("A")), "1/1[11] 1/2[12] 1/3[13]");
}

TEST_F(Recogida, AnInputMovesWithAllThatItCarries) {
    // 13 is of the candidate stream, so that it stands on inputs of both modules then.
    poner("A", 2, 12, 2);
    extraviar("A", 3, 13, 1);
    e.sintonizar("A", 3, 1, 3);
    poner("B", 2, 22, 8);
    poner("B", 3, 23, 3);
    const Tramo t = unificar();
    ASSERT_TRUE(t.contiene(HECHO));
    EXPECT_EQ(entradas(t.despues.en("A")), "1/1[11 13 21] -[] -[]");
    EXPECT_EQ(entradas(t.despues.en("B")), "1/2[12] 1/8[22] 1/3[13 23]");
}

TEST_F(Recogida, TheCandidateStreamLeavesNoInputOfAnotherNetwork) {
    fabrica::DatosServicio deOtraRed = datos(22, 1);
    deOtraRed.onid = 2;
    e.puesto("B", 2, 1, deOtraRed);
    const Tramo t = unificar();
    ASSERT_TRUE(t.contiene(HECHO));
    EXPECT_EQ(entradas(t.despues.en("A")), "1/1[11 21] -[] -[]");
    EXPECT_EQ(entradas(t.despues.en("B")), "-[] 2/1[22] -[]");
}

TEST(RecogidaDeOtraRed, TheInputThatTheCandidateStreamLeavesIsTheFirstToBeTaken) {
    Escena e({modulo("A", 2, {30000}), modulo("B", 1, {30000})});
    const auto deLaRed5 = [](int clave) {
        fabrica::DatosServicio nuevo = datos(clave, 1);
        nuevo.onid = 5;
        return nuevo;
    };
    e.puesto("A", 1, 1, deLaRed5(11));
    e.puesto("A", 2, 1, datos(12, 2));
    e.puesto("B", 1, 1, deLaRed5(21));
    const Tramo t = PasadaVista(e.motor, 0, 1).tramo(5);
    ASSERT_TRUE(t.contiene(HECHO));
    EXPECT_EQ(entradas(t.despues.en("A")), "5/1[11 21] -[]");
    EXPECT_EQ(entradas(t.despues.en("B")), "1/2[12]");
}

TEST(RecogidaEnSalidas, EqualKeysFindTheirOutputsInTheOrderOfTheModulesFromTheLastOn) {
    Escena e({modulo("A", 2, {1000}), modulo("B", 2, {120, 120})});
    e.puesto("A", 1, 1, datos(11, 1, 10));
    const Servicio deA = e.puesto("A", 2, 1, datos(5, 2, 100));
    e.puesto("B", 1, 1, datos(21, 1, 10));
    const Servicio deB = e.puesto("B", 2, 1, datos(5, 3, 50));
    const Tramo t = PasadaVista(e.motor, 0, 1).tramo(5);
    ASSERT_EQ(t.cuantas(HECHO), 1U);
    // That of B comes last in the list and finds its place first; that of A does not fit beside it.
    EXPECT_EQ(t.despues.en("B").mapSalidas.at(1).MapaServicios.begin()->second, deB);
    EXPECT_EQ(t.despues.en("B").mapSalidas.at(2).MapaServicios.begin()->second, deA);
}

} // namespace Unificar_recogida_test
