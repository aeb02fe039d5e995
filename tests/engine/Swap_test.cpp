#include "tRecalculo.h"

#include <gtest/gtest.h>

#include "support/Fabrica.h"
#include "support/Registro.h"

namespace Swap_test {

using namespace zarven;

namespace {

using Lineas = std::vector<std::string>;

const std::string ANUNCIO =
    "7 SWAP: Primero tenemos que comprobar que son el mismo modelo y tienes las mismas entradas y salidas";
const std::string SEGUNDA_MITAD = "7 SWAP: finalmente copiamos de modulo aux a modulo 2";
const std::string LIMPIEZA = "7 SWAP: Hacemos clear de los maps del modulo_aux para que no nos borre los "
                             "servicios, ya que son punteros y el destructor los liberaria";
const std::string HECHO = "7 SWAP: RETURN_OK";
// The refusal of two modules of different kinds ends with a blank, that of an output without partner does
// not.
const std::string DISTINTOS = "7 SWAP: ERROR_MODULOS_NO_COMPATIBLES ";
const std::string SIN_PAREJA = "7 SWAP: ERROR_MODULOS_NO_COMPATIBLES";

tRec_Modulo modulo(const std::string& mac, const std::vector<unsigned long>& salidas = {10000, 20000},
                   unsigned short entradas = 2) {
    fabrica::DatosModulo datos;
    datos.mac = mac;
    datos.entradas = entradas;
    datos.salidas = salidas;
    tRec_Modulo nuevo = fabrica::modulo(datos);
    registro::vaciar();
    return nuevo;
}

// Tunes an input to network 7 and puts a service on it and on an output.
std::shared_ptr<tRec_Servicio> poner(tRec_Modulo& m, unsigned short clave, unsigned short tsid,
                                     unsigned short entrada, std::uint32_t salida, unsigned short pids = 1) {
    fabrica::DatosServicio datos;
    datos.clave = clave;
    datos.onid = 7;
    datos.tsid = tsid;
    datos.pids = pids;
    const auto s = fabrica::servicio(datos);
    m.mapEntradas.at(entrada).confEntrada(tsid, 7);
    m.mapEntradas.at(entrada).MapaServicios.emplace(clave, s);
    tRec_Salida& destino = m.mapSalidas.at(salida);
    destino.MapaServicios.emplace(clave, s);
    destino.BitRateActual += 1000;
    ++destino.NumServicios;
    m.PIDsModulo = static_cast<unsigned short>(m.PIDsModulo + pids);
    return s;
}

std::vector<long> claves(const tMapaServicios& servicios) {
    std::vector<long> todas;
    for (const auto& [clave, s] : servicios)
        todas.push_back(clave);
    return todas;
}

using Claves = std::vector<long>;

void esperarRechazo(tRec_Modulo& uno, tRec_Modulo& otro) {
    const auto s = poner(uno, 1, 50, 1, 1);
    registro::vaciar();
    EXPECT_EQ(tRecalculo().swapModulos(uno, otro), tRecalculo::ERROR_MODULOS_NO_COMPATIBLES);
    EXPECT_EQ(registro::hechos(), (Lineas{ANUNCIO, DISTINTOS}));
    EXPECT_EQ(uno.PIDsModulo, 1);
    EXPECT_EQ(uno.mapEntradas.at(1).TSID, 50);
    EXPECT_EQ(uno.mapSalidas.at(1).NumServicios, 1u);
    EXPECT_EQ(otro.PIDsModulo, 0);
    EXPECT_EQ(s.use_count(), 3);
}

} // namespace

TEST(Swap, SwapsWhatTwoModulesCarry) {
    tRec_Modulo a = modulo("A");
    tRec_Modulo b = modulo("B");
    poner(a, 1, 50, 1, 1, 2);
    poner(a, 2, 50, 1, 2, 3);
    poner(b, 3, 60, 2, 1, 4);
    EXPECT_EQ(tRecalculo().swapModulos(a, b), tRecalculo::RETURN_OK);

    EXPECT_EQ(a.PIDsModulo, 4);
    EXPECT_EQ(a.mapEntradas.at(1).ONID, 0);
    EXPECT_EQ(a.mapEntradas.at(1).TSID, 0);
    EXPECT_TRUE(a.mapEntradas.at(1).MapaServicios.empty());
    EXPECT_EQ(a.mapEntradas.at(2).ONID, 7);
    EXPECT_EQ(a.mapEntradas.at(2).TSID, 60);
    EXPECT_EQ(claves(a.mapEntradas.at(2).MapaServicios), Claves{3});
    EXPECT_EQ(claves(a.mapSalidas.at(1).MapaServicios), Claves{3});
    EXPECT_TRUE(a.mapSalidas.at(2).MapaServicios.empty());
    EXPECT_EQ(a.mapSalidas.at(2).BitRateActual, 0u);
    EXPECT_EQ(a.mapSalidas.at(2).NumServicios, 0u);

    EXPECT_EQ(b.PIDsModulo, 5);
    EXPECT_EQ(b.mapEntradas.at(1).ONID, 7);
    EXPECT_EQ(b.mapEntradas.at(1).TSID, 50);
    EXPECT_EQ(claves(b.mapEntradas.at(1).MapaServicios), (Claves{1, 2}));
    EXPECT_EQ(b.mapEntradas.at(2).TSID, 0);
    EXPECT_TRUE(b.mapEntradas.at(2).MapaServicios.empty());
    EXPECT_EQ(claves(b.mapSalidas.at(1).MapaServicios), Claves{1});
    EXPECT_EQ(claves(b.mapSalidas.at(2).MapaServicios), Claves{2});
    EXPECT_EQ(b.mapSalidas.at(2).BitRateActual, 1000u);
    EXPECT_EQ(b.mapSalidas.at(2).NumServicios, 1u);
}

TEST(Swap, LogsTheWholeOfIt) {
    tRec_Modulo a = modulo("A");
    tRec_Modulo b = modulo("B");
    tRecalculo().swapModulos(a, b);
    EXPECT_EQ(registro::hechos(), (Lineas{ANUNCIO, SEGUNDA_MITAD, LIMPIEZA, HECHO}));
}

TEST(Swap, ModulesKeepTheirIdentity) {
    tRec_Modulo a = modulo("A", {10000, 20000});
    tRec_Modulo b = modulo("B", {20000, 10000});
    a.Controlador = true;
    tRec_Modulo* const dueno = a.mapEntradas.at(1).pModulo;
    tRecalculo().swapModulos(a, b);
    EXPECT_EQ(a.MAC, "A");
    EXPECT_TRUE(a.Controlador);
    EXPECT_EQ(a.Modelo, 3);
    EXPECT_EQ(a.PIDsModuloMax, 100);
    EXPECT_EQ(a.mapEntradas.at(1).NumEntrada, 1);
    EXPECT_EQ(a.mapEntradas.at(1).pModulo, dueno);
    EXPECT_EQ(a.mapSalidas.at(1).NumSalida, 1);
    EXPECT_EQ(a.mapSalidas.at(1).BitRateMax, 10000u);
    EXPECT_EQ(a.mapSalidas.at(2).BitRateMax, 20000u);
    EXPECT_EQ(a.mapSalidas.at(1).NumServiciosMax, 512u);
    EXPECT_EQ(b.MAC, "B");
    EXPECT_FALSE(b.Controlador);
    EXPECT_EQ(b.mapSalidas.at(1).BitRateMax, 20000u);
    EXPECT_EQ(b.mapSalidas.at(2).BitRateMax, 10000u);
}

TEST(Swap, TranscodersInUseStayWithTheirModule) {
    tRec_Modulo a = modulo("A");
    tRec_Modulo b = modulo("B");
    a.SD_Transcoding = 1;
    a.HD_Transcoding = 2;
    a.AUX_Transcoding = 3;
    a.SD_MAX_Transcoding = 4;
    tRecalculo().swapModulos(a, b);
    EXPECT_EQ(a.SD_Transcoding, 1);
    EXPECT_EQ(a.HD_Transcoding, 2);
    EXPECT_EQ(a.AUX_Transcoding, 3);
    EXPECT_EQ(a.SD_MAX_Transcoding, 4);
    EXPECT_EQ(b.SD_Transcoding, 0);
    EXPECT_EQ(b.HD_Transcoding, 0);
    EXPECT_EQ(b.AUX_Transcoding, 0);
    EXPECT_EQ(b.SD_MAX_Transcoding, 0);
}

TEST(Swap, NoServiceIsLostOrHeldTwice) {
    tRec_Modulo a = modulo("A");
    tRec_Modulo b = modulo("B");
    const auto s = poner(a, 1, 50, 1, 1);
    const auto t = poner(b, 2, 60, 1, 1);
    tRecalculo().swapModulos(a, b);
    EXPECT_EQ(s.use_count(), 3);
    EXPECT_EQ(t.use_count(), 3);
    EXPECT_EQ(b.mapEntradas.at(1).MapaServicios.begin()->second, s);
    EXPECT_EQ(a.mapEntradas.at(1).MapaServicios.begin()->second, t);
}

TEST(Swap, KeepsTheKeysOfTheEntriesAndTheirOrder) {
    tRec_Modulo a = modulo("A");
    tRec_Modulo b = modulo("B");
    const auto s = poner(a, 1, 50, 1, 1);
    const auto t = poner(a, 1, 50, 1, 1);
    s->idService = 99;
    tRecalculo().swapModulos(a, b);
    EXPECT_EQ(claves(b.mapEntradas.at(1).MapaServicios), (Claves{1, 1}));
    EXPECT_EQ(b.mapEntradas.at(1).MapaServicios.begin()->second, s);
    EXPECT_EQ(b.mapSalidas.at(1).MapaServicios.rbegin()->second, t);
}

TEST(Swap, RefusesModulesOfDifferentModels) {
    tRec_Modulo a = modulo("A");
    tRec_Modulo b = modulo("B");
    b.Modelo = 4;
    esperarRechazo(a, b);
}

TEST(Swap, RefusesModulesWithDifferentNumbersOfInputs) {
    tRec_Modulo a = modulo("A");
    tRec_Modulo b = modulo("B", {10000, 20000}, 3);
    esperarRechazo(a, b);
}

TEST(Swap, RefusesModulesWithDifferentNumbersOfOutputs) {
    tRec_Modulo a = modulo("A");
    tRec_Modulo b = modulo("B", {10000, 20000, 30000});
    esperarRechazo(a, b);
}

TEST(Swap, RefusesModulesWithDifferentPIDBudgets) {
    tRec_Modulo a = modulo("A");
    tRec_Modulo b = modulo("B");
    b.PIDsModuloMax = 101;
    esperarRechazo(a, b);
}

TEST(Swap, PairsOutputsByTheirCeiling) {
    tRec_Modulo a = modulo("A", {10000, 20000, 30000});
    tRec_Modulo b = modulo("B", {30000, 10000, 20000});
    poner(a, 1, 50, 1, 1);
    poner(a, 2, 50, 1, 2);
    poner(a, 3, 50, 1, 3);
    poner(b, 11, 60, 1, 1);
    EXPECT_EQ(tRecalculo().swapModulos(a, b), tRecalculo::RETURN_OK);
    EXPECT_EQ(claves(b.mapSalidas.at(1).MapaServicios), Claves{3});
    EXPECT_EQ(claves(b.mapSalidas.at(2).MapaServicios), Claves{1});
    EXPECT_EQ(claves(b.mapSalidas.at(3).MapaServicios), Claves{2});
    EXPECT_EQ(claves(a.mapSalidas.at(3).MapaServicios), Claves{11});
    EXPECT_EQ(a.mapSalidas.at(3).BitRateActual, 1000u);
    EXPECT_EQ(a.mapSalidas.at(3).NumServicios, 1u);
    EXPECT_EQ(a.mapSalidas.at(1).BitRateActual, 0u);
}

TEST(Swap, OutputsWithOneCeilingArePairedOneAfterTheOther) {
    tRec_Modulo a = modulo("A", {10000, 10000});
    tRec_Modulo b = modulo("B", {10000, 10000});
    poner(a, 1, 50, 1, 1);
    poner(a, 2, 50, 1, 2);
    poner(b, 11, 60, 1, 1);
    poner(b, 12, 60, 1, 2);
    EXPECT_EQ(tRecalculo().swapModulos(a, b), tRecalculo::RETURN_OK);
    EXPECT_EQ(claves(a.mapSalidas.at(1).MapaServicios), Claves{11});
    EXPECT_EQ(claves(a.mapSalidas.at(2).MapaServicios), Claves{12});
    EXPECT_EQ(claves(b.mapSalidas.at(1).MapaServicios), Claves{1});
    EXPECT_EQ(claves(b.mapSalidas.at(2).MapaServicios), Claves{2});
}

TEST(Swap, AnInputWithoutCounterpartIsLeftUntouched) {
    tRec_Modulo a = modulo("A");
    tRec_Modulo b = modulo("B");
    b.mapEntradas.erase(2);
    b.mapEntradas.emplace(static_cast<unsigned short>(5), tRec_Entrada(5));
    poner(a, 2, 50, 2, 2);
    poner(b, 11, 60, 1, 1);
    poner(b, 15, 65, 5, 2);
    EXPECT_EQ(tRecalculo().swapModulos(a, b), tRecalculo::RETURN_OK);
    EXPECT_EQ(a.mapEntradas.at(2).TSID, 50);
    EXPECT_EQ(claves(a.mapEntradas.at(2).MapaServicios), Claves{2});
    EXPECT_EQ(b.mapEntradas.at(5).TSID, 65);
    EXPECT_EQ(claves(b.mapEntradas.at(5).MapaServicios), Claves{15});
    EXPECT_EQ(claves(a.mapEntradas.at(1).MapaServicios), Claves{11});
    EXPECT_EQ(claves(a.mapSalidas.at(2).MapaServicios), Claves{15}) << "its output is swapped all the same";
}

TEST(Swap, AnInputBehindOneWithoutCounterpartIsSwapped) {
    tRec_Modulo a = modulo("A");
    tRec_Modulo b = modulo("B");
    b.mapEntradas.erase(1);
    b.mapEntradas.emplace(static_cast<unsigned short>(5), tRec_Entrada(5));
    poner(a, 1, 40, 1, 1);
    poner(a, 2, 50, 2, 2);
    poner(b, 12, 60, 2, 1);
    EXPECT_EQ(tRecalculo().swapModulos(a, b), tRecalculo::RETURN_OK);
    EXPECT_EQ(a.mapEntradas.at(1).TSID, 40);
    EXPECT_EQ(a.mapEntradas.at(2).TSID, 60);
    EXPECT_EQ(b.mapEntradas.at(2).TSID, 50);
}

TEST(Swap, AnOutputWithACeilingOfZeroBehindAnotherLosesItsLoad) {
    // The first output of the other module has a ceiling of zero once it has been taken, and is found again.
    tRec_Modulo a = modulo("A", {10000, 0});
    tRec_Modulo b = modulo("B", {10000, 0});
    poner(a, 1, 40, 1, 1);
    poner(a, 2, 50, 2, 2);
    poner(b, 11, 60, 1, 1);
    poner(b, 12, 70, 2, 2);
    EXPECT_EQ(tRecalculo().swapModulos(a, b), tRecalculo::RETURN_OK);
    EXPECT_EQ(claves(a.mapSalidas.at(1).MapaServicios), Claves{11});
    EXPECT_EQ(claves(a.mapSalidas.at(2).MapaServicios), Claves{});
    EXPECT_EQ(a.mapSalidas.at(2).NumServicios, 0U);
    EXPECT_EQ(a.mapSalidas.at(2).BitRateActual, 0U);
    EXPECT_EQ(claves(b.mapSalidas.at(1).MapaServicios), Claves{1});
    EXPECT_EQ(claves(b.mapSalidas.at(2).MapaServicios), Claves{});
}

TEST(Swap, AnOutputWithoutPartnerLeavesTheFirstModuleHalfSwapped) {
    tRec_Modulo a = modulo("A", {10000, 20000, 30000});
    tRec_Modulo b = modulo("B", {10000, 25000, 30000});
    poner(a, 1, 50, 1, 1);
    poner(a, 3, 50, 1, 3);
    poner(b, 11, 60, 1, 1);
    poner(b, 13, 60, 1, 3);
    EXPECT_EQ(tRecalculo().swapModulos(a, b), tRecalculo::ERROR_MODULOS_NO_COMPATIBLES);
    EXPECT_EQ(registro::hechos(), (Lineas{ANUNCIO, SIN_PAREJA}));
    EXPECT_EQ(a.mapEntradas.at(1).TSID, 60);
    EXPECT_EQ(claves(a.mapEntradas.at(1).MapaServicios), (Claves{11, 13}));
    EXPECT_EQ(claves(a.mapSalidas.at(1).MapaServicios), Claves{11});
    EXPECT_EQ(claves(a.mapSalidas.at(3).MapaServicios), Claves{3}) << "behind the failing one";
    EXPECT_EQ(b.mapEntradas.at(1).TSID, 60);
    EXPECT_EQ(claves(b.mapSalidas.at(1).MapaServicios), Claves{11});
}

TEST(Swap, AFailedPairingHasTakenOverThePIDCounter) {
    tRec_Modulo a = modulo("A", {10000});
    tRec_Modulo b = modulo("B", {20000});
    poner(b, 11, 60, 1, 1, 4);
    tRecalculo().swapModulos(a, b);
    EXPECT_EQ(a.PIDsModulo, 4);
    EXPECT_EQ(b.PIDsModulo, 4);
}

// An output of ceiling 0 is paired with one already spent, so that the second half is where pairing fails.
TEST(Swap, AFailureInTheSecondHalfLeavesTheFirstModuleComplete) {
    tRec_Modulo a = modulo("A", {10000, 0});
    tRec_Modulo b = modulo("B", {10000, 20000});
    poner(a, 1, 50, 1, 1, 2);
    poner(a, 2, 50, 1, 2, 2);
    poner(b, 11, 60, 1, 1, 3);
    EXPECT_EQ(tRecalculo().swapModulos(a, b), tRecalculo::ERROR_MODULOS_NO_COMPATIBLES);
    EXPECT_EQ(registro::hechos(), (Lineas{ANUNCIO, SEGUNDA_MITAD, SIN_PAREJA}));
    EXPECT_EQ(a.PIDsModulo, 3);
    EXPECT_EQ(claves(a.mapSalidas.at(1).MapaServicios), Claves{11});
    EXPECT_TRUE(a.mapSalidas.at(2).MapaServicios.empty());
    EXPECT_EQ(a.mapSalidas.at(2).BitRateActual, 0u);
    EXPECT_EQ(a.mapSalidas.at(2).NumServicios, 0u);
    EXPECT_EQ(b.PIDsModulo, 4);
    EXPECT_EQ(claves(b.mapEntradas.at(1).MapaServicios), (Claves{1, 2}));
    EXPECT_EQ(claves(b.mapSalidas.at(1).MapaServicios), Claves{1});
}

TEST(Swap, TwoModulesWithoutInputsAndOutputsAreSwapped) {
    tRec_Modulo a = modulo("A", {}, 0);
    tRec_Modulo b = modulo("B", {}, 0);
    a.PIDsModulo = 5;
    EXPECT_EQ(tRecalculo().swapModulos(a, b), tRecalculo::RETURN_OK);
    EXPECT_EQ(a.PIDsModulo, 0);
    EXPECT_EQ(b.PIDsModulo, 5);
}

TEST(Swap, TwiceIsNone) {
    tRec_Modulo a = modulo("A");
    tRec_Modulo b = modulo("B");
    poner(a, 1, 50, 1, 1, 2);
    poner(b, 11, 60, 2, 2, 3);
    tRecalculo().swapModulos(a, b);
    tRecalculo().swapModulos(a, b);
    EXPECT_EQ(a.PIDsModulo, 2);
    EXPECT_EQ(a.mapEntradas.at(1).TSID, 50);
    EXPECT_EQ(a.mapEntradas.at(2).TSID, 0);
    EXPECT_EQ(claves(a.mapSalidas.at(1).MapaServicios), Claves{1});
    EXPECT_EQ(claves(b.mapSalidas.at(2).MapaServicios), Claves{11});
}

} // namespace Swap_test
