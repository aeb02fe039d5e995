#include "tRec_Modulo.h"

#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "support/Fabrica.h"
#include "support/Registro.h"

namespace tRec_Modulo_test {

using namespace zarven;

namespace {

std::shared_ptr<tRec_Servicio> servicio(unsigned short clave, unsigned short pids = 3) {
    fabrica::DatosServicio datos;
    datos.clave = clave;
    datos.pids = pids;
    return fabrica::servicio(datos);
}

// Two inputs, two outputs, a budget of 100 PIDs.
tRec_Modulo modulo() {
    fabrica::DatosModulo datos;
    datos.entradas = 2;
    datos.salidas = {10000, 20000};
    tRec_Modulo nuevo = fabrica::modulo(datos);
    registro::vaciar();
    return nuevo;
}

void esperarSinConfigurar(const tRec_Modulo& m) {
    EXPECT_EQ(m.Modelo, tRec_Modulo::MODELO_SIN_CONFIGURAR);
    EXPECT_EQ(m.PIDsModulo, 0);
    EXPECT_EQ(m.PIDsModuloMax, 0);
    EXPECT_EQ(m.SD_MAX_Transcoding, 0);
    EXPECT_EQ(m.SD_Transcoding, 0);
    EXPECT_EQ(m.HD_MAX_Transcoding, 0);
    EXPECT_EQ(m.HD_Transcoding, 0);
    EXPECT_EQ(m.AUX_MAX_Transcoding, 0);
    EXPECT_EQ(m.AUX_Transcoding, 0);
    EXPECT_TRUE(m.mapEntradas.empty());
    EXPECT_TRUE(m.mapSalidas.empty());
}

} // namespace

static_assert(std::is_same_v<tMapaModulos, std::map<std::string, tRec_Modulo>>);

TEST(tRec_Modulo, StartsUnconfiguredWithoutIdentity) {
    const tRec_Modulo m;
    EXPECT_EQ(m.MAC, "XX:XX:XX:XX:XX");
    EXPECT_FALSE(m.Controlador);
    EXPECT_EQ(tRec_Modulo::MODELO_SIN_CONFIGURAR, 99);
    esperarSinConfigurar(m);
}

TEST(tRec_Modulo, TakesItsMAC) {
    const tRec_Modulo m("00:01");
    EXPECT_EQ(m.MAC, "00:01");
    EXPECT_FALSE(m.Controlador);
    esperarSinConfigurar(m);
}

TEST(tRec_Modulo, TakesItsMACAndTheControllerFlag) {
    const tRec_Modulo m("00:01", true);
    EXPECT_EQ(m.MAC, "00:01");
    EXPECT_TRUE(m.Controlador);
    EXPECT_FALSE(tRec_Modulo("00:01", false).Controlador);
    esperarSinConfigurar(m);
}

TEST(tRec_Modulo, IsConfiguredWithInputsAndOutputsNumberedFromOne) {
    tRec_Modulo m("A");
    EXPECT_EQ(m.configurarModelo(3, 2, 4, 100), 1);
    EXPECT_EQ(m.Modelo, 3);
    EXPECT_EQ(m.PIDsModuloMax, 100);
    ASSERT_EQ(m.mapEntradas.size(), 2u);
    for (unsigned short i = 1; i <= 2; ++i) {
        EXPECT_EQ(m.mapEntradas.at(i).NumEntrada, i);
        EXPECT_EQ(m.mapEntradas.at(i).pModulo, &m);
        EXPECT_EQ(m.mapEntradas.at(i).TSID, 0);
    }
    ASSERT_EQ(m.mapSalidas.size(), 4u);
    for (unsigned short j = 1; j <= 4; ++j) {
        EXPECT_EQ(m.mapSalidas.at(j).NumSalida, j);
        EXPECT_EQ(m.mapSalidas.at(j).pModulo, &m);
        EXPECT_EQ(m.mapSalidas.at(j).NumServiciosMax, 512u);
        EXPECT_EQ(m.mapSalidas.at(j).NumServicios, 0u);
        EXPECT_EQ(m.mapSalidas.at(j).BitRateMax, 0u);
    }
}

TEST(tRec_Modulo, LogsItsInputsAndThenItsOutputsWhenConfigured) {
    tRec_Modulo m("A");
    registro::vaciar();
    m.configurarModelo(3, 2, 1, 100);
    const auto visto = registro::hechos();
    registro::vaciar();
    m.Print_MapaEntradas();
    m.Print_MapaSalidas();
    EXPECT_EQ(visto, registro::hechos());
    EXPECT_EQ(visto.size(), 3u * 6u);
}

TEST(tRec_Modulo, IsConfiguredOnlyOnce) {
    tRec_Modulo m("A");
    m.configurarModelo(3, 2, 4, 100);
    registro::vaciar();
    EXPECT_EQ(m.configurarModelo(3, 5, 5, 200), tRec_Modulo::ERROR_YA_CONFIGURADO);
    EXPECT_EQ(m.configurarModelo(5, 5, 5, 200), tRec_Modulo::ERROR_YA_CONFIGURADO)
        << "asked before the model";
    EXPECT_EQ(tRec_Modulo::ERROR_YA_CONFIGURADO, -201);
    EXPECT_EQ(m.mapEntradas.size(), 2u);
    EXPECT_EQ(m.mapSalidas.size(), 4u);
    EXPECT_EQ(m.PIDsModuloMax, 100);
    EXPECT_TRUE(registro::hechos().empty());
}

TEST(tRec_Modulo, RefusesEveryModelButThree) {
    EXPECT_EQ(tRec_Modulo::MODELO_SOPORTADO, 3);
    EXPECT_EQ(tRec_Modulo::ERROR_MODELO_NO_SOPORTADO, -202);
    for (const unsigned short modelo : std::vector<unsigned short>{0, 1, 2, 4, 5, 99, 65535}) {
        tRec_Modulo m("A");
        m.SD_Transcoding = 1;
        registro::vaciar();
        EXPECT_EQ(m.configurarModelo(modelo, 2, 4, 100), tRec_Modulo::ERROR_MODELO_NO_SOPORTADO) << modelo;
        EXPECT_EQ(m.SD_Transcoding, 1);
        m.SD_Transcoding = 0;
        esperarSinConfigurar(m);
        EXPECT_TRUE(registro::hechos().empty());
    }
}

TEST(tRec_Modulo, CanBeConfiguredAfterARefusedModel) {
    tRec_Modulo m("A");
    m.configurarModelo(5, 2, 4, 100);
    EXPECT_EQ(m.configurarModelo(3, 2, 4, 100), 1);
}

TEST(tRec_Modulo, IsConfiguredWithoutInputsAndOutputs) {
    tRec_Modulo m("A");
    registro::vaciar();
    EXPECT_EQ(m.configurarModelo(3, 0, 0, 77), 1);
    EXPECT_EQ(m.Modelo, 3);
    EXPECT_EQ(m.PIDsModuloMax, 77);
    EXPECT_TRUE(m.mapEntradas.empty());
    EXPECT_TRUE(m.mapSalidas.empty());
    EXPECT_TRUE(registro::hechos().empty());
}

TEST(tRec_Modulo, KeepsInputsAndOutputsAlreadyThere) {
    tRec_Modulo m("A");
    m.mapEntradas.emplace(static_cast<unsigned short>(2), tRec_Entrada(2)).first->second.confEntrada(5, 7);
    m.mapSalidas.emplace(1u, tRec_Salida(1, 8)).first->second.confSalida(1000);
    EXPECT_EQ(m.configurarModelo(3, 2, 2, 100), 1);
    EXPECT_EQ(m.mapEntradas.size(), 2u);
    EXPECT_EQ(m.mapEntradas.at(2).TSID, 5);
    EXPECT_EQ(m.mapEntradas.at(2).pModulo, nullptr);
    EXPECT_EQ(m.mapSalidas.size(), 2u);
    EXPECT_EQ(m.mapSalidas.at(1).NumServiciosMax, 8u);
    EXPECT_EQ(m.mapSalidas.at(1).BitRateMax, 1000u);
    EXPECT_EQ(m.mapSalidas.at(1).pModulo, nullptr);
    EXPECT_EQ(m.mapSalidas.at(2).NumServiciosMax, tRec_Modulo::SERVICIOS_POR_SALIDA);
}

TEST(tRec_Modulo, ResetsTheTranscodersInUseAndNothingElse) {
    tRec_Modulo m("A");
    m.PIDsModulo = 1;
    m.SD_MAX_Transcoding = 2;
    m.SD_Transcoding = 3;
    m.HD_MAX_Transcoding = 4;
    m.HD_Transcoding = 5;
    m.AUX_MAX_Transcoding = 6;
    m.AUX_Transcoding = 7;
    m.configurarModelo(3, 1, 1, 100);
    EXPECT_EQ(m.PIDsModulo, 1);
    EXPECT_EQ(m.SD_MAX_Transcoding, 2);
    EXPECT_EQ(m.SD_Transcoding, 0);
    EXPECT_EQ(m.HD_MAX_Transcoding, 4);
    EXPECT_EQ(m.HD_Transcoding, 0);
    EXPECT_EQ(m.AUX_MAX_Transcoding, 6);
    EXPECT_EQ(m.AUX_Transcoding, 0);
}

TEST(tRec_Modulo, TakesThe65535InputsAndOutputsThatFitTheirNumber) {
    tRec_Modulo m("A");
    registro::vaciar();
    registro::callar();
    EXPECT_EQ(m.configurarModelo(3, 65535, 65535, 1), 1);
    EXPECT_EQ(m.mapEntradas.size(), 65535u);
    EXPECT_EQ(m.mapEntradas.rbegin()->second.NumEntrada, 65535);
    EXPECT_EQ(m.mapSalidas.size(), 65535u);
    EXPECT_EQ(m.mapSalidas.rbegin()->second.NumSalida, 65535);
    registro::vaciar();
}

TEST(tRec_Modulo, AddsAServiceToAnInputAndAnOutput) {
    tRec_Modulo m = modulo();
    const auto s = servicio(5, 3);
    EXPECT_EQ(m.addService(s, 2, 1), 1);
    EXPECT_EQ(m.mapEntradas.at(2).MapaServicios.count(5), 1u);
    EXPECT_TRUE(m.mapEntradas.at(1).MapaServicios.empty());
    EXPECT_EQ(m.mapSalidas.at(1).MapaServicios.count(5), 1u);
    EXPECT_TRUE(m.mapSalidas.at(2).MapaServicios.empty());
    EXPECT_EQ(m.mapSalidas.at(1).BitRateActual, 1000u);
    EXPECT_EQ(m.PIDsModulo, 3);
    EXPECT_EQ(s->pEntrada, &m.mapEntradas.at(2));
    EXPECT_EQ(s->pSalida, &m.mapSalidas.at(1));
    EXPECT_TRUE(registro::hechos().empty());
}

TEST(tRec_Modulo, ChecksNoLimitAndCountsNoTranscoderWhenAdding) {
    tRec_Modulo m = modulo();
    m.PIDsModuloMax = 2;
    m.mapSalidas.at(1).BitRateMax = 500;
    m.mapSalidas.at(1).NumServiciosMax = 0;
    const auto s = servicio(5, 3);
    s->Transcoding = 1;
    EXPECT_EQ(m.addService(s, 1, 1), 1);
    EXPECT_EQ(m.PIDsModulo, 3);
    EXPECT_EQ(m.SD_Transcoding, 0);
    EXPECT_EQ(m.HD_Transcoding, 0);
    EXPECT_EQ(m.mapSalidas.at(1).NumServicios, 0u);
}

TEST(tRec_Modulo, RefusesToAddOnAMissingInput) {
    tRec_Modulo m = modulo();
    EXPECT_EQ(m.addService(servicio(5), 3, 1), tRec_Modulo::ERROR_SIN_ENTRADA);
    EXPECT_EQ(m.addService(servicio(5), 0, 7), tRec_Modulo::ERROR_SIN_ENTRADA) << "asked before the output";
    EXPECT_EQ(tRec_Modulo::ERROR_SIN_ENTRADA, -203);
    EXPECT_TRUE(m.mapSalidas.at(1).MapaServicios.empty());
    EXPECT_EQ(m.PIDsModulo, 0);
}

TEST(tRec_Modulo, LeavesAServiceOnTheInputWhenTheOutputIsMissing) {
    tRec_Modulo m = modulo();
    const auto s = servicio(5);
    EXPECT_EQ(m.addService(s, 1, 3), tRec_Modulo::ERROR_SIN_SALIDA);
    EXPECT_EQ(tRec_Modulo::ERROR_SIN_SALIDA, -204);
    EXPECT_EQ(m.mapEntradas.at(1).MapaServicios.count(5), 1u);
    EXPECT_EQ(s->pEntrada, &m.mapEntradas.at(1));
    EXPECT_EQ(m.PIDsModulo, 0);
}

TEST(tRec_Modulo, DeletesAServiceFromItsInputAndOutput) {
    tRec_Modulo m = modulo();
    const auto s = servicio(5, 3);
    m.addService(servicio(6, 4), 2, 1);
    m.addService(s, 2, 1);
    EXPECT_EQ(m.deleteService(s, 2, 1), 1);
    EXPECT_EQ(m.mapEntradas.at(2).MapaServicios.count(5), 0u);
    EXPECT_EQ(m.mapEntradas.at(2).MapaServicios.count(6), 1u);
    EXPECT_EQ(m.mapSalidas.at(1).MapaServicios.count(5), 0u);
    EXPECT_EQ(m.mapSalidas.at(1).BitRateActual, 1000u);
    EXPECT_EQ(m.PIDsModulo, 4);
    EXPECT_TRUE(registro::hechos().empty());
}

TEST(tRec_Modulo, RefusesToDeleteFromAMissingInput) {
    tRec_Modulo m = modulo();
    const auto s = servicio(5);
    m.addService(s, 1, 1);
    EXPECT_EQ(m.deleteService(s, 3, 1), tRec_Modulo::ERROR_SIN_ENTRADA);
    EXPECT_EQ(m.deleteService(s, 3, 7), tRec_Modulo::ERROR_SIN_ENTRADA) << "asked before the output";
    EXPECT_EQ(m.mapSalidas.at(1).MapaServicios.count(5), 1u);
    EXPECT_EQ(m.PIDsModulo, 3);
}

TEST(tRec_Modulo, KeepsTheInputsRemovalWhenTheOutputIsMissing) {
    tRec_Modulo m = modulo();
    const auto s = servicio(5);
    m.addService(s, 1, 1);
    EXPECT_EQ(m.deleteService(s, 1, 3), tRec_Modulo::ERROR_SIN_SALIDA);
    EXPECT_TRUE(m.mapEntradas.at(1).MapaServicios.empty());
    EXPECT_EQ(m.mapSalidas.at(1).MapaServicios.count(5), 1u);
    EXPECT_EQ(m.PIDsModulo, 3);
}

TEST(tRec_Modulo, DeletesFromTheOutputAServiceThatIsNotOnTheInput) {
    tRec_Modulo m = modulo();
    const auto s = servicio(5, 3);
    m.addService(s, 1, 1);
    EXPECT_EQ(m.deleteService(s, 2, 1), 1);
    EXPECT_EQ(m.mapEntradas.at(1).MapaServicios.count(5), 1u);
    EXPECT_TRUE(m.mapSalidas.at(1).MapaServicios.empty());
    EXPECT_EQ(m.PIDsModulo, 0);
}

TEST(tRec_Modulo, DeletesFromTheInputAServiceThatIsNotOnTheOutput) {
    tRec_Modulo m = modulo();
    const auto s = servicio(5, 3);
    m.addService(s, 1, 1);
    EXPECT_EQ(m.deleteService(s, 1, 2), 1);
    EXPECT_TRUE(m.mapEntradas.at(1).MapaServicios.empty());
    EXPECT_EQ(m.mapSalidas.at(1).MapaServicios.count(5), 1u);
    EXPECT_EQ(m.PIDsModulo, 0);
}

TEST(tRec_Modulo, GivesThePIDsOfAServiceBackThatIsOnNeither) {
    tRec_Modulo m = modulo();
    EXPECT_EQ(m.deleteService(servicio(5, 3), 1, 1), 1);
    EXPECT_EQ(m.PIDsModulo, 65533);
}

TEST(tRec_Modulo, ItsPIDsWrapAroundAt16Bits) {
    tRec_Modulo m = modulo();
    m.PIDsModulo = 65534;
    m.addService(servicio(5, 3), 1, 1);
    EXPECT_EQ(m.PIDsModulo, 1);
}

TEST(tRec_Modulo, IgnoresANullService) {
    tRec_Modulo m = modulo();
    m.PIDsModulo = 5;
    EXPECT_EQ(m.addService(nullptr, 1, 1), 0);
    EXPECT_EQ(m.deleteService(nullptr, 1, 1), 0);
    EXPECT_TRUE(m.mapEntradas.at(1).MapaServicios.empty());
    EXPECT_TRUE(m.mapSalidas.at(1).MapaServicios.empty());
    EXPECT_EQ(m.PIDsModulo, 5);
    EXPECT_TRUE(registro::hechos().empty());
}

TEST(tRec_Modulo, SharesItsServicesButNotItsMapsWithACopy) {
    tRec_Modulo m = modulo();
    const auto s = servicio(5);
    m.addService(s, 1, 1);
    tRec_Modulo copia = m;
    EXPECT_EQ(s.use_count(), 5);
    copia.mapSalidas.at(1).DeleteServicioALaSalida(s);
    EXPECT_EQ(m.mapSalidas.at(1).MapaServicios.count(5), 1u);
    EXPECT_EQ(m.mapSalidas.at(1).BitRateActual, 1000u);
    EXPECT_EQ(s->pSalida, nullptr) << "the service is the same one";
}

TEST(tRec_Modulo, CopiesKeepNamingTheModuleTheyWereConfiguredIn) {
    tRec_Modulo m("A");
    m.configurarModelo(3, 1, 1, 10);
    const tRec_Modulo copia = m;
    EXPECT_EQ(copia.mapEntradas.at(1).pModulo, &m);
    EXPECT_EQ(copia.mapSalidas.at(1).pModulo, &m);
}

TEST(tRec_Modulo, ChargesThePidsOfAServiceAndNotTheirCeiling) {
    tRec_Modulo modulo = fabrica::modulo({});
    const auto servicio = fabrica::servicio({7});
    servicio->number_PIDs_CA = 3;
    servicio->number_PIDs_CA_Max = 8;
    modulo.addService(servicio, 1, 1);
    EXPECT_EQ(modulo.PIDsModulo, 3);
    modulo.deleteService(servicio, 1, 1);
    EXPECT_EQ(modulo.PIDsModulo, 0);
}

} // namespace tRec_Modulo_test
