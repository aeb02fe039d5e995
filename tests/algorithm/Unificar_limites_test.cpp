// What gathering a stream must keep to: PIDs, transcoders, the sum of bitrates, and a place for every
// service on an output.

#include <functional>

#include <gtest/gtest.h>

#include "algorithm/Escena.h"
#include "algorithm/PasadaVista.h"
#include "support/Lineas.h"

namespace Unificar_limites_test {

using namespace escena;
using vista::entradas;
using vista::PasadaVista;
using vista::salidas;
using vista::Tramo;

namespace {

using Hechos = std::vector<std::string>;

const std::string HECHO = lineas::hecho(lineas::REUNION);
const std::string INCOMPATIBLE = lineas::hecho(lineas::INCOMPATIBLE);
constexpr char CAM[] = "7 El intercambio no es problema para la CAM";
constexpr char TRANSCODER[] = "7 El intercambio no es problema para el transcoder";

bool esta(const Hechos& hechos, const std::string& hecho) {
    return std::find(hechos.begin(), hechos.end(), hecho) != hechos.end();
}

Hechos::const_iterator primeraQueEmpieza(const Hechos& hechos, const std::string& principio) {
    return std::find_if(hechos.begin(), hechos.end(), [&](const std::string& hecho) {
        return hecho.compare(0, principio.size(), principio) == 0;
    });
}

// A and B receive stream 1, B also stream 2. What A is to carry needs 9 PIDs, 1 HD and 2 SD transcoders and
// 5000 of bitrate, what B is to carry 8 PIDs, 3 HD and 4 SD transcoders and 8100; both modules have just
// that, and some bitrate to spare.
class Candidato : public testing::Test {
protected:
    Escena e{{modulo("A", 1, {3000, 3000}, 9), modulo("B", 2, {5000, 5000}, 8)}};

    Candidato() {
        e.puesto("A", 1, 1, datos(1, 1, 2000, 4));
        e.puesto("A", 1, 1, conTranscoding(datos(2, 1, 500, 0), true));
        e.puesto("B", 1, 1, datos(3, 1, 1500, 5));
        e.puesto("B", 1, 1, conTranscoding(datos(4, 1, 600)));
        e.puesto("B", 1, 1, dos(datos(5, 1, 400)));
        e.puesto("B", 2, 2, datos(11, 2, 4000, 8));
        for (const int clave : {12, 13, 14})
            e.puesto("B", 2, 2, conTranscoding(datos(clave, 2, 500), true));
        for (const int clave : {15, 16, 17, 18})
            e.puesto("B", 2, 2, conTranscoding(datos(clave, 2, 650)));
        e.en("A").HD_MAX_Transcoding = 1;
        e.en("A").SD_MAX_Transcoding = 2;
        e.en("B").HD_MAX_Transcoding = 3;
        e.en("B").SD_MAX_Transcoding = 4;
    }

    // A transcoding flag other than 1 counts as well.
    static fabrica::DatosServicio dos(fabrica::DatosServicio nuevo) {
        nuevo.transcoding = 2;
        return nuevo;
    }

    // What happened for the candidate of A and B, and all that followed.
    Hechos examinar() {
        antesA = entradas(e.en("A")) + salidas(e.en("A"));
        antesB = entradas(e.en("B")) + salidas(e.en("B"));
        despues = std::make_unique<Tramo>(PasadaVista(e.motor, 0, 1).tramo(5));
        return despues->desde(lineas::CANDIDATO, lineas::CANDIDATO);
    }

    // The candidate ended with a refusal, after these pauses.
    static void esRechazo(const Hechos& hechos, const std::vector<std::string>& pausas) {
        EXPECT_FALSE(esta(hechos, HECHO));
        Hechos vistas;
        for (auto it = hechos.begin(); it != hechos.end() && *it != INCOMPATIBLE; ++it)
            if (it->compare(0, 5, "sleep") == 0)
                vistas.push_back(*it);
        EXPECT_EQ(vistas, pausas);
        EXPECT_TRUE(esta(hechos, INCOMPATIBLE));
    }

    std::string antesA, antesB;
    std::unique_ptr<Tramo> despues;
};

} // namespace

// ---- The log ------------------------------------------------------------------------------------------

TEST_F(Candidato, ShowsItsFiguresInOrder) {
    e.en("A").HD_Transcoding = 21;
    e.en("A").SD_Transcoding = 22;
    e.en("B").HD_Transcoding = 23;
    e.en("B").SD_Transcoding = 24;
    Hechos hechos = examinar();
    ASSERT_GE(hechos.size(), 14U);
    hechos.resize(14);
    const Hechos esperado = {
        "7 ANTES: itModulo->second.HD_Transcoding (21)  <=  itModulo->second.HD_MAX_Transcoding (1) ) && ( "
        "itModulo->second.SD_Transcoding (22) <= itModulo->second.SD_MAX_Transcoding (2)",
        "7 ANTES: itModulo_Aux->second.HD_Transcoding (23)  <=  itModulo_Aux->second.HD_MAX_Transcoding (3) ) "
        "&& ( itModulo_Aux->second.SD_Transcoding (24) <= itModulo_Aux->second.SD_MAX_Transcoding (4)",
        "7 ListaServiciosSalida_Modulo.size = 5",
        "7 ListaServiciosSalida_Modulo_Aux.size = 8",
        "7 (Count_PIDs (9) <= itModulo->second.PIDsModuloMax (9) ) && ( Count_PIDs_Aux(8)  <= "
        "itModulo_Aux->second.PIDsModuloMax(8) )",
        "7 Transcoding_HD_Modulo (1)  <=  itModulo->second.HD_MAX_Transcoding (1) ) && ( "
        "Transcoding_SD_Modulo (2) <= itModulo->second.SD_MAX_Transcoding (2)",
        "7 Transcoding_HD_Modulo_Aux (3)  <=  itModulo_Aux->second.HD_MAX_Transcoding (3) ) && ( "
        "Transcoding_SD_Modulo_Aux (4) <= itModulo_Aux->second.SD_MAX_Transcoding (4)",
        "sleep 1",
        "sleep 2",
        CAM,
        TRANSCODER,
        "7  ( ( Bitrate_ListaServiciosSalida_Modulo (5000) <= Bitrate_Max_Salida_Modulo(6000) ) && ( "
        "Bitrate_ListaServiciosSalida_Modulo_Aux (8100) <= Bitrate_Max_Salida_Modulo_Aux (10000) ) ) = 1",
        "sleep 2",
        HECHO,
    };
    EXPECT_EQ(hechos, esperado);
}

TEST_F(Candidato, ModuleCountersStayThroughTheGathering) {
    e.en("A").PIDsModulo = 31;
    e.en("A").HD_Transcoding = 32;
    e.en("B").PIDsModulo = 33;
    e.en("B").SD_Transcoding = 34;
    ASSERT_TRUE(esta(examinar(), HECHO));
    EXPECT_EQ(despues->despues.en("A").PIDsModulo, 31);
    EXPECT_EQ(despues->despues.en("A").HD_Transcoding, 32);
    EXPECT_EQ(despues->despues.en("B").PIDsModulo, 33);
    EXPECT_EQ(despues->despues.en("B").SD_Transcoding, 34);
}

// ---- The six tests ------------------------------------------------------------------------------------

namespace {

struct Limite {
    const char* nombre;
    std::function<void(Escena&)> bajar;
};

class CandidatoLimite : public Candidato, public testing::WithParamInterface<Limite> {};

std::string nombreDelLimite(const testing::TestParamInfo<Limite>& parametro) {
    return parametro.param.nombre;
}

} // namespace

// That the exact figures pass is shown by every other test of this file.
TEST_P(CandidatoLimite, OneLessThanNeededIsRefused) {
    GetParam().bajar(e);
    const Hechos hechos = examinar();
    esRechazo(hechos, {"sleep 1"});
    EXPECT_EQ(hechos[8], INCOMPATIBLE);
    EXPECT_FALSE(esta(hechos, CAM));
    EXPECT_EQ(entradas(despues->despues.en("A")) + salidas(despues->despues.en("A")), antesA);
    EXPECT_EQ(entradas(despues->despues.en("B")) + salidas(despues->despues.en("B")), antesB);
}

INSTANTIATE_TEST_SUITE_P(
    Unificar, CandidatoLimite,
    testing::Values(Limite{"PIDsOfTheFirst", [](Escena& e) { --e.en("A").PIDsModuloMax; }},
                    Limite{"PIDsOfTheSecond", [](Escena& e) { --e.en("B").PIDsModuloMax; }},
                    Limite{"HDOfTheFirst", [](Escena& e) { --e.en("A").HD_MAX_Transcoding; }},
                    Limite{"SDOfTheFirst", [](Escena& e) { --e.en("A").SD_MAX_Transcoding; }},
                    Limite{"HDOfTheSecond", [](Escena& e) { --e.en("B").HD_MAX_Transcoding; }},
                    Limite{"SDOfTheSecond", [](Escena& e) { --e.en("B").SD_MAX_Transcoding; }}),
    nombreDelLimite);

TEST_F(Candidato, ExactlyWhatIsNeededPassesTheSixTests) {
    const Hechos hechos = examinar();
    EXPECT_TRUE(esta(hechos, CAM));
    EXPECT_TRUE(esta(hechos, TRANSCODER));
    EXPECT_TRUE(esta(hechos, HECHO));
}

TEST_F(Candidato, SeveralLimitsMissedAreRefusedOnce) {
    e.en("A").PIDsModuloMax = 0;
    e.en("B").PIDsModuloMax = 0;
    e.en("A").SD_MAX_Transcoding = 0;
    const Hechos hechos = examinar();
    EXPECT_EQ(std::count(hechos.begin(), hechos.begin() + 9, INCOMPATIBLE), 1);
}

TEST_F(Candidato, WhatTheModulesHaveInUseDoesNotMatter) {
    e.en("A").PIDsModulo = 9999;
    e.en("A").HD_Transcoding = 9999;
    e.en("B").SD_Transcoding = 9999;
    EXPECT_TRUE(esta(examinar(), HECHO));
}

// ---- The sum of bitrates ------------------------------------------------------------------------------

TEST_F(Candidato, BitrateOfTheFirstListAtTheSumOfTheOutputsPassesTheTest) {
    e.salida("A", 1).BitRateMax = 2500;
    e.salida("A", 2).BitRateMax = 2500;
    const Hechos hechos = examinar();
    const auto linea = primeraQueEmpieza(hechos, "7  ( ( Bitrate_ListaServiciosSalida_Modulo (5000) <= "
                                                 "Bitrate_Max_Salida_Modulo(5000)");
    ASSERT_NE(linea, hechos.end());
    EXPECT_EQ(linea->substr(linea->size() - 3), "= 1");
}

TEST_F(Candidato, BitrateOfTheFirstListAboveTheSumIsRefused) {
    e.salida("A", 1).BitRateMax = 2500;
    e.salida("A", 2).BitRateMax = 2499;
    const Hechos hechos = examinar();
    const auto linea = primeraQueEmpieza(hechos, "7  ( ( Bitrate_ListaServiciosSalida_Modulo (5000) <= "
                                                 "Bitrate_Max_Salida_Modulo(4999)");
    ASSERT_NE(linea, hechos.end());
    EXPECT_EQ(linea->substr(linea->size() - 3), "= 0");
    EXPECT_EQ(*(linea + 1), INCOMPATIBLE);
    esRechazo(hechos, {"sleep 1", "sleep 2"});
}

TEST_F(Candidato, BitrateOfTheSecondListAtTheSumOfTheOutputsPassesTheTest) {
    e.salida("B", 1).BitRateMax = 4000;
    e.salida("B", 2).BitRateMax = 4100;
    const Hechos hechos = examinar();
    const auto linea = primeraQueEmpieza(hechos, "7  ( ( Bitrate_ListaServiciosSalida_Modulo (5000)");
    ASSERT_NE(linea, hechos.end());
    EXPECT_NE(linea->find("Bitrate_ListaServiciosSalida_Modulo_Aux (8100) <= "
                          "Bitrate_Max_Salida_Modulo_Aux (8100) ) ) = 1"),
              std::string::npos);
}

TEST_F(Candidato, BitrateOfTheSecondListAboveTheSumIsRefused) {
    e.salida("B", 1).BitRateMax = 4000;
    e.salida("B", 2).BitRateMax = 4099;
    const Hechos hechos = examinar();
    const auto linea = primeraQueEmpieza(hechos, "7  ( ( Bitrate_ListaServiciosSalida_Modulo (5000)");
    ASSERT_NE(linea, hechos.end());
    EXPECT_NE(linea->find("Bitrate_ListaServiciosSalida_Modulo_Aux (8100) <= "
                          "Bitrate_Max_Salida_Modulo_Aux (8099) ) ) = 0"),
              std::string::npos);
    EXPECT_EQ(*(linea + 1), INCOMPATIBLE);
    esRechazo(hechos, {"sleep 1", "sleep 2"});
}

TEST_F(Candidato, BitrateSumsAreComparedAsSignedNumbers) {
    // Ceilings of 3 000 000 000 in all are a negative number, and less than anything.
    e.salida("A", 1).BitRateMax = 1500000000;
    e.salida("A", 2).BitRateMax = 1500000000;
    const Hechos hechos = examinar();
    const auto linea = primeraQueEmpieza(hechos, "7  ( ( Bitrate_ListaServiciosSalida_Modulo (5000) <= "
                                                 "Bitrate_Max_Salida_Modulo(-1294967296)");
    ASSERT_NE(linea, hechos.end());
    EXPECT_EQ(linea->substr(linea->size() - 3), "= 0");
    esRechazo(hechos, {"sleep 1", "sleep 2"});
}

// ---- Placing the lists --------------------------------------------------------------------------------

TEST_F(Candidato, AFirstListThatFindsNoOutputIsRefused) {
    // 400, 600 and 1500 fill the first output and 500 goes to the second, which then has no more than the
    // 2000 of the last service to spare.
    e.salida("A", 1).BitRateMax = 2501;
    e.salida("A", 2).BitRateMax = 2500;
    const Hechos hechos = examinar();
    esRechazo(hechos, {"sleep 1", "sleep 2"});
    EXPECT_EQ(*(primeraQueEmpieza(hechos, "7  ( (") + 1), INCOMPATIBLE);
    EXPECT_EQ(entradas(despues->despues.en("A")) + salidas(despues->despues.en("A")), antesA);
    EXPECT_EQ(entradas(despues->despues.en("B")) + salidas(despues->despues.en("B")), antesB);
}

TEST_F(Candidato, ASecondListThatFindsNoOutputIsRefused) {
    // No output of B is above 4000, as service 11 needs.
    e.salida("B", 1).BitRateMax = 4000;
    e.salida("B", 2).BitRateMax = 4000;
    e.en("B").mapSalidas.emplace(3U, tRec_Salida(3, 512));
    e.salida("B", 3).BitRateMax = 4000;
    const Hechos hechos = examinar();
    esRechazo(hechos, {"sleep 1", "sleep 2"});
    EXPECT_EQ(*(primeraQueEmpieza(hechos, "7  ( (") + 1), INCOMPATIBLE);
    EXPECT_EQ(entradas(despues->despues.en("A")) + salidas(despues->despues.en("A")), antesA);
    EXPECT_EQ(entradas(despues->despues.en("B")) + salidas(despues->despues.en("B")), antesB);
}

TEST_F(Candidato, ServicesFindTheirPlaceFromTheHighestKeyDown) {
    ASSERT_TRUE(esta(examinar(), HECHO));
    // 5 (400), 4 (600), 3 (1500) make 2500; 2 (500) would reach the ceiling of 3000.
    EXPECT_EQ(salidas(despues->despues.en("A")), "2500x3[3 4 5] 2500x2[1 2]");
    EXPECT_EQ(salidas(despues->despues.en("B")), "4100x7[12 13 14 15 16 17 18] 4000x1[11]");
}

TEST_F(Candidato, OutputsThatNoServiceNeedsStayEmpty) {
    e.en("A").mapSalidas.emplace(3U, tRec_Salida(3, 512));
    e.salida("A", 3).BitRateMax = 1000;
    e.clavar("A", 1, 3, fabrica::servicio(datos(6, 1, 100)));
    ASSERT_TRUE(esta(examinar(), HECHO));
    EXPECT_EQ(salidas(despues->despues.en("A")), "2600x4[3 4 5 6] 2500x2[1 2] 0x0[]");
}

TEST(CandidatoListas, TheNumberOfServicesOfAnOutputIsKept) {
    Escena e({modulo("A", 1, {9000, 9000}), modulo("B", 1, {9000})});
    e.puesto("A", 1, 1, datos(1, 1));
    e.puesto("A", 1, 1, datos(2, 1));
    e.puesto("B", 1, 1, datos(3, 1));
    e.salida("A", 1).NumServiciosMax = 1;
    const Tramo t = PasadaVista(e.motor, 0, 1).tramo(5);
    EXPECT_EQ(salidas(t.despues.en("A")), "1000x1[3] 2000x2[1 2]");
}

TEST(CandidatoListas, EmptyListsNeedNoOutputs) {
    Escena e({modulo("A", 1, {}), modulo("B", 1, {})});
    e.sintonizar("A", 1, 1, 1);
    e.sintonizar("B", 1, 1, 1);
    const Tramo t = PasadaVista(e.motor, 0, 1).tramo(5);
    EXPECT_TRUE(t.contiene(lineas::REUNION));
    EXPECT_EQ(entradas(t.despues.en("A")), "1/1[]");
    EXPECT_EQ(entradas(t.despues.en("B")), "-[]");
}

TEST(CandidatoListas, AServiceGoesByItsOwnStreamWhicheverInputItStandsOn) {
    // 21, of stream 2, stands on A's input of stream 1; 12, of stream 1, on B's of stream 2.
    Escena e({modulo("A", 1, {20000}), modulo("B", 2, {20000})});
    e.puesto("A", 1, 1, datos(1, 1));
    e.clavar("A", 1, 1, fabrica::servicio(datos(21, 2)));
    e.puesto("B", 1, 1, datos(11, 1));
    e.puesto("B", 2, 1, datos(22, 2));
    e.clavar("B", 2, 1, fabrica::servicio(datos(12, 1)));
    const Tramo t = PasadaVista(e.motor, 0, 1).tramo(5);
    ASSERT_TRUE(t.contiene(lineas::REUNION));
    EXPECT_TRUE(t.contiene("ListaServiciosSalida_Modulo.size = 3"));
    EXPECT_TRUE(t.contiene("ListaServiciosSalida_Modulo_Aux.size = 2"));
    EXPECT_EQ(entradas(t.despues.en("A")), "1/1[1 11 12]");
    EXPECT_EQ(salidas(t.despues.en("A")), "3000x3[1 11 12]");
    EXPECT_EQ(salidas(t.despues.en("B")), "2000x2[21 22]");
}

TEST(CandidatoListas, OnidAndTsidBothDecideTheList) {
    Escena e({modulo("A", 1, {20000}), modulo("B", 1, {20000})});
    e.puesto("A", 1, 1, datos(1, 1));
    fabrica::DatosServicio otraRed = datos(2, 1);
    otraRed.onid = 2;
    e.puesto("B", 1, 1, datos(3, 1));
    e.clavar("A", 1, 1, fabrica::servicio(otraRed));
    e.clavar("A", 1, 1, fabrica::servicio(datos(4, 2)));
    const Tramo t = PasadaVista(e.motor, 0, 1).tramo(5);
    EXPECT_TRUE(t.contiene("ListaServiciosSalida_Modulo.size = 2"));
    EXPECT_TRUE(t.contiene("ListaServiciosSalida_Modulo_Aux.size = 2"));
}

TEST(CandidatoListas, EntriesGoUnderTheirKeyOnTheInputAndUnderTheServicesOnTheOutput) {
    Escena e({modulo("A", 1, {20000}), modulo("B", 1, {20000})});
    e.puesto("A", 1, 1, datos(1, 1));
    const Servicio cambiado = e.puesto("B", 1, 1, datos(2, 1));
    cambiado->idService = 9; // filed under 2 still
    const Tramo t = PasadaVista(e.motor, 0, 1).tramo(5);
    EXPECT_EQ(entradas(t.despues.en("A")), "1/1[1 2]");
    EXPECT_EQ(salidas(t.despues.en("A")), "2000x2[1 9]");
}

TEST(CandidatoListas, EqualKeysAreAllCarried) {
    Escena e({modulo("A", 1, {20000}), modulo("B", 1, {20000})});
    e.puesto("A", 1, 1, datos(1, 1));
    e.sintonizar("B", 1, 1, 1);
    e.clavar("B", 1, 1, fabrica::servicio(datos(1, 1)));
    const Tramo t = PasadaVista(e.motor, 0, 1).tramo(5);
    EXPECT_EQ(entradas(t.despues.en("A")), "1/1[1 1]");
    EXPECT_EQ(salidas(t.despues.en("A")), "2000x2[1 1]");
}

} // namespace Unificar_limites_test
