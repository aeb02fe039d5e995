#include "tRecalculo.h"

#include <gtest/gtest.h>

#include "support/Fabrica.h"
#include "support/Registro.h"

namespace Consultas_test {

using namespace zarven;

namespace {

fabrica::DatosModulo conMAC(const std::string& mac, bool controlador = false) {
    fabrica::DatosModulo datos;
    datos.mac = mac;
    datos.controlador = controlador;
    return datos;
}

// Loads modules "0", "1"... of these model numbers.
tRecalculo motorConModelos(const std::vector<unsigned short>& modelos) {
    tRecalculo motor;
    for (const unsigned short modelo : modelos) {
        const std::string mac = std::to_string(motor.Mapa_ModulosCabecera_Inicial.size());
        fabrica::cargar(motor, conMAC(mac));
        motor.Mapa_ModulosCabecera_Inicial.at(mac).Modelo = modelo;
    }
    registro::vaciar();
    return motor;
}

// A working index with these keys on one stream.
tRecalculo motorConClaves(const std::vector<long>& claves) {
    tRecalculo motor;
    for (const long clave : claves) {
        const auto s = fabrica::servicio({7});
        s->idService = clave;
        motor.addRec_Servicio(s);
    }
    fabrica::preparar(motor);
    return motor;
}

// Whether a module with one output in this state could still take a service.
bool incompleto(std::uint32_t actual, std::uint32_t maximo, std::uint32_t servicios = 0,
                std::uint32_t serviciosMax = 512) {
    fabrica::DatosModulo datos;
    datos.salidas = {maximo};
    tRec_Modulo modulo = fabrica::modulo(datos);
    modulo.mapSalidas.at(1).BitRateActual = actual;
    modulo.mapSalidas.at(1).NumServicios = servicios;
    modulo.mapSalidas.at(1).NumServiciosMax = serviciosMax;
    return tRecalculo().ModuleisUncomplete(modulo);
}

} // namespace

TEST(Consultas, FindsNoControllerWithoutModules) {
    const tRecalculo motor;
    EXPECT_EQ(motor.GetMACControlador(), "");
    EXPECT_EQ(motor.GetModeloControlador(), 0);
}

TEST(Consultas, FindsNoControllerWhenNoModuleIsFlagged) {
    tRecalculo motor;
    fabrica::cargar(motor, conMAC("A"));
    EXPECT_EQ(motor.GetMACControlador(), "");
    EXPECT_EQ(motor.GetModeloControlador(), 0);
}

TEST(Consultas, FindsTheFlaggedModuleAmongOthers) {
    tRecalculo motor;
    fabrica::cargar(motor, conMAC("A"));
    fabrica::cargar(motor, conMAC("B", true));
    fabrica::cargar(motor, conMAC("C"));
    motor.Mapa_ModulosCabecera_Inicial.at("B").Modelo = 8;
    EXPECT_EQ(motor.GetMACControlador(), "B");
    EXPECT_EQ(motor.GetModeloControlador(), 8);
}

TEST(Consultas, TheSmallestMACOfTwoControllersGivesBothAnswers) {
    tRecalculo motor;
    fabrica::cargar(motor, conMAC("b", true));
    fabrica::cargar(motor, conMAC("B", true)); // byte by byte, capitals come first
    fabrica::cargar(motor, conMAC("Ba", true));
    motor.Mapa_ModulosCabecera_Inicial.at("b").Modelo = 7;
    motor.Mapa_ModulosCabecera_Inicial.at("B").Modelo = 8;
    motor.Mapa_ModulosCabecera_Inicial.at("Ba").Modelo = 9;
    EXPECT_EQ(motor.GetMACControlador(), "B");
    EXPECT_EQ(motor.GetModeloControlador(), 8);
}

TEST(Consultas, LooksForTheControllerAmongTheLoadedModulesOnly) {
    tRecalculo motor;
    fabrica::cargar(motor, conMAC("A", true));
    motor.Mapa_ModulosCabecera_Proceso = motor.Mapa_ModulosCabecera_Inicial;
    motor.Mapa_ModulosCabecera_Final = motor.Mapa_ModulosCabecera_Inicial;
    motor.Mapa_ModulosCabecera_Inicial.clear();
    EXPECT_EQ(motor.GetMACControlador(), "");
    EXPECT_EQ(motor.GetModeloControlador(), 0);
    EXPECT_EQ(motor.GetRecursoCabecera(), 0);
}

TEST(Consultas, OnlyModelsOneAndThreeMakeTheHeadEndAResourceOne) {
    for (const unsigned short modelo : std::vector<unsigned short>{1, 3})
        EXPECT_EQ(motorConModelos({modelo}).GetRecursoCabecera(), 1) << modelo;
    for (const unsigned short modelo : std::vector<unsigned short>{0, 2, 4, 5, 7, 9, 11, 99, 32769})
        EXPECT_EQ(motorConModelos({modelo}).GetRecursoCabecera(), 0) << modelo;
}

TEST(Consultas, OneSuchModuleAnywhereIsEnough) {
    EXPECT_EQ(motorConModelos({1, 2, 4}).GetRecursoCabecera(), 1);
    EXPECT_EQ(motorConModelos({2, 3, 4}).GetRecursoCabecera(), 1);
    EXPECT_EQ(motorConModelos({2, 4, 1}).GetRecursoCabecera(), 1);
    EXPECT_EQ(motorConModelos({2, 4, 2}).GetRecursoCabecera(), 0);
}

TEST(Consultas, LogsTheResourceOnce) {
    const tRecalculo motor = motorConModelos({3, 3});
    motor.GetRecursoCabecera();
    EXPECT_EQ(registro::hechos(), std::vector<std::string>{"7 El tipo de cabecera es: 1"});
}

TEST(Consultas, LogsTheResourceAlsoWithoutModules) {
    const tRecalculo motor;
    registro::vaciar();
    EXPECT_EQ(motor.GetRecursoCabecera(), 0);
    EXPECT_EQ(registro::hechos(), std::vector<std::string>{"7 El tipo de cabecera es: 0"});
}

TEST(Consultas, AModuleIsCompleteWhenItsPIDsAreSpent) {
    tRec_Modulo modulo = fabrica::modulo({});
    const tRecalculo motor;
    modulo.PIDsModuloMax = 32;
    modulo.PIDsModulo = 31;
    EXPECT_TRUE(motor.ModuleisUncomplete(modulo));
    modulo.PIDsModulo = 32;
    EXPECT_FALSE(motor.ModuleisUncomplete(modulo));
    modulo.PIDsModulo = 33;
    EXPECT_FALSE(motor.ModuleisUncomplete(modulo));
    modulo.PIDsModuloMax = 65535;
    modulo.PIDsModulo = 65534;
    EXPECT_TRUE(motor.ModuleisUncomplete(modulo));
}

TEST(Consultas, AModuleIsCompleteWhenItsOutputsCarryAllTheServicesTheyMay) {
    EXPECT_TRUE(incompleto(0, 10000, 511));
    EXPECT_FALSE(incompleto(0, 10000, 512));
    EXPECT_FALSE(incompleto(0, 10000, 513));
    EXPECT_TRUE(incompleto(0, 10000, 0x7FFFFFFFu, 0x80000000u)) << "the counts are unsigned";
}

TEST(Consultas, AModuleIsCompleteWithinAMarginOf6000OfBitrate) {
    EXPECT_TRUE(incompleto(3999, 10000));
    EXPECT_FALSE(incompleto(4000, 10000));
    EXPECT_FALSE(incompleto(4001, 10000));
    EXPECT_FALSE(incompleto(0, 6000)) << "the remainder is 0, and 0 is not less";
    EXPECT_TRUE(incompleto(0, 6001));
}

TEST(Consultas, AnOutputBelow6000AlwaysHasRoom) {
    EXPECT_TRUE(incompleto(5000, 5000));
    EXPECT_TRUE(incompleto(4000000000u, 5000));
    EXPECT_TRUE(incompleto(0, 5999));
    EXPECT_TRUE(incompleto(0, 0));
    EXPECT_TRUE(incompleto(4294966295u, 5000)) << "5000 - 6000 wraps around";
}

TEST(Consultas, BitratesOfOutputsAreUnsigned) {
    EXPECT_TRUE(incompleto(0x7FFFFFFFu, 0x80000000u + 6000u));
}

TEST(Consultas, AnyOutputWithRoomMakesAModuleUncomplete) {
    fabrica::DatosModulo datos;
    datos.salidas = {10000, 10000, 10000};
    tRec_Modulo modulo = fabrica::modulo(datos);
    const tRecalculo motor;
    for (auto& [numero, salida] : modulo.mapSalidas)
        salida.BitRateActual = 9000;
    EXPECT_FALSE(motor.ModuleisUncomplete(modulo));
    modulo.mapSalidas.at(3).BitRateActual = 0;
    EXPECT_TRUE(motor.ModuleisUncomplete(modulo));
}

TEST(Consultas, OneOutputMustHaveRoomForBothServiceAndBitrate) {
    fabrica::DatosModulo datos;
    datos.salidas = {10000, 10000};
    tRec_Modulo modulo = fabrica::modulo(datos);
    modulo.mapSalidas.at(1).BitRateActual = 9000;
    modulo.mapSalidas.at(2).NumServicios = 512;
    EXPECT_FALSE(tRecalculo().ModuleisUncomplete(modulo));
}

TEST(Consultas, AModuleWithoutOutputsIsComplete) {
    fabrica::DatosModulo datos;
    datos.salidas = {};
    EXPECT_FALSE(tRecalculo().ModuleisUncomplete(fabrica::modulo(datos)));
}

TEST(Consultas, AnInputIsEmptyWhenItCarriesNoService) {
    fabrica::DatosModulo datos;
    datos.entradas = 2;
    tRec_Modulo modulo = fabrica::modulo(datos);
    const tRecalculo motor;
    EXPECT_TRUE(motor.Module_check_empty_input(modulo));
    modulo.mapEntradas.at(1).addServicioALaEntrada(fabrica::servicio({1}));
    modulo.mapEntradas.at(2).confEntrada(5, 7);
    EXPECT_TRUE(motor.Module_check_empty_input(modulo)) << "tuned, but without services";
    modulo.mapEntradas.at(2).addServicioALaEntrada(fabrica::servicio({2}));
    EXPECT_FALSE(motor.Module_check_empty_input(modulo));
    modulo.mapEntradas.at(1).MapaServicios.clear();
    EXPECT_TRUE(motor.Module_check_empty_input(modulo));
}

TEST(Consultas, AModuleWithoutInputsHasNoEmptyInput) {
    fabrica::DatosModulo datos;
    datos.entradas = 0;
    EXPECT_FALSE(tRecalculo().Module_check_empty_input(fabrica::modulo(datos)));
}

TEST(Consultas, AnyNonZeroValueMarksATranscodedService) {
    for (const unsigned short transcoding : std::vector<unsigned short>{1, 2, 65535}) {
        tRecalculo motor;
        fabrica::cargar(motor, {1, 1, 1});
        fabrica::cargar(motor, {2, 1, 2});
        const auto s = fabrica::cargar(motor, {3, 2, 1});
        fabrica::preparar(motor);
        EXPECT_FALSE(motor.Exist_Transcoding_Service());
        s->Transcoding = transcoding;
        EXPECT_TRUE(motor.Exist_Transcoding_Service()) << transcoding;
    }
}

TEST(Consultas, LooksForTranscodedServicesInTheWorkingIndex) {
    tRecalculo motor;
    const auto s = fabrica::cargar(motor, {1});
    s->Transcoding = 1;
    EXPECT_FALSE(motor.Exist_Transcoding_Service());
    fabrica::preparar(motor);
    EXPECT_TRUE(motor.Exist_Transcoding_Service());
}

TEST(Consultas, AServiceHasAnIdWhenItsKeyIsAboveZero) {
    EXPECT_FALSE(motorConClaves({}).Exist_Service_with_idService());
    EXPECT_FALSE(motorConClaves({0}).Exist_Service_with_idService());
    EXPECT_FALSE(motorConClaves({-5, -1, 0}).Exist_Service_with_idService());
    EXPECT_TRUE(motorConClaves({1}).Exist_Service_with_idService());
    EXPECT_TRUE(motorConClaves({-5, 0, 1}).Exist_Service_with_idService());
}

TEST(Consultas, LooksForIdsOnEveryStreamOfTheWorkingIndex) {
    tRecalculo motor;
    fabrica::cargar(motor, {0, 1, 1});
    fabrica::cargar(motor, {0, 1, 2});
    fabrica::cargar(motor, {4, 2, 1});
    EXPECT_FALSE(motor.Exist_Service_with_idService());
    fabrica::preparar(motor);
    EXPECT_TRUE(motor.Exist_Service_with_idService());
}

TEST(Consultas, AStreamWithoutServicesHasNeitherIdsNorTranscodedServices) {
    tRecalculo motor;
    motor.Mapa_ONIDs[1].MapRec_TSIDs[1].TSID = 1;
    EXPECT_FALSE(motor.Exist_Service_with_idService());
    EXPECT_FALSE(motor.Exist_Transcoding_Service());
}

TEST(Consultas, OneTranscodedServiceOfAStreamIsEnough) {
    for (unsigned short cual = 1; cual <= 3; ++cual) {
        tRecalculo motor;
        for (unsigned short clave = 1; clave <= 3; ++clave)
            fabrica::cargar(motor, {clave})->Transcoding = static_cast<unsigned short>(clave == cual);
        fabrica::preparar(motor);
        EXPECT_TRUE(motor.Exist_Transcoding_Service()) << cual;
    }
}

TEST(Consultas, OnlyTheResourceIsLogged) {
    tRecalculo motor;
    fabrica::cargar(motor, conMAC("A", true));
    fabrica::cargar(motor, fabrica::DatosServicio());
    fabrica::preparar(motor);
    registro::vaciar();
    motor.GetMACControlador();
    motor.GetModeloControlador();
    motor.ModuleisUncomplete(motor.Mapa_ModulosCabecera_Inicial.at("A"));
    motor.Module_check_empty_input(motor.Mapa_ModulosCabecera_Inicial.at("A"));
    motor.Exist_Transcoding_Service();
    motor.Exist_Service_with_idService();
    EXPECT_TRUE(registro::hechos().empty());
}

} // namespace Consultas_test
