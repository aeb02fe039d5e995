// Loading: modules, output bitrates, PIDs and home channels.

#include "tRecalculo.h"

#include <type_traits>

#include <gtest/gtest.h>

#include "support/Fabrica.h"
#include "support/Registro.h"

namespace Carga_test {

using namespace zarven;

namespace {

std::unique_ptr<tRec_PID> pid(unsigned short SID, long idPSG = 16) {
    return std::make_unique<tRec_PID>(idPSG, 0, 0, 0, "spa", 1, SID);
}

std::shared_ptr<tRec_Servicio> servicio(unsigned short clave, unsigned short SID) {
    fabrica::DatosServicio datos;
    datos.clave = clave;
    auto nuevo = fabrica::servicio(datos);
    nuevo->SID = SID;
    return nuevo;
}

} // namespace

static_assert(std::is_same_v<tMapaONIDs, std::map<unsigned short, Rec_ONID>>);
static_assert(std::is_same_v<decltype(Rec_ONID::MapRec_TSIDs), std::map<unsigned short, Rec_TSID>>);
static_assert(std::is_same_v<decltype(Rec_TSID::MapRec_Services), tMapaServicios>);
static_assert(std::is_same_v<decltype(tRecalculo::listaServiciosClonados),
                             std::vector<std::shared_ptr<tRec_Servicio>>>);

TEST(Carga, AnEngineStartsEmpty) {
    const tRecalculo motor;
    EXPECT_TRUE(motor.Mapa_ONIDs_Inicial.empty());
    EXPECT_TRUE(motor.Mapa_ONIDs.empty());
    EXPECT_TRUE(motor.Mapa_ModulosCabecera_Inicial.empty());
    EXPECT_TRUE(motor.Mapa_ModulosCabecera_Proceso.empty());
    EXPECT_TRUE(motor.Mapa_HomeChannels.empty());
    EXPECT_TRUE(motor.Mapa_ONIDs_Auxiliar.empty());
    EXPECT_TRUE(motor.listaServicios.empty());
    EXPECT_TRUE(motor.Mapa_ModulosCabecera_Final.empty());
    EXPECT_TRUE(motor.Mapa_ONIDs_Final.empty());
    EXPECT_TRUE(motor.listaServiciosClonados.empty());
}

TEST(Carga, ServicesLiveAsLongAsTheEngineThatHoldsThem) {
    std::weak_ptr<tRec_Servicio> testigo;
    {
        tRecalculo motor;
        testigo = fabrica::cargar(motor, fabrica::DatosServicio());
        EXPECT_FALSE(testigo.expired());
    }
    EXPECT_TRUE(testigo.expired());
}

TEST(Carga, AddsAModuleConfiguredAsTold) {
    tRecalculo motor;
    EXPECT_EQ(motor.addModulo("00:01", 3, 2, 4, 100, true), 1);
    ASSERT_EQ(motor.Mapa_ModulosCabecera_Inicial.count("00:01"), 1u);
    const tRec_Modulo& modulo = motor.Mapa_ModulosCabecera_Inicial.at("00:01");
    EXPECT_EQ(modulo.MAC, "00:01");
    EXPECT_EQ(modulo.Modelo, 3);
    EXPECT_TRUE(modulo.Controlador);
    EXPECT_EQ(modulo.mapEntradas.size(), 2u);
    EXPECT_EQ(modulo.mapSalidas.size(), 4u);
    EXPECT_EQ(modulo.PIDsModuloMax, 100);
}

TEST(Carga, AddsAModuleThatIsNotTheController) {
    tRecalculo motor;
    motor.addModulo("00:01", 3, 1, 1, 100, false);
    EXPECT_FALSE(motor.Mapa_ModulosCabecera_Inicial.at("00:01").Controlador);
}

TEST(Carga, TheInputsAndOutputsNameTheModuleInTheLoadedMap) {
    tRecalculo motor;
    motor.addModulo("00:02", 3, 1, 1, 100, false);
    motor.addModulo("00:01", 3, 1, 1, 100, false);
    for (auto& [mac, modulo] : motor.Mapa_ModulosCabecera_Inicial) {
        EXPECT_EQ(modulo.mapEntradas.at(1).pModulo, &modulo) << mac;
        EXPECT_EQ(modulo.mapSalidas.at(1).pModulo, &modulo) << mac;
    }
}

TEST(Carga, LogsTheDumpsOfAModuleAdded) {
    tRecalculo motor;
    registro::vaciar();
    motor.addModulo("00:01", 3, 1, 2, 100, false);
    const auto visto = registro::hechos();
    registro::vaciar();
    motor.Mapa_ModulosCabecera_Inicial.at("00:01").Print_MapaEntradas();
    motor.Mapa_ModulosCabecera_Inicial.at("00:01").Print_MapaSalidas();
    EXPECT_EQ(visto, registro::hechos());
    EXPECT_EQ(visto.size(), 3u * 6u);
}

TEST(Carga, RefusesAModuleThatIsLoadedAlready) {
    tRecalculo motor;
    motor.addModulo("00:01", 3, 2, 4, 100, true);
    motor.configurarSalida("00:01", 1, 5000);
    registro::vaciar();
    EXPECT_EQ(motor.addModulo("00:01", 3, 1, 1, 7, false), tRecalculo::ERROR_MODULO_YA_CARGADO);
    EXPECT_EQ(motor.addModulo("00:01", 5, 1, 1, 7, false), tRecalculo::ERROR_MODULO_YA_CARGADO)
        << "whatever its model";
    EXPECT_EQ(tRecalculo::ERROR_MODULO_YA_CARGADO, -102);
    EXPECT_EQ(motor.Mapa_ModulosCabecera_Inicial.size(), 1u);
    const tRec_Modulo& modulo = motor.Mapa_ModulosCabecera_Inicial.at("00:01");
    EXPECT_EQ(modulo.mapSalidas.at(1).BitRateMax, 5000u);
    EXPECT_EQ(modulo.PIDsModuloMax, 100);
    EXPECT_TRUE(modulo.Controlador);
    EXPECT_TRUE(registro::hechos().empty());
}

TEST(Carga, KeepsAModuleOfAnUnsupportedModelUnconfigured) {
    tRecalculo motor;
    registro::vaciar();
    EXPECT_EQ(motor.addModulo("00:01", 5, 2, 4, 100, true), 1);
    const tRec_Modulo& modulo = motor.Mapa_ModulosCabecera_Inicial.at("00:01");
    EXPECT_EQ(modulo.Modelo, tRec_Modulo::MODELO_SIN_CONFIGURAR);
    EXPECT_TRUE(modulo.Controlador);
    EXPECT_TRUE(modulo.mapEntradas.empty());
    EXPECT_TRUE(registro::hechos().empty());
}

TEST(Carga, SetsTheBitrateOfAnOutput) {
    tRecalculo motor;
    motor.addModulo("00:01", 3, 1, 2, 100, false);
    registro::vaciar();
    EXPECT_EQ(motor.configurarSalida("00:01", 2, 38000), 1);
    EXPECT_EQ(motor.Mapa_ModulosCabecera_Inicial.at("00:01").mapSalidas.at(2).BitRateMax, 38000u);
    EXPECT_EQ(motor.Mapa_ModulosCabecera_Inicial.at("00:01").mapSalidas.at(1).BitRateMax, 0u);
    EXPECT_TRUE(registro::hechos().empty());
}

TEST(Carga, NarrowsTheBitrateOfAnOutputTo32Bits) {
    tRecalculo motor;
    motor.addModulo("00:01", 3, 1, 1, 100, false);
    motor.configurarSalida("00:01", 1, 0xFFFFFFFFul);
    EXPECT_EQ(motor.Mapa_ModulosCabecera_Inicial.at("00:01").mapSalidas.at(1).BitRateMax, 4294967295u);
    motor.configurarSalida("00:01", 1, 0xFFFFFFFFul + 6);
    EXPECT_EQ(motor.Mapa_ModulosCabecera_Inicial.at("00:01").mapSalidas.at(1).BitRateMax, 5u);
}

TEST(Carga, SetsNoBitrateOfTheWorkingAndTheBestModules) {
    tRecalculo motor;
    motor.addModulo("00:01", 3, 1, 1, 100, false);
    motor.Mapa_ModulosCabecera_Proceso = motor.Mapa_ModulosCabecera_Inicial;
    motor.Mapa_ModulosCabecera_Final = motor.Mapa_ModulosCabecera_Inicial;
    motor.configurarSalida("00:01", 1, 38000);
    EXPECT_EQ(motor.Mapa_ModulosCabecera_Proceso.at("00:01").mapSalidas.at(1).BitRateMax, 0u);
    EXPECT_EQ(motor.Mapa_ModulosCabecera_Final.at("00:01").mapSalidas.at(1).BitRateMax, 0u);
}

TEST(Carga, RefusesTheOutputOfAnUnknownModule) {
    tRecalculo motor;
    motor.addModulo("00:01", 3, 1, 1, 100, false);
    EXPECT_EQ(motor.configurarSalida("00:02", 1, 38000), tRecalculo::ERROR_SIN_MODULO);
    EXPECT_EQ(tRecalculo::ERROR_SIN_MODULO, -104);
    EXPECT_EQ(motor.Mapa_ModulosCabecera_Inicial.size(), 1u);
}

TEST(Carga, RefusesAnUnknownOutput) {
    tRecalculo motor;
    motor.addModulo("00:01", 3, 1, 2, 100, false);
    EXPECT_EQ(motor.configurarSalida("00:01", 0, 38000), tRecalculo::ERROR_SIN_SALIDA);
    EXPECT_EQ(motor.configurarSalida("00:01", 3, 38000), tRecalculo::ERROR_SIN_SALIDA);
    EXPECT_EQ(tRecalculo::ERROR_SIN_SALIDA, -105);
    EXPECT_EQ(motor.Mapa_ModulosCabecera_Inicial.at("00:01").mapSalidas.size(), 2u);
}

TEST(Carga, RefusesTheOutputOfAModuleWithoutOutputs) {
    tRecalculo motor;
    motor.addModulo("00:01", 3, 1, 0, 100, false);
    EXPECT_EQ(motor.configurarSalida("00:01", 1, 38000), tRecalculo::ERROR_SIN_SALIDA);
}

TEST(Carga, HandsAPIDToTheServiceWithItsServiceId) {
    tRecalculo motor;
    const auto uno = servicio(1, 101);
    const auto otro = servicio(2, 102);
    motor.addRec_Servicio(uno);
    motor.addRec_Servicio(otro);
    registro::vaciar();
    EXPECT_EQ(motor.addRec_PID(pid(102, 20)), 1);
    EXPECT_TRUE(uno->MapaPIDs.empty());
    ASSERT_EQ(otro->MapaPIDs.count(20), 1u);
    EXPECT_EQ(otro->MapaPIDs.at(20)->pServicio, otro.get());
    EXPECT_EQ(registro::hechos(), std::vector<std::string>{"7 Añadimos PID al servicio 102"});
}

TEST(Carga, HandsAPIDToTheFirstLoadedOfSeveralServices) {
    tRecalculo motor;
    const auto primero = servicio(9, 101);
    const auto segundo = servicio(1, 101);
    motor.addRec_Servicio(primero);
    motor.addRec_Servicio(segundo);
    motor.addRec_PID(pid(101));
    EXPECT_EQ(primero->MapaPIDs.size(), 1u);
    EXPECT_TRUE(segundo->MapaPIDs.empty());
}

TEST(Carga, HandsAPIDToACloneBeforeItsParent) {
    tRecalculo motor;
    const auto padre = servicio(1, 101);
    const auto clon = servicio(1, 101);
    const auto segundoClon = servicio(1, 101);
    motor.addRec_Servicio(padre);
    motor.addRec_Servicio(clon);
    motor.addRec_Servicio(segundoClon);
    motor.addRec_PID(pid(101));
    EXPECT_TRUE(padre->MapaPIDs.empty());
    EXPECT_EQ(clon->MapaPIDs.size(), 1u);
    EXPECT_TRUE(segundoClon->MapaPIDs.empty());
}

TEST(Carga, RefusesAPIDWithoutService) {
    tRecalculo motor;
    const auto s = servicio(1, 101);
    motor.addRec_Servicio(s);
    registro::vaciar();
    EXPECT_EQ(motor.addRec_PID(pid(1)), tRecalculo::ERROR_PID_SIN_SERVICIO);
    EXPECT_EQ(tRecalculo::ERROR_PID_SIN_SERVICIO, -110);
    EXPECT_TRUE(s->MapaPIDs.empty());
    EXPECT_TRUE(registro::hechos().empty());
}

TEST(Carga, IgnoresANullPID) {
    tRecalculo motor;
    motor.addRec_Servicio(servicio(0, 0));
    registro::vaciar();
    EXPECT_EQ(motor.addRec_PID(nullptr), 0);
    EXPECT_TRUE(registro::hechos().empty());
}

TEST(Carga, AddsHomeChannelsWithoutServices) {
    tRecalculo motor;
    registro::vaciar();
    EXPECT_EQ(motor.addHomeChannel(7, 50), 1);
    EXPECT_EQ(motor.addHomeChannel(7, 40), 1);
    EXPECT_EQ(motor.addHomeChannel(6, 50), 1);
    ASSERT_EQ(motor.Mapa_HomeChannels.size(), 2u);
    EXPECT_EQ(motor.Mapa_HomeChannels.at(7).ONID, 7);
    EXPECT_EQ(motor.Mapa_HomeChannels.at(7).MapRec_TSIDs.size(), 2u);
    EXPECT_EQ(motor.Mapa_HomeChannels.at(7).MapRec_TSIDs.at(40).TSID, 40);
    EXPECT_TRUE(motor.Mapa_HomeChannels.at(7).MapRec_TSIDs.at(40).MapRec_Services.empty());
    EXPECT_EQ(motor.Mapa_HomeChannels.at(6).ONID, 6);
    EXPECT_EQ(motor.Mapa_HomeChannels.at(6).MapRec_TSIDs.size(), 1u);
    EXPECT_EQ(motor.Mapa_HomeChannels.at(6).MapRec_TSIDs.at(50).TSID, 50);
    EXPECT_TRUE(motor.Mapa_ONIDs_Inicial.empty());
    EXPECT_TRUE(registro::hechos().empty());
}

TEST(Carga, RefusesAHomeChannelThatIsLoadedAlready) {
    tRecalculo motor;
    motor.addHomeChannel(7, 50);
    EXPECT_EQ(motor.addHomeChannel(7, 50), tRecalculo::ERROR_HOME_CHANNEL_YA_CARGADO);
    EXPECT_EQ(tRecalculo::ERROR_HOME_CHANNEL_YA_CARGADO, -106);
    EXPECT_EQ(motor.addHomeChannel(50, 7), 1);
}

TEST(Carga, ReturnCodesAreAsPublished) {
    EXPECT_EQ(tRecalculo::RETURN_OK, 1);
    EXPECT_EQ(tRecalculo::ERROR_MODULOS_NO_COMPATIBLES, -100);
    EXPECT_EQ(tRecalculo::ERROR_INDICE_INCOHERENTE, -101);
    EXPECT_EQ(tRecalculo::ERROR_CLON_SIN_PADRE, -109);
}

} // namespace Carga_test
