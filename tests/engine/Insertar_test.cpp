// Placing a service on an input and on the first output that can take it.

#include "tRecalculo.h"

#include <gtest/gtest.h>

#include "support/Fabrica.h"
#include "support/Registro.h"

namespace Insertar_test {

using namespace zarven;

namespace {

using Lineas = std::vector<std::string>;

constexpr unsigned short HD = tRec_Servicio::VIDEO_HD;

tRec_Modulo modulo(const std::vector<unsigned long>& salidas, unsigned short pids = 100) {
    fabrica::DatosModulo datos;
    datos.salidas = salidas;
    datos.pids = pids;
    tRec_Modulo nuevo = fabrica::modulo(datos);
    registro::vaciar();
    return nuevo;
}

std::uint32_t insertar(tRec_Modulo& m, const std::shared_ptr<tRec_Servicio>& s) {
    tMapaServicios pendientes;
    const auto it = pendientes.emplace(s->idService, s);
    return tRecalculo().Try_to_Insert_Service_Input_Output(m, m.mapEntradas.at(1), it);
}

std::shared_ptr<tRec_Servicio> deBitrate(unsigned long bitrate) {
    fabrica::DatosServicio datos;
    datos.bitrate = bitrate;
    return fabrica::servicio(datos);
}

std::shared_ptr<tRec_Servicio> dePIDs(unsigned short pids) {
    fabrica::DatosServicio datos;
    datos.pids = pids;
    return fabrica::servicio(datos);
}

std::shared_ptr<tRec_Servicio> transcodificado(unsigned short videoFormat = 0, unsigned short valor = 1) {
    fabrica::DatosServicio datos;
    datos.transcoding = valor;
    datos.videoFormat = videoFormat;
    return fabrica::servicio(datos);
}

// The transcoders of a module: in use and ceiling, SD first.
tRec_Modulo moduloConTranscoders(unsigned short sd, unsigned short sdMax, unsigned short hd,
                                 unsigned short hdMax) {
    tRec_Modulo m = modulo({10000, 10000});
    m.SD_Transcoding = sd;
    m.SD_MAX_Transcoding = sdMax;
    m.HD_Transcoding = hd;
    m.HD_MAX_Transcoding = hdMax;
    return m;
}

void esperarIntacto(const tRec_Modulo& m) {
    EXPECT_TRUE(m.mapEntradas.at(1).MapaServicios.empty());
    for (const auto& [numero, salida] : m.mapSalidas)
        EXPECT_TRUE(salida.MapaServicios.empty()) << numero;
}

} // namespace

TEST(Insertar, PlacesAServiceOnTheInputAndTheOutput) {
    tRec_Modulo m = modulo({10000});
    const auto s = dePIDs(3);
    EXPECT_EQ(insertar(m, s), 1u);
    ASSERT_EQ(m.mapEntradas.at(1).MapaServicios.size(), 1u);
    EXPECT_EQ(m.mapEntradas.at(1).MapaServicios.begin()->second, s);
    ASSERT_EQ(m.mapSalidas.at(1).MapaServicios.size(), 1u);
    EXPECT_EQ(m.mapSalidas.at(1).MapaServicios.begin()->second, s);
    EXPECT_EQ(m.mapSalidas.at(1).BitRateActual, 1000u);
    EXPECT_EQ(m.mapSalidas.at(1).NumServicios, 1u);
    EXPECT_EQ(m.PIDsModulo, 3);
}

TEST(Insertar, LeavesTuningReferencesAndTheIndexToItsCaller) {
    tRec_Modulo m = modulo({10000});
    const auto s = deBitrate(1000);
    tMapaServicios pendientes;
    const auto it = pendientes.emplace(1, s);
    tRecalculo().Try_to_Insert_Service_Input_Output(m, m.mapEntradas.at(1), it);
    EXPECT_EQ(pendientes.size(), 1u);
    EXPECT_EQ(m.mapEntradas.at(1).ONID, 0);
    EXPECT_EQ(m.mapEntradas.at(1).TSID, 0);
    EXPECT_EQ(s->pEntrada, nullptr);
    EXPECT_EQ(s->pSalida, nullptr);
}

TEST(Insertar, FilesAServiceUnderTheKeyOfItsEntry) {
    tRec_Modulo m = modulo({10000});
    const auto s = deBitrate(1000); // its own key is 1
    tMapaServicios pendientes;
    const auto it = pendientes.emplace(-9, s);
    tRecalculo().Try_to_Insert_Service_Input_Output(m, m.mapEntradas.at(1), it);
    EXPECT_EQ(m.mapEntradas.at(1).MapaServicios.begin()->first, -9);
    EXPECT_EQ(m.mapSalidas.at(1).MapaServicios.begin()->first, -9);
    EXPECT_EQ(registro::textos().back(), "He añadido el servicio: -9");
}

TEST(Insertar, KeepsEqualKeys) {
    tRec_Modulo m = modulo({10000});
    const auto primero = deBitrate(1000);
    const auto segundo = deBitrate(2000);
    insertar(m, primero);
    EXPECT_EQ(insertar(m, segundo), 1u);
    EXPECT_EQ(m.mapEntradas.at(1).MapaServicios.count(1), 2u);
    EXPECT_EQ(m.mapEntradas.at(1).MapaServicios.begin()->second, primero);
    EXPECT_EQ(m.mapSalidas.at(1).MapaServicios.count(1), 2u);
    EXPECT_EQ(m.mapSalidas.at(1).NumServicios, 2u);
    EXPECT_EQ(m.mapSalidas.at(1).BitRateActual, 3000u);
}

TEST(Insertar, RefusesAModuleWithoutOutputsWithoutALine) {
    tRec_Modulo m = modulo({});
    EXPECT_EQ(insertar(m, deBitrate(1000)), 0u);
    esperarIntacto(m);
    EXPECT_TRUE(registro::hechos().empty());
}

TEST(Insertar, RefusesAnOutputThatCarriesAllTheServicesItMay) {
    for (const std::uint32_t servicios : {511u, 512u, 513u}) {
        tRec_Modulo m = modulo({10000});
        m.mapSalidas.at(1).NumServicios = servicios;
        EXPECT_EQ(insertar(m, deBitrate(0)), servicios < 512 ? 1u : 0u) << servicios;
    }
}

TEST(Insertar, ComparesServiceCountsUnsigned) {
    tRec_Modulo m = modulo({10000});
    m.mapSalidas.at(1).NumServicios = 0x7FFFFFFFu;
    m.mapSalidas.at(1).NumServiciosMax = 0x80000000u;
    EXPECT_EQ(insertar(m, deBitrate(1000)), 1u);
    EXPECT_EQ(m.mapSalidas.at(1).NumServicios, 0x80000000u);
}

TEST(Insertar, RefusesEveryServiceWhenAllOutputsCarryTheirMaximum) {
    tRec_Modulo m = modulo({10000, 10000});
    for (auto& [numero, salida] : m.mapSalidas)
        salida.NumServicios = salida.NumServiciosMax;
    EXPECT_EQ(insertar(m, deBitrate(0)), 0u);
    EXPECT_EQ(insertar(m, deBitrate(9000)), 0u);
    esperarIntacto(m);
}

TEST(Insertar, RefusesAnOutputThatWouldBeFilledExactly) {
    tRec_Modulo m = modulo({10000});
    m.mapSalidas.at(1).BitRateActual = 6000;
    EXPECT_EQ(insertar(m, deBitrate(4001)), 0u);
    EXPECT_EQ(insertar(m, deBitrate(4000)), 0u);
    EXPECT_EQ(m.mapSalidas.at(1).BitRateActual, 6000u);
    EXPECT_EQ(insertar(m, deBitrate(3999)), 1u);
    EXPECT_EQ(m.mapSalidas.at(1).BitRateActual, 9999u);
}

TEST(Insertar, RefusesAnOutputWithoutBitrate) {
    tRec_Modulo m = modulo({0});
    EXPECT_EQ(insertar(m, deBitrate(0)), 0u);
}

TEST(Insertar, ComparesBitratesUnsignedAndLetsTheirSumWrap) {
    tRec_Modulo m = modulo({4294967295u});
    m.mapSalidas.at(1).BitRateActual = 2147483647u;
    EXPECT_EQ(insertar(m, deBitrate(1)), 1u);
    EXPECT_EQ(m.mapSalidas.at(1).BitRateActual, 2147483648u);
    m.mapSalidas.at(1).BitRateActual = 4294967294u;
    EXPECT_EQ(insertar(m, deBitrate(1)), 0u) << "filled exactly";
    EXPECT_EQ(insertar(m, deBitrate(3)), 1u) << "the sum is 1";
    EXPECT_EQ(m.mapSalidas.at(1).BitRateActual, 1u);
}

TEST(Insertar, TakesAServiceThatSpendsTheLastPIDs) {
    tRec_Modulo m = modulo({10000}, 32);
    m.PIDsModulo = 30;
    EXPECT_EQ(insertar(m, dePIDs(3)), 0u);
    EXPECT_EQ(m.PIDsModulo, 30);
    EXPECT_EQ(insertar(m, dePIDs(2)), 1u);
    EXPECT_EQ(m.PIDsModulo, 32);
    EXPECT_EQ(insertar(m, dePIDs(1)), 0u);
    EXPECT_EQ(insertar(m, dePIDs(0)), 1u);
}

TEST(Insertar, TheSumOfPIDsDoesNotWrapAt16Bits) {
    tRec_Modulo m = modulo({10000}, 65535);
    m.PIDsModulo = 65530;
    EXPECT_EQ(insertar(m, dePIDs(6)), 0u);
    EXPECT_EQ(insertar(m, dePIDs(5)), 1u);
    EXPECT_EQ(m.PIDsModulo, 65535);
}

TEST(Insertar, RefusesForPIDsOnEveryOutput) {
    tRec_Modulo m = modulo({10000, 10000}, 2);
    EXPECT_EQ(insertar(m, dePIDs(3)), 0u);
    EXPECT_EQ(registro::cuantasEmpiezan("Salida "), 2u);
    esperarIntacto(m);
    EXPECT_EQ(m.mapSalidas.at(1).BitRateActual, 0u);
    EXPECT_EQ(m.mapSalidas.at(1).NumServicios, 0u);
}

TEST(Insertar, LogsEachOutputTriedAndThenTheServicePlaced) {
    tRec_Modulo m = modulo({1000, 20000, 30000}, 32);
    m.PIDsModulo = 4;
    m.mapSalidas.at(2).BitRateActual = 500;
    fabrica::DatosServicio datos;
    datos.clave = 7;
    datos.pids = 3;
    EXPECT_EQ(insertar(m, fabrica::servicio(datos)), 1u);
    const Lineas esperado = {
        "7 Salida 1 BitrateActual 0 BitrateMax 1000",
        "7 if ( ( (itSalida->second.BitRateActual (0) + itService->second->peakBitRate (1000) ) < "
        "itSalida->second.BitRateMax (1000) ) &&  )",
        "7 if ( && ( itModulo->second.PIDsModulo (4) + itService->second->number_PIDs_CA (3) <= "
        "itModulo->second.PIDsModuloMax (32) ) )",
        "7 Salida 2 BitrateActual 500 BitrateMax 20000",
        "7 if ( ( (itSalida->second.BitRateActual (500) + itService->second->peakBitRate (1000) ) < "
        "itSalida->second.BitRateMax (20000) ) &&  )",
        "7 if ( && ( itModulo->second.PIDsModulo (4) + itService->second->number_PIDs_CA (3) <= "
        "itModulo->second.PIDsModuloMax (32) ) )",
        "7 He añadido el servicio: 7",
    };
    EXPECT_EQ(registro::hechos(), esperado);
    EXPECT_TRUE(m.mapSalidas.at(1).MapaServicios.empty());
    EXPECT_EQ(m.mapSalidas.at(2).MapaServicios.size(), 1u);
}

TEST(Insertar, PrintsBitratesAsSigned32BitNumbers) {
    tRec_Modulo m = modulo({4294967295u});
    m.mapSalidas.at(1).BitRateActual = 4294966296u;
    insertar(m, deBitrate(2147483648u));
    const auto textos = registro::textos();
    EXPECT_EQ(textos.at(0), "Salida 1 BitrateActual -1000 BitrateMax -1");
    EXPECT_EQ(textos.at(1), "if ( ( (itSalida->second.BitRateActual (-1000) + itService->second->peakBitRate "
                            "(-2147483648) ) < itSalida->second.BitRateMax (-1) ) &&  )");
}

TEST(Insertar, TheFirstOutputThatFitsWins) {
    tRec_Modulo m = modulo({5000, 50000});
    insertar(m, deBitrate(1000));
    EXPECT_EQ(m.mapSalidas.at(1).NumServicios, 1u);
    EXPECT_EQ(registro::cuantasEmpiezan("Salida "), 1u);
    EXPECT_EQ(m.mapSalidas.at(2).NumServicios, 0u);
}

TEST(Insertar, OneOutputMustPassEveryTest) {
    tRec_Modulo m = modulo({1000, 10000});
    m.mapSalidas.at(2).NumServicios = 512;
    EXPECT_EQ(insertar(m, deBitrate(1000)), 0u);
    esperarIntacto(m);
}

TEST(Insertar, CountsNoTranscoderForAServiceThatNeedsNone) {
    tRec_Modulo m = moduloConTranscoders(0, 0, 0, 0);
    EXPECT_EQ(insertar(m, transcodificado(HD, 0)), 1u);
    EXPECT_EQ(m.SD_Transcoding, 0);
    EXPECT_EQ(m.HD_Transcoding, 0);
}

TEST(Insertar, OnlyTheFlagOneAsksForATranscoder) {
    tRec_Modulo m = moduloConTranscoders(0, 0, 0, 0);
    EXPECT_EQ(insertar(m, transcodificado(0, 2)), 1u);
    EXPECT_EQ(m.SD_Transcoding, 0);
    EXPECT_EQ(insertar(m, transcodificado(0, 1)), 0u);
}

TEST(Insertar, StandardDefinitionIsBoundedBySDWhileNoHDIsTranscoded) {
    for (const unsigned short enUso : std::vector<unsigned short>{3, 4, 5}) {
        tRec_Modulo m = moduloConTranscoders(enUso, 4, 0, 99);
        EXPECT_EQ(insertar(m, transcodificado()), enUso < 4 ? 1u : 0u) << enUso;
        EXPECT_EQ(m.SD_Transcoding, enUso < 4 ? enUso + 1 : enUso);
        EXPECT_EQ(m.HD_Transcoding, 0);
        EXPECT_EQ(m.mapSalidas.at(1).NumServicios, enUso < 4 ? 1u : 0u);
    }
}

TEST(Insertar, TheWholePoolIsBoundedByHDFromTheFirstHDTranscodingOn) {
    tRec_Modulo m = moduloConTranscoders(1, 4, 1, 2);
    EXPECT_EQ(insertar(m, transcodificado()), 0u);
    EXPECT_EQ(insertar(m, transcodificado(HD)), 0u);
    EXPECT_EQ(m.SD_Transcoding, 1);
    EXPECT_EQ(m.HD_Transcoding, 1);
    esperarIntacto(m);
    m.HD_MAX_Transcoding = 3;
    EXPECT_EQ(insertar(m, transcodificado()), 1u);
    EXPECT_EQ(m.SD_Transcoding, 2);
    EXPECT_EQ(insertar(m, transcodificado()), 0u);
}

TEST(Insertar, TheFirstHDTranscodingIsMeasuredAgainstSDAndTheNextAgainstHD) {
    tRec_Modulo m = moduloConTranscoders(3, 4, 0, 5);
    EXPECT_EQ(insertar(m, transcodificado(HD)), 1u);
    EXPECT_EQ(m.SD_Transcoding, 3);
    EXPECT_EQ(m.HD_Transcoding, 1);
    EXPECT_EQ(insertar(m, transcodificado()), 1u) << "3 + 1 < 5";
    EXPECT_EQ(m.SD_Transcoding, 4);
    EXPECT_EQ(insertar(m, transcodificado()), 0u) << "4 + 1 >= 5";
}

TEST(Insertar, OtherVideoFormatsCountAsStandardDefinition) {
    for (const unsigned short formato : std::vector<unsigned short>{0, 3, 5, 65535}) {
        tRec_Modulo m = moduloConTranscoders(0, 1, 0, 0);
        EXPECT_EQ(insertar(m, transcodificado(formato)), 1u);
        EXPECT_EQ(m.SD_Transcoding, 1) << formato;
        EXPECT_EQ(m.HD_Transcoding, 0) << formato;
    }
}

TEST(Insertar, TheSumOfTranscodersDoesNotWrapAt16Bits) {
    tRec_Modulo m = moduloConTranscoders(65535, 0, 1, 65535);
    EXPECT_EQ(insertar(m, transcodificado()), 0u);
}

TEST(Insertar, RefusesForTranscodersWithoutTryingAnotherOutput) {
    tRec_Modulo m = moduloConTranscoders(0, 0, 0, 9);
    EXPECT_EQ(insertar(m, transcodificado()), 0u);
    EXPECT_EQ(registro::hechos().size(), 3u);
    EXPECT_EQ(registro::cuantas("Salida 1 BitrateActual 0 BitrateMax 10000"), 1u);
    esperarIntacto(m);
    EXPECT_EQ(m.mapSalidas.at(1).BitRateActual, 0u);
}

TEST(Insertar, CountsNoTranscoderWhenNoOutputFits) {
    tRec_Modulo m = moduloConTranscoders(0, 4, 0, 4);
    for (auto& [numero, salida] : m.mapSalidas)
        salida.BitRateMax = 0;
    EXPECT_EQ(insertar(m, transcodificado()), 0u);
    EXPECT_EQ(m.SD_Transcoding, 0);
}

} // namespace Insertar_test
