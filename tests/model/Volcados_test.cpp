// The frames that the records draw in the log, whole and line by line.

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/Fabrica.h"
#include "support/Registro.h"

namespace Volcados_test {

using namespace zarven;

namespace {

using Lineas = std::vector<std::string>;

template <class Accion> Lineas loQueAnota(Accion accion) {
    registro::vaciar();
    accion();
    return registro::hechos();
}

Lineas juntas(Lineas a, const Lineas& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

std::shared_ptr<tRec_Servicio> servicio(unsigned short clave) {
    fabrica::DatosServicio datos;
    datos.clave = clave;
    return fabrica::servicio(datos);
}

// A service in which no two values agree.
std::shared_ptr<tRec_Servicio> dispar() {
    auto s = std::make_shared<tRec_Servicio>(
        static_cast<unsigned short>(101), static_cast<unsigned short>(102), static_cast<unsigned short>(103),
        static_cast<unsigned short>(104), static_cast<unsigned short>(105), static_cast<unsigned short>(106),
        static_cast<unsigned short>(107), static_cast<unsigned short>(108), 109ul, 110ul,
        static_cast<unsigned short>(111), static_cast<unsigned short>(112), static_cast<unsigned short>(113),
        "Entra", "Sale", static_cast<unsigned short>(116), static_cast<unsigned short>(0),
        static_cast<unsigned short>(118), static_cast<unsigned short>(119), static_cast<unsigned short>(120),
        static_cast<unsigned short>(121));
    s->LCN = 122;
    return s;
}

} // namespace

TEST(Volcados, APIDPrintsItsBlock) {
    const tRec_PID pid(-2147483648L, 1, 2, 3, "español", 65535, 5);
    const Lineas esperado = {
        "7 || ||  % %                                                                                           % % || ||",
        "7 || ||  % %                                          [ -0- ]                                          % % || ||",
        "7 || ||  % %                             idPSG: -2147483648  --> Orden:65535 --> AudioCode: español                     % % || ||",
        "7 || ||  % %                                                                                           % % || ||",
    };
    EXPECT_EQ(loQueAnota([&] { pid.Print_PID(0); }), esperado);
}

TEST(Volcados, ThePIDFrameOfAServiceWithoutPIDsStaysOpen) {
    const Lineas esperado = {
        "7 || ||  % %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %   || ||",
        "7 || ||  % %                                     PIDs Bloqueados                                       % % || ||",
        "7 || ||  % %                                                                                           % % || ||",
    };
    EXPECT_EQ(loQueAnota([] { servicio(1)->Print_MapaPIDs(); }), esperado);
}

TEST(Volcados, ThePIDFrameNumbersThePIDsByTheirIdentity) {
    const auto s = servicio(1);
    s->addPID_AlServicio(std::make_unique<tRec_PID>(20, 1, 2, 3, "eng", 7, 1));
    s->addPID_AlServicio(std::make_unique<tRec_PID>(-10, 1, 2, 3, "", 8, 1));
    const Lineas esperado = {
        "7 || ||  % %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %   || ||",
        "7 || ||  % %                                     PIDs Bloqueados                                       % % || ||",
        "7 || ||  % %                                                                                           % % || ||",
        "7 || ||  % %                                                                                           % % || ||",
        "7 || ||  % %                                          [ -1- ]                                          % % || ||",
        "7 || ||  % %                             idPSG: -10  --> Orden:8 --> AudioCode:                      % % || ||",
        "7 || ||  % %                                                                                           % % || ||",
        "7 || ||  % %                                                                                           % % || ||",
        "7 || ||  % %                                          [ -2- ]                                          % % || ||",
        "7 || ||  % %                             idPSG: 20  --> Orden:7 --> AudioCode: eng                     % % || ||",
        "7 || ||  % %                                                                                           % % || ||",
        "7 || ||  % %                                                                                           % % || ||",
        "7 || ||  % %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %   || ||",
    };
    EXPECT_EQ(loQueAnota([&] { s->Print_MapaPIDs(); }), esperado);
}

TEST(Volcados, AServicePrintsItsBlock) {
    const Lineas esperado = {
        "7 || ||                                                                                                    || || ",
        "7 || ||                                           [ -7- ]                                                  || ||",
        "7 || ||   NombreEntrada: Entra  --> NombreSalida:Sale   --> NombreForzado: 116  Tipo 111    VideoFormatE: 112                             || ||",
        "7 || ||   idService: 103  --> OSID:101   --> SID: 102 || ||",
        "7 || ||   Descifrar: 106 --> Nº PIDs CA:107 / 108 --> LCN: 122 --> SimulcastLCN: 105 --> PeakBitarte: 110       || ||",
        "7 || ||   Video Peak BitRate: 109                                                                            || ||",
        "7 || ||                                                                                                     || ||",
        "7 || ||  % %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %   || ||",
        "7 || ||  % %                                     PIDs Bloqueados                                       % % || ||",
        "7 || ||  % %                                                                                           % % || ||",
        "7 || ||                                                                                                    || ||",
    };
    EXPECT_EQ(loQueAnota([] { dispar()->Print_Servicio(7); }), esperado);
}

TEST(Volcados, AServiceWithPIDsEndsWithItsClosingLine) {
    const auto s = dispar();
    s->addPID_AlServicio(std::make_unique<tRec_PID>(20, 1, 2, 3, "eng", 7, 1));
    const auto visto = loQueAnota([&] { s->Print_Servicio(1); });
    const auto pids = loQueAnota([&] { s->Print_MapaPIDs(); });
    ASSERT_EQ(visto.size(), 7 + pids.size() + 1);
    EXPECT_EQ(Lineas(visto.begin() + 7, visto.end() - 1), pids);
    EXPECT_EQ(
        visto.back(),
        "7 || ||                                                                                                    || ||");
}

TEST(Volcados, ACloneShowsItsParent) {
    const auto s = dispar();
    s->Parent_SID = 65535;
    const auto visto = loQueAnota([&] { s->Print_Servicio(7); });
    ASSERT_EQ(visto.size(), 11u);
    EXPECT_EQ(
        visto[0],
        "7 || ||                                                                                                    || || ");
    EXPECT_EQ(
        visto[1],
        "7 || ||                                   [ -7- ] ---> Parent_SID: 65535                                     || ||");
    EXPECT_EQ(
        visto[2],
        "7 || ||   NombreEntrada: Entra  --> NombreSalida:Sale   --> NombreForzado: 116  Tipo 111    VideoFormatE: 112                             || ||");
}

TEST(Volcados, ATranscodedServiceSaysSo) {
    const auto s = dispar();
    s->Transcoding = 1;
    const auto visto = loQueAnota([&] { s->Print_Servicio(7); });
    ASSERT_EQ(visto.size(), 12u);
    EXPECT_EQ(
        visto[1],
        "7 || ||                                           [ -7- ]                                                  || ||");
    EXPECT_EQ(
        visto[2],
        "7 || ||········································TRANSCODING ACTIVADO········································|| ||");
    EXPECT_EQ(
        visto[3],
        "7 || ||   NombreEntrada: Entra  --> NombreSalida:Sale   --> NombreForzado: 116  Tipo 111    VideoFormatE: 112                             || ||");
}

TEST(Volcados, OtherTranscodingValuesAreNotAnnounced) {
    const auto s = dispar();
    const auto sinTranscoding = loQueAnota([&] { s->Print_Servicio(7); });
    s->Transcoding = 2;
    EXPECT_EQ(loQueAnota([&] { s->Print_Servicio(7); }), sinTranscoding);
}

TEST(Volcados, BitratesAndKeysArePrintedAsSigned32BitNumbers) {
    const auto s = dispar();
    s->idService = -5;
    s->peakBitRate = 4294966296u;
    s->videoPeakBitRate = 4294967295u;
    const auto visto = loQueAnota([&] { s->Print_Servicio(1); });
    EXPECT_EQ(visto[3], "7 || ||   idService: -5  --> OSID:101   --> SID: 102 || ||");
    EXPECT_EQ(
        visto[4],
        "7 || ||   Descifrar: 106 --> Nº PIDs CA:107 / 108 --> LCN: 122 --> SimulcastLCN: 105 --> PeakBitarte: -1000       || ||");
    EXPECT_EQ(
        visto[5],
        "7 || ||   Video Peak BitRate: -1                                                                            || ||");
}

TEST(Volcados, AnInputPrintsItsFrame) {
    tRec_Entrada entrada(65535);
    entrada.confEntrada(5, 7);
    const Lineas esperado = {
        "7 ||                                                                                                          ||",
        "7 || -------------------------------------------------------------------------------------------------------- ||",
        "7 || --                                                                                                    -- ||",
        "7 || --               [ENTRADA 65535] TSID: 5  --> ONID:7\t\t\t\t\t\t  -- ||",
        "7 || --                                                                                                    -- ||",
        "7 || -------------------------------------------------------------------------------------------------------- ||",
    };
    EXPECT_EQ(loQueAnota([&] { entrada.Print_Entrada(); }), esperado);
}

TEST(Volcados, AnInputPrintsItsShortFrame) {
    tRec_Entrada entrada(3);
    entrada.confEntrada(5, 7);
    entrada.addServicioALaEntrada(servicio(1));
    const Lineas esperado = {
        "7     ---------------------------------------------------------------------------------------------------------",
        "7     --                                                                                                     --",
        "7     --               [ENTRADA 3] TSID: 5  --> ONID:7                                                    --",
        "7     --                                                                                                     --",
        "7     ---------------------------------------------------------------------------------------------------------",
    };
    EXPECT_EQ(loQueAnota([&] { entrada.Print_Info_Entrada(); }), esperado);
}

TEST(Volcados, AnInputNumbersItsServicesInTheOrderOfTheirKeys) {
    tRec_Entrada entrada(1);
    const auto alto = servicio(9);
    const auto bajo = servicio(4);
    const auto igual = servicio(4);
    igual->NombreEntrada = "otro";
    entrada.addServicioALaEntrada(alto);
    entrada.addServicioALaEntrada(bajo);
    entrada.addServicioALaEntrada(igual);
    const auto esperado = loQueAnota([&] {
        bajo->Print_Servicio(1);
        igual->Print_Servicio(2);
        alto->Print_Servicio(3);
    });
    EXPECT_EQ(loQueAnota([&] { entrada.Print_MapaServicios(); }), esperado);
}

TEST(Volcados, AnInputPrintsItsServicesAfterItsFrame) {
    tRec_Entrada entrada(1);
    const auto marco = loQueAnota([&] { entrada.Print_Entrada(); });
    entrada.addServicioALaEntrada(servicio(4));
    const auto servicios = loQueAnota([&] { entrada.Print_MapaServicios(); });
    EXPECT_EQ(servicios.size(), 11u);
    EXPECT_EQ(loQueAnota([&] { entrada.Print_Entrada(); }), juntas(marco, servicios));
}

TEST(Volcados, InputsAndOutputsWithoutServicesPrintNoService) {
    EXPECT_TRUE(loQueAnota([] { tRec_Entrada(1).Print_MapaServicios(); }).empty());
    EXPECT_TRUE(loQueAnota([] { tRec_Salida(1, 512).Print_MapaServicios(); }).empty());
}

TEST(Volcados, AnOutputPrintsItsFrame) {
    tRec_Salida salida(65535, 512);
    salida.confSalida(38000);
    salida.BitRateActual = 12345;
    const Lineas esperado = {
        "7 ||                                                                                                          ||",
        "7 || $$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$ ||",
        "7 || $$                                                                                                    $$ ||",
        "7 || $$                              [SALIDA 65535] BitRateMax: 38000  --> BitRate Actual:12345\t\t  $$ ||",
        "7 || $$                                                                                                    $$ ||",
        "7 || $$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$ ||",
    };
    EXPECT_EQ(loQueAnota([&] { salida.Print_Salida(); }), esperado);
}

TEST(Volcados, AnOutputPrintsItsShortFrame) {
    tRec_Salida salida(3, 512);
    salida.confSalida(38000);
    salida.addServicioALaSalida(servicio(1));
    const Lineas esperado = {
        "7              $$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$",
        "7              $$                                                                                                      $$",
        "7              $$                              [SALIDA 3] BitRateMax: 38000  --> BitRate Actual:1000                       $$",
        "7              $$                                                                                                      $$",
        "7              $$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$$",
    };
    EXPECT_EQ(loQueAnota([&] { salida.Print_Info_Salida(); }), esperado);
}

TEST(Volcados, AnOutputPrintsItsBitratesAsSigned32BitNumbers) {
    tRec_Salida salida(3, 512);
    salida.confSalida(4294967295u);
    salida.BitRateActual = 4294966296u;
    const auto larga = loQueAnota([&] { salida.Print_Salida(); });
    EXPECT_EQ(
        larga[3],
        "7 || $$                              [SALIDA 3] BitRateMax: -1  --> BitRate Actual:-1000\t\t  $$ ||");
    const auto corta = loQueAnota([&] { salida.Print_Info_Salida(); });
    EXPECT_EQ(
        corta[2],
        "7              $$                              [SALIDA 3] BitRateMax: -1  --> BitRate Actual:-1000                       $$");
}

TEST(Volcados, AnOutputNumbersItsServicesInTheOrderOfTheirKeys) {
    tRec_Salida salida(1, 512);
    const auto marco = loQueAnota([&] { salida.Print_Salida(); });
    const auto alto = servicio(9);
    const auto bajo = servicio(4);
    salida.addServicioALaSalida(alto);
    salida.addServicioALaSalida(bajo);
    salida.BitRateActual = 0; // as in the frame above
    const auto servicios = loQueAnota([&] {
        bajo->Print_Servicio(1);
        alto->Print_Servicio(2);
    });
    EXPECT_EQ(loQueAnota([&] { salida.Print_MapaServicios(); }), servicios);
    EXPECT_EQ(loQueAnota([&] { salida.Print_Salida(); }), juntas(marco, servicios));
}

TEST(Volcados, AModuleWithoutInputsAndOutputsPrintsItsFrameOnly) {
    tRec_Modulo modulo("00:01:02");
    modulo.PIDsModuloMax = 65535;
    modulo.PIDsModulo = 12;
    const Lineas esperado = {
        "7 ||__________________________________________________________________________________________________________||",
        "7 ||__________________________________________________________________________________________________________||",
        "7 || #######################################################################################################  ||",
        "7 || ##                                                                                                   ##  ||",
        "7 || ##\t\t\t\t[ MAC: 00:01:02 ]  --> Modelo:99               \t\t\t\t ##  ||",
        "7 || ##\t\t\t\tPID_Max:65535  --> PIDs Actual:12 \t\t\t\t\t\t ##  ||",
        "7 || ##\t\t\t\tNº Entradas: 0  --> Nº Salidas 0 \t\t\t\t\t ##  ||",
        "7 || ##                                                                                                   ##  ||",
        "7 || #######################################################################################################  ||",
    };
    EXPECT_EQ(loQueAnota([&] { modulo.Print_Modulo(); }), esperado);
}

TEST(Volcados, AModulePrintsItsShortFrame) {
    fabrica::DatosModulo datos;
    datos.mac = "00:01:02";
    tRec_Modulo modulo = fabrica::modulo(datos);
    modulo.PIDsModulo = 12;
    const Lineas esperado = {
        "7     ~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~",
        "7     ~~                                                                                                     ~~",
        "7     ~~               [ MAC: 00:01:02 ]  --> Modelo:3  --> PID_Max:100  --> PIDs Actual:12\t                       ~~",
        "7     ~~                                                                                                     ~~",
        "7     ~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~",
    };
    EXPECT_EQ(loQueAnota([&] { modulo.Print_Info_Modulo(); }), esperado);
}

TEST(Volcados, AModulePrintsItsFrameItsInputsAndItsOutputs) {
    fabrica::DatosModulo datos;
    datos.entradas = 2;
    datos.salidas = {10000, 20000, 30000};
    tRec_Modulo modulo = fabrica::modulo(datos);
    modulo.addService(servicio(5), 2, 3);
    const auto entradas = loQueAnota([&] { modulo.Print_MapaEntradas(); });
    const auto salidas = loQueAnota([&] { modulo.Print_MapaSalidas(); });
    const Lineas marco = {
        "7 ||__________________________________________________________________________________________________________||",
        "7 ||__________________________________________________________________________________________________________||",
        "7 || #######################################################################################################  ||",
        "7 || ##                                                                                                   ##  ||",
        "7 || ##\t\t\t\t[ MAC: A ]  --> Modelo:3               \t\t\t\t ##  ||",
        "7 || ##\t\t\t\tPID_Max:100  --> PIDs Actual:0 \t\t\t\t\t\t ##  ||",
        "7 || ##\t\t\t\tNº Entradas: 2  --> Nº Salidas 3 \t\t\t\t\t ##  ||",
        "7 || ##                                                                                                   ##  ||",
        "7 || #######################################################################################################  ||",
    };
    EXPECT_EQ(loQueAnota([&] { modulo.Print_Modulo(); }), juntas(juntas(marco, entradas), salidas));
}

TEST(Volcados, AModulePrintsItsInputsWithTheirServicesByNumber) {
    fabrica::DatosModulo datos;
    datos.entradas = 2;
    tRec_Modulo modulo = fabrica::modulo(datos);
    modulo.addService(servicio(5), 1, 1);
    const auto esperado = loQueAnota([&] {
        modulo.mapEntradas.at(1).Print_Entrada();
        modulo.mapEntradas.at(2).Print_Entrada();
    });
    EXPECT_EQ(esperado.size(), 6u + 11u + 6u);
    EXPECT_EQ(loQueAnota([&] { modulo.Print_MapaEntradas(); }), esperado);
}

TEST(Volcados, AModulePrintsItsOutputsWithTheirServicesByNumber) {
    fabrica::DatosModulo datos;
    datos.salidas = {10000, 20000};
    tRec_Modulo modulo = fabrica::modulo(datos);
    modulo.addService(servicio(5), 1, 1);
    const auto esperado = loQueAnota([&] {
        modulo.mapSalidas.at(1).Print_Salida();
        modulo.mapSalidas.at(2).Print_Salida();
    });
    EXPECT_EQ(esperado.size(), 6u + 11u + 6u);
    EXPECT_EQ(loQueAnota([&] { modulo.Print_MapaSalidas(); }), esperado);
}

} // namespace Volcados_test
