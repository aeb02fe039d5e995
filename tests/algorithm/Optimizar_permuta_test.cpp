// The exchange of a principal and an auxiliar step by step: what it logs, and what each step leaves behind
// when it fails.

#include <gtest/gtest.h>

#include "algorithm/EscenaDePermuta.h"

namespace Optimizar_permuta_test {

using namespace permuta;
using vista::entradas;
using vista::indice;
using vista::PasadaVista;
using vista::salidas;
using vista::Tramo;
using zarven::tMapaServicios;

namespace {

using Hechos = std::vector<std::string>;

class Permuta : public testing::Test {
protected:
    // A second auxiliar shows where the walk goes on after a step that failed; its PIDs keep it from being
    // exchanged itself.
    void segundoAuxiliar() {
        segundo = e.auxiliar(21);
        segundo->number_PIDs_CA = 1000;
    }

    // The first failure and what was evaluated after it.
    static Hechos trasElFallo(const Tramo& tramo) {
        const Hechos pasos = paseo(tramo);
        auto it = pasos.begin();
        while (it != pasos.end() && it->compare(0, 12, "No se ha pod") != 0)
            ++it;
        return {it, pasos.end()};
    }

    std::string estado(const Tramo& t) const {
        return "A " + entradas(t.despues.en("A")) + " | " + salidas(t.despues.en("A")) + "; B " +
               entradas(t.despues.en("B")) + " | " + salidas(t.despues.en("B")) + "; " +
               indice(t.despues.indice);
    }

    EscenaDePermuta e;
    Servicio segundo;
};

} // namespace

// ---- Success ------------------------------------------------------------------------------------------

TEST_F(Permuta, LogsItsStepsInOrder) {
    e.completo();
    const Hechos esperado = {
        "7  Añadiremos el servicio principal ( 10 ) a la lista de servicios sin asignar ",
        "7  itService_Salida->first [10] - itService_Salida->second->ONID [1] - "
        "itService_Salida->second->TSID [2]",
        "7  Añadiremos el servicio auxiliar ( 20 ) a la lista de servicios sin asignar",
        "7  itService_Salida_Aux->first [20] - itService_Salida_Aux->second->ONID [1] - "
        "itService_Salida_Aux->second->TSID [2]",
        "7  Intentaremos eliminar el servicio principal del módulo principal al que estaba asignado",
        "7 Try_to_Delete_Service_Input_Output (Mapa_ModulosCabecera_Proceso.find(MAC[0] A), itEntrada 2, "
        "itService_Salida 10)",
        "7  Intentaremos eliminar el servicio auxiliar del Módulo auxiliar al que estaba asignado",
        "7 Try_to_Delete_Service_Input_Output (Mapa_ModulosCabecera_Proceso.find(MAC[1] B), itEntradaAux 2, "
        "itService_Salida_Aux 20)",
        "7  Intentaremos añadir el servicio principal al módulo auxiliar",
        "7 Try_to_Insert_Service_Input_Output (Mapa_ModulosCabecera_Proceso.find(MAC[1] B), itEntradaAux 2,  "
        "itTSID->second.MapRec_Services.find(idService_itService_Salida) 10)",
        "7 Salida 1 BitrateActual 0 BitrateMax 10000",
        "7 if ( ( (itSalida->second.BitRateActual (0) + itService->second->peakBitRate (3000) ) < "
        "itSalida->second.BitRateMax (10000) ) &&  )",
        "7 if ( && ( itModulo->second.PIDsModulo (0) + itService->second->number_PIDs_CA (5) <= "
        "itModulo->second.PIDsModuloMax (100) ) )",
        "7 He añadido el servicio: 10",
        "7 Eliminaremos el servicio 10 de la lista de TSIDs ( 1 )",
        "7  Intentaremos añadir el servicio auxiliar al módulo principal",
        "7 Try_to_Insert_Service_Input_Output (Mapa_ModulosCabecera_Proceso.find(MAC[0] A), itEntrada 2,  "
        "itTSID->second.MapRec_Services.find(idService_itService_Salida_Aux) 20)",
        "7 Salida 1 BitrateActual 0 BitrateMax 10000",
        "7 if ( ( (itSalida->second.BitRateActual (0) + itService->second->peakBitRate (2000) ) < "
        "itSalida->second.BitRateMax (10000) ) &&  )",
        "7 if ( && ( itModulo->second.PIDsModulo (0) + itService->second->number_PIDs_CA (3) <= "
        "itModulo->second.PIDsModuloMax (100) ) )",
        "7 He añadido el servicio: 20",
        "7 Eliminaremos el servicio 10 de la lista de TSIDs ( 0 )",
        "7  Intentaremos añadir el servicio ORIGINAL que queriamos añadir al módulo principal",
        "sleep 1",
        "7 Try_to_Insert_Service_Input_Output (Mapa_ModulosCabecera_Proceso.find(MAC[0] A), "
        "Mapa_ModulosCabecera_Proceso.find(MAC[0])->second.mapEntradas.find ( NumEntrada_Service_Out) 1,  "
        "itTSID->second.MapRec_Services.find(idService_itService_Out) 30)",
        "7 Salida 1 BitrateActual 2000 BitrateMax 10000",
        "7 if ( ( (itSalida->second.BitRateActual (2000) + itService->second->peakBitRate (4000) ) < "
        "itSalida->second.BitRateMax (10000) ) &&  )",
        "7 if ( && ( itModulo->second.PIDsModulo (3) + itService->second->number_PIDs_CA (2) <= "
        "itModulo->second.PIDsModuloMax (100) ) )",
        "7 He añadido el servicio: 30",
        "7 Eliminaremos el servicio ORIGINAL 30 de la lista de TSIDs ( 1 )",
        "7 ELIMINAMOS EL TSID: 1",
        "7 ELIMINAMOS EL ONID: 1",
        "7 clear = 2",
    };
    EXPECT_EQ(e.optimizar().desde(PERMUTA, " Hemos hecho"), esperado);
}

TEST_F(Permuta, MovesBothServicesAndPlacesTheOriginal) {
    e.completo();
    const Tramo t = e.optimizar();
    EXPECT_EQ(estado(t), "A 1/1[30] 1/2[20] | 6000x2[20 30]; B 1/3[] 1/2[10] | 3000x1[10]; ");
    EXPECT_EQ(t.despues.en("A").PIDsModulo, 5);
    EXPECT_EQ(t.despues.en("B").PIDsModulo, 5);
}

TEST(PermutaEntradas, EachModuleHasItsOwnInputOnTheStreamToExchange) {
    Escena otra({escena::modulo("A", 2, {10000}), escena::modulo("B", 3, {10000})});
    otra.sintonizar("A", 1, 1, ORIGINAL);
    otra.puesto("A", 2, 1, datos(10, COMUN, 3000));
    otra.sintonizar("B", 1, 1, OTRO);
    otra.sintonizar("B", 2, 1, 4);
    otra.puesto("B", 3, 1, datos(20, COMUN, 2000));
    otra.libre(datos(30, ORIGINAL, 4000));
    const Tramo t = PasadaVista(otra.motor, 0, 1).tramo(6);
    EXPECT_EQ(
        t.cuantasEmpiezan("Try_to_Delete_Service_Input_Output (Mapa_ModulosCabecera_Proceso.find(MAC[1] B), "
                          "itEntradaAux 3, "),
        1U);
    EXPECT_EQ(
        t.cuantasEmpiezan("Try_to_Insert_Service_Input_Output (Mapa_ModulosCabecera_Proceso.find(MAC[1] B), "
                          "itEntradaAux 3,  "),
        1U);
    EXPECT_EQ(entradas(t.despues.en("A")), "1/1[30] 1/2[20]");
    EXPECT_EQ(entradas(t.despues.en("B")), "1/3[] 1/4[] 1/2[10]");
}

TEST_F(Permuta, TranscodersMoveWithTheirServices) {
    e.en("A").SD_MAX_Transcoding = 1;
    e.en("B").SD_MAX_Transcoding = 2;
    e.puesto("A", 2, 1, escena::conTranscoding(datos(10, COMUN, 3000)));
    e.auxiliar();
    e.original();
    const Tramo t = e.optimizar();
    EXPECT_TRUE(t.contiene("clear = 2"));
    EXPECT_EQ(t.despues.en("A").SD_Transcoding, 0);
    EXPECT_EQ(t.despues.en("B").SD_Transcoding, 1);
}

TEST_F(Permuta, TheIndexIsDumpedOnceThePrincipalIsOff) {
    e.completo();
    const PasadaVista r = e.pasar();
    const auto& hechos = registro::hechos();
    const std::size_t quitado = registro::posicion(
        "7 Try_to_Delete_Service_Input_Output (Mapa_ModulosCabecera_Proceso.find(MAC[0] A), itEntrada 2, "
        "itService_Salida 10)");
    ASSERT_NE(quitado, registro::npos);
    EXPECT_EQ(hechos[quitado + 1], "7 ||" + std::string(106, '=') + "||");
    EXPECT_EQ(hechos[quitado + 2], "7 ||                                       [ONID: 1 |-| TSID: 1 ]"
                                   "                                          ||");
    // The three of them, in the order of their keys.
    Hechos nombres;
    for (std::size_t i = quitado; i < hechos.size() && hechos[i].find("Intentaremos") == std::string::npos;
         ++i)
        if (hechos[i].find("NombreEntrada") != std::string::npos)
            nombres.push_back(hechos[i].substr(10, 18));
    EXPECT_EQ(nombres, (Hechos{"NombreEntrada: S10", "NombreEntrada: S20", "NombreEntrada: S30"}));
    EXPECT_EQ(registro::cuantasEmpiezan("||                                       [ONID: "), 1U);
}

TEST_F(Permuta, TheAuxiliarsLineNamesThePrincipalAndItsStreamWhileTheIndexKnowsIt) {
    e.completo();
    e.libre(datos(40, COMUN, 60000));
    const Tramo t = e.optimizar();
    EXPECT_TRUE(t.contiene("Eliminaremos el servicio 10 de la lista de TSIDs ( 2 )"));
    EXPECT_EQ(t.cuantas("Eliminaremos el servicio 10 de la lista de TSIDs ( 1 )"), 1U);
    EXPECT_EQ(t.cuantasEmpiezan("Eliminaremos el servicio 20"), 0U);
}

// ---- Step by step -------------------------------------------------------------------------------------

TEST_F(Permuta, APrincipalThatIsNotOnItsInputStaysAndBothAreStaged) {
    e.completo();
    segundoAuxiliar();
    e.entrada("A", 2).MapaServicios.clear();
    const PasadaVista r = e.pasar();
    const Tramo& t = r.tramo(6);
    EXPECT_EQ(trasElFallo(t), (Hechos{"No se ha podido eliminar el servicio principal 10", auxiliar(21)}));
    EXPECT_EQ(estado(t), "A 1/1[] 1/2[] | 3000x1[10]; B 1/3[] 1/2[20 21] | 4000x2[20 21]; 1/1[10 20 30]");
    // Nothing was taken off, so nothing is shown.
    EXPECT_EQ(registro::cuantasEmpiezan("||                                       [ONID: "), 0U);
    EXPECT_FALSE(
        t.contiene(" Intentaremos eliminar el servicio auxiliar del Módulo auxiliar al que estaba asignado"));
}

TEST_F(Permuta, AnAuxiliarThatIsNotOnItsInputStaysAndThePrincipalIsOff) {
    e.completo();
    segundoAuxiliar();
    e.entrada("B", 2).MapaServicios.clear();
    const Tramo t = e.optimizar();
    EXPECT_EQ(trasElFallo(t), (Hechos{"No se ha podido eliminar el servicio auxiliar 20", auxiliar(21)}));
    EXPECT_EQ(estado(t), "A 1/1[] 1/2[] | 0x0[]; B 1/3[] 1/2[] | 4000x2[20 21]; 1/1[10 20 30]");
    EXPECT_EQ(t.despues.en("A").PIDsModulo, 0);
    EXPECT_FALSE(t.contiene(" Intentaremos añadir el servicio principal al módulo auxiliar"));
}

TEST_F(Permuta, APrincipalThatMac1CannotTakeStaysStagedAndTheAuxiliarIsOff) {
    e.completo();
    segundoAuxiliar();
    // B has a transcoder too few; A gets the one back that the principal held.
    e.en("A").SD_Transcoding = 1;
    sinTranscoder(e.motor.listaServicios[0]);
    const Tramo t = e.optimizar();
    EXPECT_EQ(trasElFallo(t),
              (Hechos{"No se ha podido añadir el servicio principal al módulo auxiliar 10", auxiliar(21)}));
    EXPECT_EQ(estado(t), "A 1/1[] 1/2[] | 0x0[]; B 1/3[] 1/2[21] | 2000x1[21]; 1/1[10 20 30]");
    EXPECT_EQ(t.despues.en("A").SD_Transcoding, 0);
    EXPECT_EQ(t.cuantasEmpiezan("Eliminaremos"), 0U);
    EXPECT_FALSE(t.contiene(" Intentaremos añadir el servicio auxiliar al módulo principal"));
}

TEST_F(Permuta, AnAuxiliarThatMac0CannotTakeStaysStagedAndThePrincipalHasMoved) {
    e.completo();
    segundoAuxiliar();
    e.en("B").SD_Transcoding = 1;
    sinTranscoder(e.motor.listaServicios[1]);
    const Tramo t = e.optimizar();
    EXPECT_EQ(trasElFallo(t),
              (Hechos{"No se ha podido añadir el servicio auxiliar al módulo principal 20", auxiliar(21)}));
    EXPECT_EQ(estado(t), "A 1/1[] 1/2[] | 0x0[]; B 1/3[] 1/2[10 21] | 5000x2[10 21]; 1/1[20 30]");
    EXPECT_EQ(t.cuantasEmpiezan("Eliminaremos"), 1U);
    EXPECT_FALSE(
        t.contiene(" Intentaremos añadir el servicio ORIGINAL que queriamos añadir al módulo principal"));
}

TEST_F(Permuta, AnOriginalThatMac0CannotTakeStaysUnassignedAndBothHaveMoved) {
    e.completo();
    segundoAuxiliar();
    sinTranscoder(e.motor.listaServicios[2]);
    const Tramo t = e.optimizar();
    EXPECT_EQ(trasElFallo(t),
              (Hechos{"No se ha podido añadir el servicio ORIGINAL al módulo principal 30", auxiliar(21)}));
    EXPECT_EQ(estado(t), "A 1/1[] 1/2[20] | 2000x1[20]; B 1/3[] 1/2[10 21] | 5000x2[10 21]; 1/1[30]");
    EXPECT_EQ(t.cuantasEmpiezan("Eliminaremos el servicio ORIGINAL"), 0U);
    EXPECT_EQ(t.cuantasEmpiezan("clear = "), 0U);
}

TEST_F(Permuta, TheOriginalPausesBeforeItIsTried) {
    e.completo();
    sinTranscoder(e.motor.listaServicios[2]);
    const Hechos tras = e.optimizar().desde(
        " Intentaremos añadir el servicio ORIGINAL que queriamos añadir al módulo principal");
    EXPECT_EQ(tras[1], "sleep 1");
}

TEST_F(Permuta, TheStreamWalkedTakesTheStagedServicesNotTheirOwn) {
    e.completo();
    e.libre(datos(40, COMUN, 60000)); // their own stream is in the index as well
    e.entrada("A", 2).MapaServicios.clear();
    EXPECT_EQ(indice(e.optimizar().despues.indice), "1/1[10 20 30] 1/2[40]");
}

TEST_F(Permuta, FreePidsAreThoseOfTheBeginning) {
    // The first pair ends with the original refused; the budget of A is spent then, but the second pair is
    // weighed as if nothing had happened.
    e.completo();
    e.auxiliar(21);
    sinTranscoder(e.motor.listaServicios[2]);
    e.en("A").PIDsModuloMax = 5;
    const Tramo t = e.optimizar();
    EXPECT_EQ(t.cuantasEmpiezan(PIDS_BASTAN), 2U);
    EXPECT_EQ(t.cuantasEmpiezan(PERMUTA), 2U);
}

// ---- Equal keys ---------------------------------------------------------------------------------------

TEST_F(Permuta, AnOriginalWithTheKeyOfThePrincipalIsPutBackAndPlaced) {
    const Servicio va = e.principal(10);
    const Servicio viene = e.auxiliar(20);
    const Servicio entra = e.original(10);
    const Tramo t = e.optimizar();
    EXPECT_TRUE(t.contiene("clear = 2"));
    const tMapaServicios enB = t.despues.en("B").mapEntradas.at(2).MapaServicios;
    ASSERT_EQ(enB.size(), 1U);
    EXPECT_EQ(enB.begin()->second, va);
    const tMapaServicios enA = t.despues.en("A").mapEntradas.at(1).MapaServicios;
    ASSERT_EQ(enA.size(), 1U);
    EXPECT_EQ(enA.begin()->second, entra);
}

TEST_F(Permuta, AnOriginalWithTheKeyOfTheAuxiliarIsPutBackAndPlaced) {
    const Servicio va = e.principal(10);
    const Servicio viene = e.auxiliar(20);
    const Servicio entra = e.original(20);
    const Tramo t = e.optimizar();
    EXPECT_TRUE(t.contiene("clear = 2"));
    const tMapaServicios enA2 = t.despues.en("A").mapEntradas.at(2).MapaServicios;
    ASSERT_EQ(enA2.size(), 1U);
    EXPECT_EQ(enA2.begin()->second, viene);
    const tMapaServicios enA1 = t.despues.en("A").mapEntradas.at(1).MapaServicios;
    ASSERT_EQ(enA1.size(), 1U);
    EXPECT_EQ(enA1.begin()->second, entra);
}

TEST_F(Permuta, AnOriginalPutBackIsStillThereWhenALaterStepFails) {
    e.principal(10);
    sinTranscoder(e.auxiliar(20));
    const Servicio entra = e.original(10);
    const Tramo t = e.optimizar();
    EXPECT_EQ(indice(t.despues.indice), "1/1[10 20]");
    EXPECT_EQ(t.despues.indice.at(1).MapRec_TSIDs.at(1).MapRec_Services.begin()->second, entra);
}

TEST_F(Permuta, OtherServicesWithTheKeyOfThePrincipalAreLost) {
    e.principal(40);
    e.auxiliar(20);
    e.original(30);
    e.original(40);
    const Tramo t = e.optimizar();
    EXPECT_TRUE(t.contiene("clear = 2"));
    EXPECT_EQ(t.cuantasEmpiezan("clear = "), 1U); // one service was placed, no other is in hand after it
    EXPECT_TRUE(t.despues.indice.empty());
    EXPECT_EQ(estado(t), "A 1/1[30] 1/2[20] | 6000x2[20 30]; B 1/3[] 1/2[40] | 3000x1[40]; ");
}

TEST_F(Permuta, OtherServicesWithTheKeyOfTheAuxiliarAreLost) {
    e.principal(10);
    e.auxiliar(40);
    e.original(30);
    e.original(40);
    const Tramo t = e.optimizar();
    EXPECT_TRUE(t.contiene("clear = 2"));
    EXPECT_EQ(t.cuantasEmpiezan("clear = "), 1U); // one service was placed, no other is in hand after it
    EXPECT_TRUE(t.despues.indice.empty());
}

TEST_F(Permuta, OtherServicesWithTheKeyOfTheOriginalGoWithIt) {
    // 30 twice in its stream: a service of stream 2 that an earlier exchange left there.
    e.completo();
    e.motor.Mapa_ONIDs.at(1).MapRec_TSIDs.at(1).MapRec_Services.emplace(30,
                                                                        fabrica::servicio(datos(30, COMUN)));
    const Tramo t = e.optimizar();
    EXPECT_TRUE(t.contiene("clear = 2"));
    EXPECT_EQ(t.cuantasEmpiezan("clear = "), 1U); // one service was placed, no other is in hand after it
    EXPECT_TRUE(t.despues.indice.empty());
}

TEST_F(Permuta, TheOriginalPlacedIsTheOneInHand) {
    // The second of two services with one key, once the first is out of the way for good.
    e.principal(10);
    e.auxiliar(20);
    fabrica::DatosServicio grande = datos(30, ORIGINAL, 60000);
    e.libre(grande);
    const Servicio segundo30 = fabrica::servicio(datos(30, ORIGINAL, 4000, 2));
    e.motor.Mapa_ONIDs.at(1).MapRec_TSIDs.at(1).MapRec_Services.emplace(30, segundo30);
    const Tramo t = e.optimizar();
    const tMapaServicios enA = t.despues.en("A").mapEntradas.at(1).MapaServicios;
    ASSERT_EQ(enA.size(), 1U);
    EXPECT_EQ(enA.begin()->second, segundo30);
}

TEST_F(Permuta, EqualKeysOnAnOutputBothGoWithThePrincipal) {
    // Another service of A with the key of the principal leaves with it; A counts one of the two.
    e.completo();
    e.clavar("A", 1, 1, fabrica::servicio(datos(10, ORIGINAL)));
    sinTranscoder(e.motor.listaServicios[1]);
    e.en("B").SD_Transcoding = 1;
    const Tramo t = e.optimizar();
    EXPECT_EQ(estado(t), "A 1/1[10] 1/2[] | 1000x1[]; B 1/3[] 1/2[10] | 3000x1[10]; 1/1[20 30]");
}

} // namespace Optimizar_permuta_test
