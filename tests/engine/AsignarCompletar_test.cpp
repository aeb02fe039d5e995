// Adding services of an input's own stream to it.

#include "tRecalculo.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "support/Fabrica.h"
#include "support/Registro.h"

namespace AsignarCompletar_test {

using namespace zarven;

namespace {

using Lineas = std::vector<std::string>;

// A head-end of one module whose one input is tuned to stream 7/50.
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
        entrada().confEntrada(50, 7);
        registro::vaciar();
    }

    tRec_Modulo& modulo() { return motor.Mapa_ModulosCabecera_Proceso.at("A"); }
    tRec_Entrada& entrada() { return modulo().mapEntradas.at(1); }
    std::uint32_t completar() { return motor.Fill_Services_in_Module_Input(modulo(), entrada()); }
    tMapaServicios& indice() { return motor.Mapa_ONIDs.at(7).MapRec_TSIDs.at(50).MapRec_Services; }
};

Lineas bloque(const tRec_Servicio& s) {
    registro::vaciar();
    s.Print_Servicio(0);
    return registro::hechos();
}

} // namespace

TEST(AsignarCompletar, AddsTheServicesOfTheInputsStream) {
    Cabecera c({{1, 7, 50}, {2, 7, 50}, {3, 7, 60}, {4, 8, 50}});
    EXPECT_EQ(c.completar(), 2u);
    EXPECT_EQ(c.entrada().MapaServicios.size(), 2u);
    EXPECT_EQ(c.entrada().MapaServicios.count(1), 1u);
    EXPECT_EQ(c.entrada().MapaServicios.count(2), 1u);
    EXPECT_EQ(c.modulo().mapSalidas.at(1).NumServicios, 2u);
    EXPECT_EQ(c.motor.num_servicios_procesado(), 2);
    EXPECT_EQ(c.motor.Mapa_ONIDs.at(7).MapRec_TSIDs.count(50), 0u);
}

TEST(AsignarCompletar, LogsTheWholeOfIt) {
    Cabecera c({{1, 7, 50}, {2, 7, 50, 0, 9000}}, 5000);
    EXPECT_EQ(c.completar(), 1u);
    const Lineas esperado = {
        "7 || ||                                                                                                    || || ",
        "7 || ||                                           [ -0- ]                                                  || ||",
        "7 || ||   NombreEntrada: S1  --> NombreSalida:S1   --> NombreForzado: 0  Tipo 1    VideoFormatE: 0                             || ||",
        "7 || ||   idService: 1  --> OSID:1   --> SID: 1 || ||",
        "7 || ||   Descifrar: 0 --> Nº PIDs CA:0 / 0 --> LCN: 1 --> SimulcastLCN: 0 --> PeakBitarte: 1000       || ||",
        "7 || ||   Video Peak BitRate: 1000                                                                            || ||",
        "7 || ||                                                                                                     || ||",
        "7 || ||  % %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %   || ||",
        "7 || ||  % %                                     PIDs Bloqueados                                       % % || ||",
        "7 || ||  % %                                                                                           % % || ||",
        "7 || ||                                                                                                    || ||",
        "7 Salida 1 BitrateActual 0 BitrateMax 5000",
        "7 if ( ( (itSalida->second.BitRateActual (0) + itService->second->peakBitRate (1000) ) < "
        "itSalida->second.BitRateMax (5000) ) &&  )",
        "7 if ( && ( itModulo->second.PIDsModulo (0) + itService->second->number_PIDs_CA (0) <= "
        "itModulo->second.PIDsModuloMax (100) ) )",
        "7 He añadido el servicio: 1",
        "7 || ||                                                                                                    || || ",
        "7 || ||                                           [ -0- ]                                                  || ||",
        "7 || ||   NombreEntrada: S2  --> NombreSalida:S2   --> NombreForzado: 0  Tipo 1    VideoFormatE: 0                             || ||",
        "7 || ||   idService: 2  --> OSID:2   --> SID: 2 || ||",
        "7 || ||   Descifrar: 0 --> Nº PIDs CA:0 / 0 --> LCN: 2 --> SimulcastLCN: 0 --> PeakBitarte: 9000       || ||",
        "7 || ||   Video Peak BitRate: 9000                                                                            || ||",
        "7 || ||                                                                                                     || ||",
        "7 || ||  % %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %   || ||",
        "7 || ||  % %                                     PIDs Bloqueados                                       % % || ||",
        "7 || ||  % %                                                                                           % % || ||",
        "7 || ||                                                                                                    || ||",
        "7 Salida 1 BitrateActual 1000 BitrateMax 5000",
        "7 if ( ( (itSalida->second.BitRateActual (1000) + itService->second->peakBitRate (9000) ) < "
        "itSalida->second.BitRateMax (5000) ) &&  )",
        "7 if ( && ( itModulo->second.PIDsModulo (0) + itService->second->number_PIDs_CA (0) <= "
        "itModulo->second.PIDsModuloMax (100) ) )",
    };
    EXPECT_EQ(registro::hechos(), esperado);
}

TEST(AsignarCompletar, TidiesTheIndexAfterTheLastService) {
    Cabecera c({{1, 7, 50}});
    c.completar();
    EXPECT_TRUE(c.motor.Mapa_ONIDs.empty());
    const auto textos = registro::textos();
    ASSERT_EQ(textos.size(), 17u);
    EXPECT_EQ(textos[14], "He añadido el servicio: 1");
    EXPECT_EQ(textos[15], "ELIMINAMOS EL TSID: 50");
    EXPECT_EQ(textos[16], "ELIMINAMOS EL ONID: 7");
}

TEST(AsignarCompletar, KeepsWhatTheInputCarriesAlready) {
    Cabecera c({{1, 7, 50}});
    c.entrada().addServicioALaEntrada(fabrica::servicio({9, 7, 50}));
    EXPECT_EQ(c.completar(), 1u);
    EXPECT_EQ(c.entrada().MapaServicios.size(), 2u);
    EXPECT_EQ(c.entrada().ONID, 7);
    EXPECT_EQ(c.entrada().TSID, 50);
}

TEST(AsignarCompletar, ARefusalDoesNotEndTheWalk) {
    Cabecera c({{1, 7, 50, 0, 9000}, {2, 7, 50}, {3, 7, 50, 0, 9000}, {4, 7, 50}}, 5000);
    EXPECT_EQ(c.completar(), 2u);
    EXPECT_EQ(c.indice().size(), 2u);
    EXPECT_EQ(c.indice().count(1), 1u);
    EXPECT_EQ(c.indice().count(3), 1u);
}

TEST(AsignarCompletar, DoesNotAskWhetherAServiceIsTranscoded) {
    for (const unsigned short transcoding : std::vector<unsigned short>{0, 1, 2}) {
        fabrica::DatosServicio datos;
        datos.onid = 7;
        datos.tsid = 50;
        datos.transcoding = transcoding;
        Cabecera c({datos});
        EXPECT_EQ(c.completar(), 1u) << transcoding;
        EXPECT_EQ(c.modulo().SD_Transcoding, transcoding == 1 ? 1 : 0);
    }
}

TEST(AsignarCompletar, DumpsEachServiceUnderTheNumberZeroBeforeItIsTried) {
    Cabecera c({{1, 7, 50}, {2, 7, 50}});
    const auto primero = c.indice().find(1)->second;
    const auto segundo = c.indice().find(2)->second;
    c.completar();
    const Lineas visto = registro::hechos();
    const Lineas uno = bloque(*primero);
    const Lineas dos = bloque(*segundo);
    ASSERT_EQ(visto.size(), 2 * (uno.size() + 4) + 2);
    EXPECT_TRUE(std::equal(uno.begin(), uno.end(), visto.begin()));
    EXPECT_TRUE(std::equal(dos.begin(), dos.end(), visto.begin() + 15));
}

TEST(AsignarCompletar, PrintsNothingForAStreamThatIsNotInTheIndex) {
    Cabecera c({{1, 7, 60}, {2, 8, 50}});
    EXPECT_EQ(c.completar(), 0u);
    c.entrada().confEntrada(50, 9);
    EXPECT_EQ(c.completar(), 0u);
    EXPECT_EQ(c.motor.Mapa_ONIDs.size(), 2u) << "looking up creates nothing";
    EXPECT_EQ(c.motor.Mapa_ONIDs.at(7).MapRec_TSIDs.size(), 1u);
    EXPECT_TRUE(registro::hechos().empty());
}

TEST(AsignarCompletar, DoesNothingWithAnEmptyIndex) {
    Cabecera c(std::vector<fabrica::DatosServicio>{});
    EXPECT_EQ(c.completar(), 0u);
    EXPECT_TRUE(registro::hechos().empty());
}

TEST(AsignarCompletar, DoesNotTidyTheIndexWhenNothingWasPlaced) {
    Cabecera c({{1, 7, 50}});
    c.indice().clear();
    EXPECT_EQ(c.completar(), 0u);
    EXPECT_EQ(c.motor.Mapa_ONIDs.at(7).MapRec_TSIDs.count(50), 1u);
    EXPECT_TRUE(registro::hechos().empty());
}

TEST(AsignarCompletar, PlacesServicesUnderTheKeyOfTheirEntry) {
    Cabecera c({{5, 7, 50}});
    c.indice().begin()->second->idService = 99;
    c.completar();
    EXPECT_EQ(c.entrada().MapaServicios.begin()->first, 5);
}

} // namespace AsignarCompletar_test
