#include "tRecalculo.h"

#include <gtest/gtest.h>

#include "support/Fabrica.h"
#include "support/Registro.h"
#include "support/SinDepuracion.h"

namespace Informes_test {

using namespace zarven;

namespace {

using Lineas = std::vector<std::string>;

template <class Accion> Lineas loQueAnota(Accion accion) {
    registro::vaciar();
    accion();
    return registro::hechos();
}

Lineas juntas(const std::vector<Lineas>& partes) {
    Lineas todas;
    for (const Lineas& parte : partes)
        todas.insert(todas.end(), parte.begin(), parte.end());
    return todas;
}

std::shared_ptr<tRec_Servicio> servicio(unsigned short clave, const std::string& recibido,
                                        const std::string& emitido) {
    const auto nuevo = fabrica::servicio({clave});
    nuevo->NombreEntrada = recibido;
    nuevo->NombreSalida = emitido;
    return nuevo;
}

Lineas bloque(const tRec_Servicio& s, int n) {
    return loQueAnota([&] { s.Print_Servicio(n); });
}

const std::string RAYA =
    "7 ||==========================================================================================================||";
const std::string BARRA =
    "7 || |||||||||||||||||||||||||||||||||||||||||||||||||||||||||||||||||||||||||||||||||||||||||||||||||||||||| ||";
const std::string BLANCA =
    "7 ||                                                                                                          ||";
const std::string ONDA =
    "7     ~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~";
const std::string ONDA_BLANCA =
    "7     ~~                                                                                                     ~~";

} // namespace

TEST(Informes, AnEmptyResultHasItsHeadingOnly) {
    tMapaModulos mapa;
    const Lineas esperado = {"5 @ SAT MODULES:", "5 @ -----------------------------------------"};
    EXPECT_EQ(loQueAnota([&] { tRecalculo().Print_Resultado(mapa); }), esperado);
}

TEST(Informes, TheResultListsModulesInputsAndServicesInOrder) {
    fabrica::DatosModulo datos;
    datos.entradas = 2;
    tMapaModulos mapa;
    mapa.emplace("B", fabrica::modulo(datos)).first->second.MAC = "B";
    tRec_Modulo& segundo = mapa.at("B");
    segundo.mapEntradas.at(1).confEntrada(50, 7);
    segundo.mapEntradas.at(1).addServicioALaEntrada(servicio(9, "Nueve", "Canal 9"));
    segundo.mapEntradas.at(1).addServicioALaEntrada(servicio(4, "Cuatro", "Canal 4"));
    datos.entradas = 0;
    mapa.emplace("A", fabrica::modulo(datos));
    const Lineas esperado = {
        "5 @ SAT MODULES:",
        "5 @ -----------------------------------------",
        "5 @ MAC: A ",
        "5 @ ----- TRANSPONDERS",
        "5 @ -----------------------------------------",
        "5 @ MAC: B ",
        "5 @ ----- TRANSPONDERS",
        "5 @ -----------------------------------------",
        "5 @ ---- ONID 7 | TSID 50 ",
        "5 @ ----------------------------------",
        "5 @ --------- Name : Cuatro --> Canal 4",
        "5 @ --------- Name : Nueve --> Canal 9",
        "5 @ ---- ONID 0 | TSID 0 ",
        "5 @ ----------------------------------",
    };
    EXPECT_EQ(loQueAnota([&] { tRecalculo().Print_Resultado(mapa); }), esperado);
}

TEST(Informes, AModuleWithoutInputsHasItsHeadingOnly) {
    fabrica::DatosModulo datos;
    datos.entradas = 0;
    tMapaModulos mapa;
    mapa.emplace("A", fabrica::modulo(datos));
    const Lineas esperado = {"5 @ ----- TRANSPONDERS", "5 @ -----------------------------------------"};
    EXPECT_EQ(loQueAnota([&] { tRecalculo().Print_Transponders_Resultado(mapa.begin()); }), esperado);
}

TEST(Informes, TheTranspondersOfOneModuleAreThoseOfItsInputs) {
    fabrica::DatosModulo datos;
    datos.entradas = 1;
    tMapaModulos mapa;
    mapa.emplace("A", fabrica::modulo(datos)).first->second.mapEntradas.at(1).confEntrada(65535, 7);
    mapa.emplace("B", fabrica::modulo(datos));
    const Lineas esperado = {
        "5 @ ----- TRANSPONDERS",
        "5 @ -----------------------------------------",
        "5 @ ---- ONID 7 | TSID 65535 ",
        "5 @ ----------------------------------",
    };
    EXPECT_EQ(loQueAnota([&] { tRecalculo().Print_Transponders_Resultado(mapa.begin()); }), esperado);
}

TEST(Informes, AServiceWithEqualNamesShowsItTwice) {
    tMapaServicios servicios;
    servicios.emplace(4, servicio(4, "Canal 4", "Canal 4"));
    servicios.emplace(3, servicio(3, "", ""));
    const Lineas esperado = {"5 @ --------- Name :  --> ", "5 @ --------- Name : Canal 4 --> Canal 4"};
    EXPECT_EQ(loQueAnota([&] { tRecalculo().Print_Servicios_Resultado(servicios); }), esperado);
}

TEST(Informes, NoServicesGiveNoLine) {
    EXPECT_TRUE(loQueAnota([] { tRecalculo().Print_Servicios_Resultado({}); }).empty());
}

TEST(Informes, NothingDiscardedHasItsHeadingOnly) {
    tMapaONIDs mapa;
    const Lineas esperado = {"5 @", "5 @", "5 @ DISCARDED SERVICES:"};
    EXPECT_EQ(loQueAnota([&] { tRecalculo().Print_Descartados(mapa); }), esperado);
}

TEST(Informes, TheDiscardedServicesAreListedByStream) {
    tRecalculo motor;
    fabrica::cargar(motor, {2, 8, 40, 0, 0, 0, 0, "Dos"});
    fabrica::cargar(motor, {6, 7, 60, 0, 0, 0, 0, "Seis"});
    fabrica::cargar(motor, {9, 7, 50, 0, 0, 0, 0, "Nueve"});
    fabrica::cargar(motor, {4, 7, 50, 0, 0, 0, 0, "Cuatro"})->NombreSalida = "4";
    const Lineas esperado = {
        "5 @",
        "5 @",
        "5 @ DISCARDED SERVICES:",
        "5 @ ---- ONID 7 | TSID 50 ",
        "5 @ ----------------------------------",
        "5 @ --------- Name : Cuatro --> 4",
        "5 @ --------- Name : Nueve --> Nueve",
        "5 @ ---- ONID 7 | TSID 60 ",
        "5 @ ----------------------------------",
        "5 @ --------- Name : Seis --> Seis",
        "5 @ ---- ONID 8 | TSID 40 ",
        "5 @ ----------------------------------",
        "5 @ --------- Name : Dos --> Dos",
    };
    EXPECT_EQ(loQueAnota([&] { motor.Print_Descartados(motor.Mapa_ONIDs_Inicial); }), esperado);
}

TEST(Informes, AnEmptyIndexPrintsNothing) {
    tMapaONIDs mapa;
    EXPECT_TRUE(loQueAnota([] { tRecalculo().Print_Mapa_ONIDs(); }).empty());
    EXPECT_TRUE(loQueAnota([&] { tRecalculo().Print_Mapa_ONIDs(mapa); }).empty());
}

TEST(Informes, TheLoadedIndexIsDumpedByStreamWithoutABlankLine) {
    tRecalculo motor;
    const auto otro = fabrica::cargar(motor, {2, 8, 40});
    const auto alto = fabrica::cargar(motor, {9, 7, 50});
    const auto bajo = fabrica::cargar(motor, {4, 7, 50});
    const auto esperado = juntas({
        {RAYA,
         "7 ||                                       [ONID: 7 |-| TSID: 50 ]                                          ||",
         BARRA},
        bloque(*bajo, 1),
        bloque(*alto, 2),
        {BARRA, RAYA},
        {RAYA,
         "7 ||                                       [ONID: 8 |-| TSID: 40 ]                                          ||",
         BARRA},
        bloque(*otro, 3),
        {BARRA, RAYA},
    });
    EXPECT_EQ(loQueAnota([&] { motor.Print_Mapa_ONIDs(); }), esperado);
}

TEST(Informes, AnIndexIsDumpedByStreamWithABlankLine) {
    tRecalculo motor;
    const auto tercero = fabrica::cargar(motor, {2, 7, 60});
    const auto primero = fabrica::cargar(motor, {9, 7, 50});
    const auto esperado = juntas({
        {RAYA,
         "7 ||                                       [ONID: 7 |-| TSID: 50 ]                                          ||",
         BLANCA, BARRA},
        bloque(*primero, 1),
        {BARRA, RAYA},
        {RAYA,
         "7 ||                                       [ONID: 7 |-| TSID: 60 ]                                          ||",
         BLANCA, BARRA},
        bloque(*tercero, 2),
        {BARRA, RAYA},
    });
    EXPECT_EQ(loQueAnota([&] { motor.Print_Mapa_ONIDs(motor.Mapa_ONIDs_Inicial); }), esperado);
}

TEST(Informes, AStreamWithoutServicesIsDumpedAsAnEmptyFrame) {
    tRecalculo motor;
    motor.addHomeChannel(7, 50);
    const Lineas esperado = {
        RAYA,
        "7 ||                                       [ONID: 7 |-| TSID: 50 ]                                          ||",
        BLANCA,
        BARRA,
        BARRA,
        RAYA};
    EXPECT_EQ(loQueAnota([&] { motor.Print_Mapa_ONIDs(motor.Mapa_HomeChannels); }), esperado);
}

TEST(Informes, TheWaitingClonesAreNumberedInTheirOrder) {
    tRecalculo motor;
    const auto padre = fabrica::cargar(motor, {4});
    const auto primero = fabrica::cargar(motor, {4});
    const auto segundo = fabrica::cargar(motor, {4});
    const auto esperado = juntas({
        {RAYA,
         "7 ||                                 [SERVICIOS CLONADOS SIN ASIGNAR ]                                        ||",
         BARRA},
        bloque(*primero, 1),
        bloque(*segundo, 2),
        {BARRA, RAYA},
    });
    EXPECT_EQ(loQueAnota([&] { motor.Print_MapaServiciosClonados(); }), esperado);
}

TEST(Informes, WithoutWaitingClonesTheFrameIsEmpty) {
    const Lineas esperado = {
        RAYA,
        "7 ||                                 [SERVICIOS CLONADOS SIN ASIGNAR ]                                        ||",
        BARRA, BARRA, RAYA};
    EXPECT_EQ(loQueAnota([] { tRecalculo().Print_MapaServiciosClonados(); }), esperado);
}

TEST(Informes, WithoutHomeChannelsTheFrameIsEmpty) {
    const Lineas esperado = {
        ONDA,
        "7     ~~                           Lista de Home Channels Configurados                                       ~~",
        ONDA_BLANCA,
        ONDA,
    };
    EXPECT_EQ(loQueAnota([] { tRecalculo().Print_Home_Channels(); }), esperado);
}

TEST(Informes, OneHomeChannelStandsBetweenBlankLines) {
    tRecalculo motor;
    motor.addHomeChannel(7, 50);
    const Lineas esperado = {
        ONDA,
        "7     ~~                           Lista de Home Channels Configurados                                       ~~",
        ONDA_BLANCA,
        "7     ~~  \t\t\t1.  ONID: 7 || TSID: 50                                                   ~~",
        ONDA_BLANCA,
        ONDA,
    };
    EXPECT_EQ(loQueAnota([&] { motor.Print_Home_Channels(); }), esperado);
}

TEST(Informes, EachNetworkShowsItsFirstHomeChannelOnly) {
    tRecalculo motor;
    motor.addHomeChannel(8, 40);
    motor.addHomeChannel(7, 60);
    motor.addHomeChannel(7, 50);
    const Lineas esperado = {
        ONDA,
        "7     ~~                           Lista de Home Channels Configurados                                       ~~",
        ONDA_BLANCA,
        "7     ~~  \t\t\t1.  ONID: 7 || TSID: 50                                                   ~~",
        ONDA_BLANCA,
        "7     ~~  \t\t\t2.  ONID: 8 || TSID: 40                                                   ~~",
        ONDA_BLANCA,
        ONDA,
    };
    EXPECT_EQ(loQueAnota([&] { motor.Print_Home_Channels(); }), esperado);
}

TEST(Informes, ModulesAreDumpedByMACWithNothingAround) {
    tRecalculo motor;
    fabrica::DatosModulo datos;
    datos.mac = "B";
    fabrica::cargar(motor, datos);
    datos.mac = "A";
    fabrica::cargar(motor, datos);
    const auto esperado = loQueAnota([&] {
        motor.Mapa_ModulosCabecera_Inicial.at("A").Print_Modulo();
        motor.Mapa_ModulosCabecera_Inicial.at("B").Print_Modulo();
    });
    EXPECT_EQ(loQueAnota([&] { motor.Print_Mapa_Modulos_original(); }), esperado);
    EXPECT_EQ(loQueAnota([&] { motor.Print_Mapa_Modulos(motor.Mapa_ModulosCabecera_Inicial); }), esperado);
}

TEST(Informes, NoModulesPrintNothing) {
    tMapaModulos mapa;
    EXPECT_TRUE(loQueAnota([] { tRecalculo().Print_Mapa_Modulos_original(); }).empty());
    EXPECT_TRUE(loQueAnota([&] { tRecalculo().Print_Mapa_Modulos(mapa); }).empty());
}

TEST(Informes, EachDumpShowsItsOwnMap) {
    tRecalculo motor;
    fabrica::cargar(motor, {4, 7, 50});
    motor.addModulo("A", 3, 1, 1, 10, false);
    tMapaONIDs otroIndice;
    tMapaModulos otrosModulos;
    EXPECT_TRUE(loQueAnota([&] { motor.Print_Mapa_ONIDs(otroIndice); }).empty());
    EXPECT_TRUE(loQueAnota([&] { motor.Print_Mapa_Modulos(otrosModulos); }).empty());
    EXPECT_FALSE(loQueAnota([&] { motor.Print_Mapa_ONIDs(); }).empty());
    EXPECT_FALSE(loQueAnota([&] { motor.Print_Mapa_Modulos_original(); }).empty());
}

TEST(Informes, ReportsChangeNothing) {
    tRecalculo motor;
    const auto s = fabrica::cargar(motor, {4, 7, 50});
    motor.addModulo("A", 3, 1, 1, 10, false);
    const auto usos = s.use_count();
    motor.Print_Mapa_ONIDs();
    motor.Print_Descartados(motor.Mapa_ONIDs_Inicial);
    motor.Print_Resultado(motor.Mapa_ModulosCabecera_Inicial);
    motor.Print_Servicios_Resultado(motor.Mapa_ONIDs_Inicial.at(7).MapRec_TSIDs.at(50).MapRec_Services);
    EXPECT_EQ(s.use_count(), usos);
    EXPECT_EQ(motor.Mapa_ONIDs_Inicial.at(7).MapRec_TSIDs.at(50).MapRec_Services.size(), 1u);
}

TEST(Informes, ANetworkWithoutHomeChannelsShowsZero) {
    tRecalculo motor;
    motor.Mapa_HomeChannels[9].ONID = 9;
    EXPECT_EQ(loQueAnota([&] { motor.Print_Home_Channels(); }).at(3),
              "7     ~~  \t\t\t1.  ONID: 9 || TSID: 0                                                   ~~");
}

TEST(Informes, WithTheDebugLevelMaskedNothingIsDumped) {
    tRecalculo motor;
    fabrica::cargar(motor, fabrica::DatosModulo());
    fabrica::cargar(motor, {4});
    fabrica::cargar(motor, {4});
    motor.addHomeChannel(7, 50);
    const SinDepuracion silencio;
    EXPECT_EQ(loQueAnota([&] {
                  motor.Print_Mapa_ONIDs();
                  motor.Print_Mapa_ONIDs(motor.Mapa_ONIDs_Inicial);
                  motor.Print_MapaServiciosClonados();
                  motor.Print_Home_Channels();
                  motor.Print_Mapa_Modulos(motor.Mapa_ModulosCabecera_Inicial);
                  motor.Print_Mapa_Modulos_original();
              }),
              Lineas());
}

} // namespace Informes_test
