// The walk of the unify phase: merging the inputs of one module, and which pairs of inputs of two modules
// are looked at.

#include <gtest/gtest.h>

#include "algorithm/Escena.h"
#include "algorithm/PasadaVista.h"
#include "support/Lineas.h"

namespace Unificar_test {

using namespace escena;
using vista::entradas;
using vista::PasadaVista;
using vista::salidas;
using vista::Tramo;

namespace {

using Hechos = std::vector<std::string>;

const std::string ESTADO = lineas::hecho(lineas::UNIFICAR);
constexpr char MISMO[] =
    "7 SI es el mismo módulo y tiene la misma entrada configurada, meterlo todo en 1 entrada";
constexpr char SIN_CONFIGURAR[] = "7 Entradas sin configurar, no se pueden unificar";
const std::string INCOMPATIBLE = lineas::hecho(lineas::INCOMPATIBLE);
const std::string POR_REUNION = lineas::hecho(lineas::COMPLETAR_TRAS_REUNION);
const std::string POR_UNION = lineas::hecho(lineas::COMPLETAR_TRAS_UNION);
const std::string HECHO = lineas::REUNION;

// The first unify of a pass that fills nothing.
Tramo unificar(Escena& e) {
    return PasadaVista(e.motor, 0, 1).tramo(5);
}

fabrica::DatosServicio deRed(int onid, int clave, int tsid) {
    fabrica::DatosServicio nuevo = datos(clave, tsid);
    nuevo.onid = static_cast<unsigned short>(onid);
    return nuevo;
}

} // namespace

// ---- One module ---------------------------------------------------------------------------------------

TEST(UnificarModulo, DifferentStreamsStay) {
    Escena e({modulo("A", 3, {20000})});
    e.puesto("A", 1, 1, datos(1, 1));
    e.puesto("A", 2, 1, datos(2, 2));
    e.puesto("A", 3, 1, deRed(2, 3, 1));
    EXPECT_EQ(unificar(e).hechos, (Hechos{ESTADO, MISMO}));
    EXPECT_EQ(entradas(e.en("A")), "1/1[1] 1/2[2] 2/1[3]");
}

TEST(UnificarModulo, TheHigherInputOfOneStreamMergesIntoTheLower) {
    Escena e({modulo("A", 3, {20000})});
    e.puesto("A", 1, 1, datos(1, 1));
    e.puesto("A", 2, 1, datos(2, 2));
    e.puesto("A", 3, 1, datos(3, 1));
    const Tramo t = unificar(e);
    EXPECT_EQ(t.hechos, (Hechos{ESTADO, MISMO, POR_UNION, SIN_CONFIGURAR}));
    EXPECT_EQ(entradas(t.despues.en("A")), "1/1[1 3] 1/2[2] -[]");
}

TEST(UnificarModulo, EveryLaterInputOfTheStreamMerges) {
    Escena e({modulo("A", 5, {20000})});
    for (const int numero : {1, 2, 4, 5})
        e.puesto("A", static_cast<unsigned short>(numero), 1, datos(10 - numero, numero == 4 ? 2 : 1));
    const Tramo t = unificar(e);
    EXPECT_EQ(t.hechos,
              (Hechos{ESTADO, MISMO, POR_UNION, POR_UNION, SIN_CONFIGURAR, SIN_CONFIGURAR, SIN_CONFIGURAR}));
    EXPECT_EQ(entradas(t.despues.en("A")), "1/1[5 8 9] -[] -[] 1/2[6] -[]");
}

TEST(UnificarModulo, TwoStreamsMergeEachOnItsOwn) {
    Escena e({modulo("A", 4, {20000})});
    for (const int numero : {1, 2, 3, 4})
        e.puesto("A", static_cast<unsigned short>(numero), 1, datos(numero, numero % 2 + 1));
    const Tramo t = unificar(e);
    EXPECT_EQ(entradas(t.despues.en("A")), "1/2[1 3] 1/1[2 4] -[] -[]");
    EXPECT_EQ(t.hechos, (Hechos{ESTADO, MISMO, POR_UNION, POR_UNION, SIN_CONFIGURAR, SIN_CONFIGURAR}));
}

TEST(UnificarModulo, AnInputWithoutServicesMergesToo) {
    Escena e({modulo("A", 2, {20000})});
    e.puesto("A", 1, 1, datos(1, 1));
    e.sintonizar("A", 2, 1, 1);
    const Tramo t = unificar(e);
    EXPECT_EQ(t.hechos, (Hechos{ESTADO, MISMO, POR_UNION, SIN_CONFIGURAR}));
    EXPECT_EQ(entradas(t.despues.en("A")), "1/1[1] -[]");
}

TEST(UnificarModulo, EqualKeysAreBothKept) {
    Escena e({modulo("A", 2, {20000})});
    const Servicio uno = e.puesto("A", 1, 1, datos(1, 1));
    const Servicio otro = fabrica::servicio(datos(1, 1));
    e.sintonizar("A", 2, 1, 1);
    e.clavar("A", 2, 1, otro);
    const Tramo t = unificar(e);
    const auto& servicios = t.despues.en("A").mapEntradas.at(1).MapaServicios;
    ASSERT_EQ(servicios.size(), 2U);
    // The kept input's own entry comes first.
    EXPECT_EQ(servicios.begin()->second, uno);
    EXPECT_EQ(servicios.rbegin()->second, otro);
}

TEST(UnificarModulo, UntunedInputsDoNotMerge) {
    Escena e({modulo("A", 4, {20000})});
    e.sintonizar("A", 1, 5, 0);
    e.sintonizar("A", 2, 5, 0);
    e.sintonizar("A", 3, 0, 5);
    e.sintonizar("A", 4, 0, 5);
    const Tramo t = unificar(e);
    EXPECT_EQ(t.hechos,
              (Hechos{ESTADO, MISMO, SIN_CONFIGURAR, SIN_CONFIGURAR, SIN_CONFIGURAR, SIN_CONFIGURAR}));
    EXPECT_EQ(entradas(t.despues.en("A")), "5/0[] 5/0[] 0/5[] 0/5[]");
}

TEST(UnificarModulo, OutputsAndCountersAndBackReferencesStay) {
    Escena e({modulo("A", 2, {20000, 20000})});
    e.puesto("A", 1, 1, datos(1, 1, 1500, 3));
    const Servicio movido = e.puesto("A", 2, 2, datos(2, 1, 2500, 4));
    tRec_Entrada anterior(2);
    movido->pEntrada = &anterior;
    const Tramo t = unificar(e);
    EXPECT_EQ(salidas(t.despues.en("A")), "1500x1[1] 2500x1[2]");
    EXPECT_EQ(t.despues.en("A").PIDsModulo, 7);
    EXPECT_EQ(movido->pEntrada, &anterior);
    movido->pEntrada = nullptr;
}

// ---- Which pairs are looked at ------------------------------------------------------------------------

TEST(UnificarParejas, EveryOrderedPairOfModulesIsWalkedOnce) {
    Escena e({modulo("C", 1, {20000}), modulo("A", 1, {20000}), modulo("B", 1, {20000})});
    const int tsid[] = {1, 2, 3};
    const char* macs[] = {"A", "B", "C"};
    for (int i = 0; i < 3; ++i)
        e.puesto(macs[i], 1, 1, datos(i + 1, tsid[i]));
    EXPECT_EQ(unificar(e).hechos, (Hechos{ESTADO, MISMO, INCOMPATIBLE, INCOMPATIBLE, INCOMPATIBLE, MISMO,
                                          INCOMPATIBLE, INCOMPATIBLE, INCOMPATIBLE, MISMO}));
}

TEST(UnificarParejas, MacsOfTheSameLengthAreDifferentModules) {
    Escena e({modulo("AB", 1, {20000}), modulo("BA", 1, {20000})});
    EXPECT_EQ(unificar(e).hechos,
              (Hechos{ESTADO, MISMO, SIN_CONFIGURAR, SIN_CONFIGURAR, SIN_CONFIGURAR, MISMO, SIN_CONFIGURAR}));
}

TEST(UnificarParejas, DifferentStreamsGiveOneLinePerTunedInputOfTheFirstModule) {
    Escena e({modulo("A", 3, {20000}), modulo("B", 2, {20000})});
    e.puesto("A", 1, 1, datos(1, 1));
    e.puesto("A", 3, 1, datos(2, 2));
    e.puesto("B", 1, 1, datos(3, 3));
    e.puesto("B", 2, 1, datos(4, 4));
    EXPECT_EQ(unificar(e).hechos, (Hechos{ESTADO,
                                          // A with itself, then with B
                                          MISMO, SIN_CONFIGURAR, INCOMPATIBLE, SIN_CONFIGURAR, INCOMPATIBLE,
                                          // B with A, then with itself
                                          INCOMPATIBLE, INCOMPATIBLE, MISMO}));
    EXPECT_EQ(registro::cuantasEmpiezan("ANTES"), 0U);
}

TEST(UnificarParejas, TheFirstMismatchEndsTheSearchOnTheSecondModule) {
    // Input 2 of B receives the stream, but input 1 comes first.
    Escena e({modulo("A", 1, {20000}), modulo("B", 2, {20000})});
    e.puesto("A", 1, 1, datos(1, 1));
    e.puesto("B", 1, 1, datos(2, 2));
    e.puesto("B", 2, 1, datos(3, 1));
    const Tramo t = unificar(e);
    // From B's side the pair is met: input 2 of B and the only input of A.
    EXPECT_EQ(t.hechos[1], MISMO);
    EXPECT_EQ(t.hechos[2], INCOMPATIBLE);
    EXPECT_EQ(t.hechos[3], INCOMPATIBLE);
    EXPECT_EQ(t.cuantasEmpiezan(lineas::CANDIDATO), 1U);
}

TEST(UnificarParejas, OnidAndTsidBothTellStreamsApart) {
    Escena e({modulo("A", 1, {20000}), modulo("B", 1, {20000}), modulo("C", 1, {20000})});
    e.puesto("A", 1, 1, deRed(1, 1, 1));
    e.puesto("B", 1, 1, deRed(2, 2, 1));
    e.puesto("C", 1, 1, deRed(1, 3, 2));
    EXPECT_EQ(unificar(e).cuantasEmpiezan(lineas::CANDIDATO), 0U);
}

TEST(UnificarParejas, UntunedInputsOfTheSecondModuleDoNotEndTheSearch) {
    Escena e({modulo("A", 1, {20000}), modulo("B", 4, {20000})});
    e.puesto("A", 1, 1, datos(1, 1));
    e.sintonizar("B", 2, 1, 0);
    e.sintonizar("B", 3, 0, 1);
    e.puesto("B", 4, 1, datos(2, 1));
    const Tramo t = unificar(e);
    const Hechos principio(t.hechos.begin(), t.hechos.begin() + 5);
    EXPECT_EQ(principio, (Hechos{ESTADO, MISMO, SIN_CONFIGURAR, SIN_CONFIGURAR, SIN_CONFIGURAR}));
    EXPECT_EQ(t.cuantasEmpiezan(lineas::CANDIDATO), 1U);
    EXPECT_TRUE(t.contiene(HECHO));
}

TEST(UnificarParejas, HalfTunedInputsOfTheFirstModuleAreNotComparedAtAll) {
    Escena e({modulo("A", 2, {20000}), modulo("B", 1, {20000})});
    e.sintonizar("A", 1, 1, 0);
    e.sintonizar("A", 2, 0, 1);
    e.puesto("B", 1, 1, datos(1, 1));
    const Tramo t = unificar(e);
    const Hechos principio(t.hechos.begin(), t.hechos.begin() + 6);
    EXPECT_EQ(principio,
              (Hechos{ESTADO, MISMO, SIN_CONFIGURAR, SIN_CONFIGURAR, SIN_CONFIGURAR, SIN_CONFIGURAR}));
}

TEST(UnificarParejas, ARefusedCandidateIsFollowedByTheNextInputOfTheSecondModule) {
    // No PID budget, so every candidate is refused: each of the two inputs of B with that of A, and from B's
    // side the other way round.
    Escena e({modulo("A", 1, {20000}, 0), modulo("B", 2, {20000}, 0)});
    e.puesto("A", 1, 1, datos(1, 1, 1000, 1));
    e.puesto("B", 1, 1, datos(2, 1));
    e.puesto("B", 2, 1, datos(3, 1));
    const Tramo t = unificar(e);
    EXPECT_EQ(t.cuantasEmpiezan(lineas::CANDIDATO), 4U);
    EXPECT_FALSE(t.contiene(HECHO));
}

TEST(UnificarParejas, AnAcceptedCandidateIsFollowedByTheNextInputOfTheSecondModule) {
    // Input 2 of B has been left untuned by gathering over input 1; input 3 is another stream.
    Escena e({modulo("A", 1, {20000}), modulo("B", 3, {20000})});
    e.puesto("A", 1, 1, datos(1, 1));
    e.puesto("B", 1, 1, datos(2, 1));
    e.puesto("B", 2, 1, datos(3, 1));
    e.puesto("B", 3, 1, datos(4, 4));
    const Tramo t = unificar(e);
    const Hechos tras = t.desde(HECHO);
    EXPECT_EQ(tras, (Hechos{std::string("7 ") + HECHO,
                            // A's input with inputs 2 and 3 of B
                            SIN_CONFIGURAR, INCOMPATIBLE,
                            // B's inputs with A's
                            SIN_CONFIGURAR, SIN_CONFIGURAR, INCOMPATIBLE,
                            // B with itself
                            MISMO, SIN_CONFIGURAR, SIN_CONFIGURAR}));
    EXPECT_EQ(entradas(t.despues.en("A")), "1/1[1 2 3]");
    EXPECT_EQ(entradas(t.despues.en("B")), "-[] -[] 1/4[4]");
}

TEST(UnificarParejas, AnAcceptedCandidateIsFollowedByTheNextInputOfTheFirstModule) {
    // A gives its input 2 up, so that it is untuned when the walk gets there.
    Escena e({modulo("A", 2, {20000}), modulo("B", 1, {20000})});
    e.puesto("A", 1, 1, datos(1, 1));
    e.puesto("A", 2, 1, datos(2, 2));
    e.puesto("B", 1, 1, datos(3, 1));
    const Tramo t = unificar(e);
    EXPECT_EQ(t.desde(HECHO), (Hechos{std::string("7 ") + HECHO,
                                      // input 2 of A
                                      SIN_CONFIGURAR,
                                      // B's input, now of stream 2, with A's first
                                      INCOMPATIBLE, MISMO}));
}

TEST(UnificarParejas, AGatheringIsMetByTheLaterPairsOfTheEntry) {
    // A takes the stream from B; C's services then join A as well.
    Escena e({modulo("A", 1, {20000}), modulo("B", 1, {20000}), modulo("C", 1, {20000})});
    e.puesto("A", 1, 1, datos(1, 1));
    e.puesto("B", 1, 1, datos(2, 1));
    e.puesto("C", 1, 1, datos(3, 1));
    const Tramo t = unificar(e);
    EXPECT_EQ(t.cuantas(HECHO), 2U);
    EXPECT_EQ(entradas(t.despues.en("A")), "1/1[1 2 3]");
    EXPECT_EQ(entradas(t.despues.en("B")), "-[]");
    EXPECT_EQ(entradas(t.despues.en("C")), "-[]");
}

// ---- The request for the uncomplete phase, and the dump -----------------------------------------------

TEST(UnificarPeticion, AGatheringAsksForItOnlyWithServicesLeft) {
    for (const bool quedan : {false, true}) {
        Escena e({modulo("A", 1, {20000}), modulo("B", 1, {20000})});
        e.puesto("A", 1, 1, datos(1, 1));
        e.puesto("B", 1, 1, datos(2, 1));
        if (quedan)
            e.libre(datos(3, 3));
        const Tramo t = unificar(e);
        EXPECT_TRUE(t.contiene(HECHO));
        EXPECT_EQ(t.desde(HECHO)[1] == POR_REUNION, quedan);
        EXPECT_EQ(t.cuantas(lineas::COMPLETAR_TRAS_REUNION), quedan ? 1U : 0U);
    }
}

TEST(UnificarPeticion, AMergeAsksForItWithNothingLeftToo) {
    Escena e({modulo("A", 2, {20000})});
    e.puesto("A", 1, 1, datos(1, 1));
    e.puesto("A", 2, 1, datos(2, 1));
    EXPECT_EQ(PasadaVista(e.motor, 0, 1).camino(), "2 5 4 5");
}

TEST(UnificarPeticion, OneRequestIsEnoughWhateverComesAfter) {
    // A merges; the later modules have nothing to do.
    Escena e({modulo("A", 2, {20000}), modulo("B", 1, {20000}), modulo("C", 1, {20000})});
    e.puesto("A", 1, 1, datos(1, 1));
    e.puesto("A", 2, 1, datos(2, 1));
    e.puesto("B", 1, 1, datos(3, 3));
    EXPECT_EQ(PasadaVista(e.motor, 0, 1).camino().substr(0, 5), "2 5 4");
}

TEST(UnificarVolcado, StandsBetweenItsTitlesAlsoWithoutModules) {
    Escena e;
    const PasadaVista r(e.motor, 0, 1);
    const std::string subrayado = "7 ||" + std::string(106, '_') + "||";
    const std::string blanco = "7 ||" + std::string(106, ' ') + "||";
    const std::size_t estado = registro::posicion(ESTADO);
    const Hechos volcado(registro::hechos().begin() + static_cast<std::ptrdiff_t>(estado) + 1,
                         registro::hechos().end());
    EXPECT_EQ(volcado, (Hechos{subrayado,
                               "7 ||                             DESPUES DE UNIFY PRINT MAPA MODULOS SALIDA"
                               "                                ||",
                               blanco, blanco,
                               "7 ||                                       END PRINT MAPA MODULOS SALIDA"
                               "                                      ||",
                               subrayado}));
}

} // namespace Unificar_test
