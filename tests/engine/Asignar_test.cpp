// Giving an input its stream: what is placed, logged and taken out of the working index.

#include "tRecalculo.h"

#include <gtest/gtest.h>

#include "support/Fabrica.h"
#include "support/Registro.h"

namespace Asignar_test {

using namespace zarven;

namespace {

using Lineas = std::vector<std::string>;

constexpr char MAX = 1;
constexpr char MIN = 3;

// A head-end of one module with one input; services are loaded before it is opened.
struct Cabecera {
    tRecalculo motor;

    explicit Cabecera(const std::vector<fabrica::DatosServicio>& servicios, unsigned long bitrate = 100000) {
        fabrica::DatosModulo datos;
        datos.salidas = {bitrate};
        datos.sd = 99;
        fabrica::cargar(motor, datos);
        for (const auto& s : servicios)
            fabrica::cargar(motor, s);
        fabrica::preparar(motor);
        registro::vaciar();
    }

    tRec_Modulo& modulo() { return motor.Mapa_ModulosCabecera_Proceso.at("A"); }
    tRec_Entrada& entrada() { return modulo().mapEntradas.at(1); }
    int asignar(char modo, bool transcoding = false) {
        return motor.Asignar_listaServicios(modulo(), entrada(), modo, transcoding);
    }
    std::vector<long> colocados() {
        std::vector<long> claves;
        for (const auto& [clave, s] : entrada().MapaServicios)
            claves.push_back(clave);
        return claves;
    }
    std::vector<long> pendientes(unsigned short onid, unsigned short tsid) {
        std::vector<long> claves;
        for (const auto& [clave, s] : motor.Mapa_ONIDs.at(onid).MapRec_TSIDs.at(tsid).MapRec_Services)
            claves.push_back(clave);
        return claves;
    }
};

// A service of stream 7/50; `transcoding` as given.
fabrica::DatosServicio conTranscoding(unsigned short clave, unsigned short transcoding) {
    fabrica::DatosServicio datos;
    datos.clave = clave;
    datos.onid = 7;
    datos.tsid = 50;
    datos.transcoding = transcoding;
    return datos;
}

} // namespace

TEST(Asignar, PlacesTheServicesOfAStreamAndTunesTheInput) {
    Cabecera c({{1, 7, 50}, {2, 7, 50}});
    EXPECT_EQ(c.asignar(MAX), 2);
    EXPECT_EQ(c.entrada().ONID, 7);
    EXPECT_EQ(c.entrada().TSID, 50);
    EXPECT_EQ(c.colocados(), (std::vector<long>{1, 2}));
    EXPECT_EQ(c.modulo().mapSalidas.at(1).NumServicios, 2u);
    EXPECT_TRUE(c.motor.Mapa_ONIDs.empty());
    EXPECT_EQ(c.motor.Mapa_ONIDs_Inicial.size(), 1u);
}

TEST(Asignar, LogsTheWholeOfIt) {
    Cabecera c({{1, 7, 50}, {2, 7, 50, 0, 9000}, {3, 8, 40}}, 5000);
    EXPECT_EQ(c.asignar(MAX), 1);
    const Lineas esperado = {
        "7 ",
        "7 exists_Transcoding_Services 0",
        "7 ",
        "7 MAC[A]: ONID= 7 / TSID 50",
        "7 Salida 1 BitrateActual 0 BitrateMax 5000",
        "7 if ( ( (itSalida->second.BitRateActual (0) + itService->second->peakBitRate (1000) ) < "
        "itSalida->second.BitRateMax (5000) ) &&  )",
        "7 if ( && ( itModulo->second.PIDsModulo (0) + itService->second->number_PIDs_CA (0) <= "
        "itModulo->second.PIDsModuloMax (100) ) )",
        "7 He añadido el servicio: 1",
        "7 Salida 1 BitrateActual 1000 BitrateMax 5000",
        "7 if ( ( (itSalida->second.BitRateActual (1000) + itService->second->peakBitRate (9000) ) < "
        "itSalida->second.BitRateMax (5000) ) &&  )",
        "7 if ( && ( itModulo->second.PIDsModulo (0) + itService->second->number_PIDs_CA (0) <= "
        "itModulo->second.PIDsModuloMax (100) ) )",
    };
    EXPECT_EQ(registro::hechos(), esperado);
}

TEST(Asignar, LogsTheTidyingOfTheIndexAtTheEnd) {
    Cabecera c({{1, 7, 50}});
    c.asignar(MAX);
    const auto textos = registro::textos();
    ASSERT_EQ(textos.size(), 10u);
    EXPECT_EQ(textos[7], "He añadido el servicio: 1");
    EXPECT_EQ(textos[8], "ELIMINAMOS EL TSID: 50");
    EXPECT_EQ(textos[9], "ELIMINAMOS EL ONID: 7");
}

TEST(Asignar, AnswersNothingForAnEmptyIndex) {
    Cabecera c(std::vector<fabrica::DatosServicio>{});
    EXPECT_EQ(c.asignar(MAX, true), 0);
    EXPECT_EQ(registro::hechos(), (Lineas{"7 ", "7 exists_Transcoding_Services 0", "7 "}));
}

TEST(Asignar, AnyOtherModeChoosesNothingAfterItsThreeLines) {
    for (const char modo : std::string("\0\2\4\x7f", 4)) {
        Cabecera c({conTranscoding(1, 0), conTranscoding(2, 1)});
        EXPECT_EQ(c.asignar(modo), 0);
        EXPECT_EQ(registro::hechos(), (Lineas{"7 ", "7 exists_Transcoding_Services 1", "7 "}));
        EXPECT_EQ(c.motor.num_servicios_procesado(), 2);
    }
}

TEST(Asignar, ARefusalDoesNotEndTheWalk) {
    Cabecera c({{1, 7, 50}, {2, 7, 50, 0, 9000}, {3, 7, 50}}, 5000);
    EXPECT_EQ(c.asignar(MAX), 2);
    EXPECT_EQ(c.colocados(), (std::vector<long>{1, 3}));
    EXPECT_EQ(c.pendientes(7, 50), std::vector<long>{2});
    EXPECT_EQ(c.entrada().TSID, 50);
}

TEST(Asignar, AnInputOnWhichNothingFitsKeepsItsTuning) {
    Cabecera c({{1, 7, 50, 0, 9000}, {2, 7, 50, 0, 9000}, {3, 8, 40}}, 5000);
    c.entrada().confEntrada(60, 9);
    EXPECT_EQ(c.asignar(MAX), 0);
    EXPECT_EQ(c.entrada().ONID, 9);
    EXPECT_EQ(c.entrada().TSID, 60);
    EXPECT_EQ(c.motor.num_servicios_procesado(), 3);
    EXPECT_EQ(registro::cuantasEmpiezan("ELIMINAMOS"), 0u);
}

TEST(Asignar, DropsTheStreamButNotItsNetworkWhenOthersRemain) {
    Cabecera c({{1, 7, 50}, {2, 7, 50}, {3, 7, 60}});
    c.asignar(MAX);
    EXPECT_EQ(c.motor.Mapa_ONIDs.at(7).MapRec_TSIDs.size(), 1u);
    EXPECT_EQ(c.pendientes(7, 60), std::vector<long>{3});
}

TEST(Asignar, PlacesServicesUnderTheKeyOfTheirEntry) {
    Cabecera c({{5, 7, 50}});
    c.motor.Mapa_ONIDs.at(7).MapRec_TSIDs.at(50).MapRec_Services.begin()->second->idService = 99;
    c.asignar(MAX);
    EXPECT_EQ(c.colocados(), std::vector<long>{5});
}

TEST(Asignar, WithoutTranscodedServicesEveryServiceIsEligible) {
    for (const bool transcoding : {false, true}) {
        Cabecera c({conTranscoding(1, 0), conTranscoding(2, 0)});
        EXPECT_EQ(c.asignar(MAX, transcoding), 2);
    }
}

TEST(Asignar, TheTranscodedServiceIsNeitherTriedNorErasedWithoutTranscoding) {
    Cabecera c({conTranscoding(1, 1), conTranscoding(2, 0), conTranscoding(3, 1)});
    EXPECT_EQ(c.asignar(MAX, false), 1);
    EXPECT_EQ(c.colocados(), std::vector<long>{2});
    EXPECT_EQ(c.pendientes(7, 50), (std::vector<long>{1, 3}));
    EXPECT_EQ(registro::cuantasEmpiezan("Salida "), 1u);
}

TEST(Asignar, WithTranscodingTheOtherServicesOfTheStreamArePlacedToo) {
    Cabecera c({conTranscoding(1, 1), conTranscoding(2, 0)});
    EXPECT_EQ(c.asignar(MAX, true), 2);
    EXPECT_TRUE(registro::contiene("exists_Transcoding_Services 1"));
    EXPECT_EQ(c.modulo().SD_Transcoding, 1);
    EXPECT_TRUE(c.motor.Mapa_ONIDs.empty());
}

TEST(Asignar, AStreamOfTranscodedServicesAloneIsNotChosenWithoutTranscoding) {
    Cabecera c({conTranscoding(1, 1)});
    EXPECT_EQ(c.asignar(MAX, false), 0);
    EXPECT_EQ(c.asignar(MIN, false), 0);
    EXPECT_EQ(registro::cuantasEmpiezan("MAC["), 0u);
}

TEST(Asignar, AStreamWithoutTranscodedServicesIsNotChosenWithTranscoding) {
    Cabecera c({{1, 7, 40}, {2, 7, 40}, conTranscoding(3, 1)});
    EXPECT_EQ(c.asignar(MAX, true), 1);
    EXPECT_EQ(c.entrada().TSID, 50);
}

TEST(Asignar, OtherTranscodingValuesExistButAreNeitherCountedNorTried) {
    for (const bool transcoding : {false, true}) {
        Cabecera c({conTranscoding(1, 2), conTranscoding(2, 2)});
        EXPECT_EQ(c.asignar(MAX, transcoding), 0);
        EXPECT_TRUE(registro::contiene("exists_Transcoding_Services 1"));
        EXPECT_EQ(registro::cuantasEmpiezan("MAC["), 0u);
    }
    Cabecera mezcla({conTranscoding(1, 2), conTranscoding(2, 0), conTranscoding(3, 1)});
    EXPECT_EQ(mezcla.asignar(MAX, true), 2);
    EXPECT_EQ(mezcla.colocados(), (std::vector<long>{2, 3}));
    EXPECT_EQ(mezcla.pendientes(7, 50), std::vector<long>{1});
}

TEST(Asignar, WorksOnTheModuleItIsGiven) {
    Cabecera c({{1, 7, 50}});
    fabrica::DatosModulo datos;
    datos.mac = "00:1B:C5";
    tRec_Modulo suelto = fabrica::modulo(datos);
    registro::vaciar();
    c.motor.Asignar_listaServicios(suelto, suelto.mapEntradas.at(1), MAX, false);
    EXPECT_TRUE(registro::contiene("MAC[00:1B:C5]: ONID= 7 / TSID 50"));
    EXPECT_EQ(suelto.mapEntradas.at(1).MapaServicios.size(), 1u);
    EXPECT_TRUE(c.entrada().MapaServicios.empty());
}

} // namespace Asignar_test
