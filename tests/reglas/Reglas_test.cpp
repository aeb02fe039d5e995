// Each rule at its limit, and where two ways to test one limit part.

#include "Reglas.h"

#include <vector>

#include <gtest/gtest.h>

using namespace zarven::reglas;

namespace {

constexpr std::uint32_t TODO = 0xFFFFFFFFU;

TEST(ReglasTechos, ALoadStaysUnderANumberMayReach) {
    EXPECT_TRUE(bajoTecho(37999, 38000));
    EXPECT_FALSE(bajoTecho(38000, 38000));
    EXPECT_FALSE(bajoTecho(38001, 38000));
    EXPECT_TRUE(hastaTecho(511, 512));
    EXPECT_TRUE(hastaTecho(512, 512));
    EXPECT_FALSE(hastaTecho(513, 512));
    for (const auto regla : {bajoTecho, hastaTecho})
        EXPECT_FALSE(regla(std::uint64_t{1} << 32, 512)) << "nothing wraps";
}

TEST(ReglasBitrate, PlacingStaysUnderTheCeiling) {
    EXPECT_TRUE(cabeBitrate(30000, 7999, 38000));
    EXPECT_FALSE(cabeBitrate(30000, 8000, 38000));
    EXPECT_FALSE(cabeBitrate(0, 0, 0));
    EXPECT_TRUE(cabeBitrate(TODO, 2, 2)) << "the sum wraps to 1";
}

TEST(ReglasBitrate, BookingOnACopyTakesAnythingBeyondTheCeiling) {
    for (const std::uint32_t pedido : {7999U, 8000U})
        EXPECT_EQ(cabeBitratePorResto(30000, pedido, 38000), cabeBitrate(30000, pedido, 38000));
    EXPECT_TRUE(cabeBitratePorResto(38001, 50000, 38000));
    EXPECT_FALSE(cabeBitrate(38001, 50000, 38000));
}

TEST(ReglasBitrate, WhatIsLackingIsTheLeastThatMakesItFit) {
    EXPECT_EQ(faltaBitrate(30000, 7999, 38000), 0U);
    EXPECT_EQ(faltaBitrate(30000, 1000, 38000), 0U);
    EXPECT_EQ(faltaBitrate(30000, 8000, 38000), 1U);
    EXPECT_EQ(faltaBitrate(30000, 9000, 38000), 1001U);
    EXPECT_EQ(faltaBitrate(TODO, 0, 0), std::uint64_t{1} << 32);
}

TEST(ReglasBitrate, NoMoreComesFreeThanIsCarried) {
    EXPECT_TRUE(puedeLiberarse(999, 1000, 38000));
    EXPECT_TRUE(puedeLiberarse(1000, 1000, 38000));
    EXPECT_FALSE(puedeLiberarse(1001, 1000, 38000));
    EXPECT_TRUE(puedeLiberarse(1, 1, 1));
    EXPECT_FALSE(puedeLiberarse(1, 1, 0)) << "an output without ceiling takes nothing";
    EXPECT_TRUE(puedeLiberarse(0, 0, 0)) << "nothing is lacking";
}

TEST(ReglasBitrate, TheLargestLoadFitsAndOneMoreDoesNot) {
    EXPECT_TRUE(bajoTecho(cargaMaxima(38000), 38000));
    EXPECT_FALSE(bajoTecho(cargaMaxima(38000) + 1, 38000));
    EXPECT_EQ(cargaMaxima(0), 0U);
    EXPECT_EQ(techoPara(cargaMaxima(38000)), 38000U);
    EXPECT_EQ(cargaMaxima(static_cast<std::uint32_t>(techoPara(0))), 0U);
    EXPECT_EQ(techoPara(TODO), std::uint64_t{1} << 32) << "no ceiling allows it";
}

TEST(ReglasBitrate, AnExchangeThatLeavesLessThanNothingFails) {
    EXPECT_TRUE(bastaBitrateAlPermutar(5000, 3000, 4000, 4001));
    EXPECT_FALSE(bastaBitrateAlPermutar(5000, 3000, 4000, 4000));
    EXPECT_FALSE(bastaBitrateAlPermutar(0, 1, 2, 38000));
}

TEST(ReglasBitrate, RoomIsMoreThanTheMargin) {
    EXPECT_TRUE(sobraBitrate(31999, 38000));
    EXPECT_FALSE(sobraBitrate(32000, 38000));
    EXPECT_FALSE(sobraBitrate(0, 6000));
    EXPECT_TRUE(sobraBitrate(50000, 5999)) << "the ceiling less the margin wraps";
}

TEST(ReglasBitrate, GatheringComparesWithSign) {
    EXPECT_TRUE(bastaConSigno(38000, 38000));
    EXPECT_FALSE(bastaConSigno(38000, 38001));
    EXPECT_TRUE(bastaConSigno(38000, 0x80000000U)) << "a sum below zero";
    EXPECT_FALSE(bastaConSigno(0x80000000U, 0));
}

TEST(ReglasServicios, OneMoreUpToTheNumber) {
    EXPECT_TRUE(cabeOtroServicio(511, 512));
    EXPECT_FALSE(cabeOtroServicio(512, 512));
}

TEST(ReglasPIDs, TheBudgetMayBeReached) {
    EXPECT_TRUE(cabenPIDs(5, 3, 8));
    EXPECT_FALSE(cabenPIDs(5, 4, 8));
    EXPECT_FALSE(cabenPIDs(65535, 1, 65535)) << "the sum does not wrap";
    EXPECT_TRUE(sobranPIDs(7, 8));
    EXPECT_FALSE(sobranPIDs(8, 8));
}

TEST(ReglasPIDs, WhatIsLackingIsTheLeastThatMakesItFit) {
    EXPECT_EQ(faltanPIDs(5, 3, 8), 0U);
    EXPECT_EQ(faltanPIDs(5, 4, 8), 1U);
    EXPECT_EQ(faltanPIDs(65535, 65535, 0), 131070U);
}

TEST(ReglasPIDs, AnExchangeMayEndAtNothingLeft) {
    EXPECT_EQ(pidsLibres(10, 8), -2);
    EXPECT_TRUE(bastanPIDsAlPermutar(pidsLibres(10, 8), 5, 3));
    EXPECT_FALSE(bastanPIDsAlPermutar(pidsLibres(10, 8), 5, 4));
}

TEST(ReglasTranscoders, OneHDBringsTheHDCeiling) {
    EXPECT_TRUE(quedaTranscoder(1, 0, 2, 0));
    EXPECT_FALSE(quedaTranscoder(2, 0, 2, 9));
    EXPECT_TRUE(quedaTranscoder(2, 1, 2, 4));
    EXPECT_FALSE(quedaTranscoder(2, 2, 9, 4));
    EXPECT_FALSE(quedaTranscoder(65535, 65535, 65535, 65535)) << "the sum does not wrap";
}

TEST(ReglasTranscoders, WhatIsLackingIsTheLeastThatLeavesOne) {
    EXPECT_TRUE(quedaTranscoder(1, 2));
    EXPECT_FALSE(quedaTranscoder(2, 2));
    EXPECT_EQ(faltanTranscoders(1, 2), 0U);
    EXPECT_EQ(faltanTranscoders(2, 2), 1U);
    EXPECT_EQ(faltanTranscoders(3, 2), 2U);
    EXPECT_EQ(faltanTranscoders(TODO, 0), std::uint64_t{1} << 32);
}

TEST(ReglasTranscoders, AnEmptyModuleComesToTheLargerCeilingIfOneCanBegin) {
    EXPECT_EQ(masTranscoders(2, 1), 2);
    EXPECT_EQ(masTranscoders(1, 2), 2);
    EXPECT_EQ(masTranscoders(0, 2), 0);
}

TEST(ReglasTranscoders, OnlyOneTakesATranscoderEveryOtherValueIsOfTheKind) {
    EXPECT_FALSE(ocupaTranscoder(0) || necesitaTranscoding(0));
    EXPECT_TRUE(ocupaTranscoder(1) && necesitaTranscoding(1));
    EXPECT_TRUE(!ocupaTranscoder(2) && necesitaTranscoding(2));
}

TEST(ReglasTranscoders, ACloneOfTheKindTakesAnAUXOne) {
    EXPECT_TRUE(cabeClon(0, 1, 1));
    EXPECT_TRUE(cabeClon(2, 0, 1));
    EXPECT_FALSE(cabeClon(2, 1, 1));
}

TEST(ReglasEntradas, ANumberOrBoth) {
    EXPECT_FALSE(conAlgunNumero(0, 0));
    EXPECT_TRUE(conAlgunNumero(0, 7));
    EXPECT_FALSE(conAmbosNumeros(0, 7));
    EXPECT_FALSE(conAmbosNumeros(1, 0));
    EXPECT_TRUE(conAmbosNumeros(1, 7));
    EXPECT_TRUE(esStream(1, 7, 1, 7));
    EXPECT_FALSE(esStream(1, 7, 7, 1));
}

TEST(ReglasEleccion, AKeyIsPositiveFromOneOn) {
    EXPECT_FALSE(esClavePositiva(-1));
    EXPECT_FALSE(esClavePositiva(0));
    EXPECT_TRUE(esClavePositiva(1));
}

TEST(ReglasEleccion, WhatCountsDependsOnWhatIsLeft) {
    for (const long clave : {-1L, 0L}) {
        EXPECT_FALSE(cuentaParaElegir(clave, 0, {true, false, false}));
        EXPECT_TRUE(cuentaParaElegir(clave, 0, {false, false, false}));
    }
    EXPECT_TRUE(cuentaParaElegir(1, 0, {true, true, false}));
    EXPECT_TRUE(cuentaParaElegir(1, 1, {true, true, true}));
    EXPECT_FALSE(cuentaParaElegir(1, 0, {true, true, true}));
    EXPECT_FALSE(cuentaParaElegir(1, 2, {true, true, true}));
    EXPECT_TRUE(cuentaParaElegir(1, 2, {true, false, true}));
}

TEST(ReglasEleccion, ServicesWithoutTranscodingRideAlong) {
    EXPECT_TRUE(entraEnRelleno(0, true));
    EXPECT_TRUE(entraEnRelleno(0, false));
    EXPECT_TRUE(entraEnRelleno(1, true));
    EXPECT_FALSE(entraEnRelleno(1, false));
    EXPECT_FALSE(entraEnRelleno(2, true));
}

TEST(ReglasEstrategias, AreCalledAsTheyAreLogged) {
    std::vector<std::string_view> nombres;
    for (const Estrategia& estrategia : ESTRATEGIAS) {
        nombres.push_back(estrategia.nombre);
        EXPECT_EQ(std::string_view(rotulo(estrategia).data()).size(), ANCHO_ROTULO);
    }
    EXPECT_EQ(nombres, (std::vector<std::string_view>{"MAX", "MAX MIN", "MIN", "MIN MAX"}));
    EXPECT_STREQ(rotulo(ESTRATEGIAS[1]).data(),
                 "BEGIN OPTION: MAX MIN ------------------------------------------------->");
}

TEST(ReglasEstrategias, ALineAnnouncesOneOfThem) {
    EXPECT_TRUE(anuncia("BEGIN OPTION: MAX --", ESTRATEGIAS[0]));
    EXPECT_FALSE(anuncia("BEGIN OPTION: MAX --", ESTRATEGIAS[1]));
    EXPECT_FALSE(anuncia("BEGIN OPTION: MAX MIN --", ESTRATEGIAS[0]));
    EXPECT_FALSE(anuncia("BEGIN OPTION: MAX", ESTRATEGIAS[0]));
    EXPECT_FALSE(anuncia("END OPTION: MAX --", ESTRATEGIAS[0]));
    EXPECT_FALSE(anuncia("", ESTRATEGIAS[0]));
}

TEST(ReglasEstrategias, TheOneThatLeavesFewerOutIsBetter) {
    EXPECT_EQ(comparar(4, 5), Comparacion::mejor);
    EXPECT_EQ(comparar(5, 5), Comparacion::igual);
    EXPECT_EQ(comparar(6, 5), Comparacion::peor);
}

TEST(ReglasEstrategias, TheMixedOnesTellTwoInputsApart) {
    const auto modos = [](char opcion) {
        return std::array<char, 4>{modoDeEntrada(opcion, 1), modoDeEntrada(opcion, 2),
                                   modoDeEntrada(opcion, 3), modoDeEntrada(opcion, 0)};
    };
    EXPECT_EQ(modos(1), (std::array<char, 4>{MODO_MAX, MODO_MAX, MODO_MAX, MODO_MAX}));
    EXPECT_EQ(modos(2), (std::array<char, 4>{MODO_MAX, MODO_MIN, NO_SE_OFRECE, NO_SE_OFRECE}));
    EXPECT_EQ(modos(3), (std::array<char, 4>{MODO_MIN, MODO_MIN, MODO_MIN, MODO_MIN}));
    EXPECT_EQ(modos(4), (std::array<char, 4>{MODO_MIN, MODO_MAX, NO_SE_OFRECE, NO_SE_OFRECE}));
    for (const char opcion : {'\0', '\5', '\xff'})
        EXPECT_EQ(modos(opcion), (std::array<char, 4>{}));
}

TEST(ReglasRegistros, TheFirstTestThatFailsIsTheLimit) {
    EXPECT_EQ(primerLimite(false, false, false, false), Limite::servicios);
    EXPECT_EQ(primerLimite(true, false, false, false), Limite::bitrate);
    EXPECT_EQ(primerLimite(true, true, false, false), Limite::PIDs);
    EXPECT_EQ(primerLimite(true, true, true, false), Limite::transcoders);
    EXPECT_EQ(primerLimite(true, true, true, true), Limite::ninguno);
}

TEST(ReglasRegistros, ATakenKeyMakesAClone) {
    zarven::tMapaONIDs indice;
    indice[1].MapRec_TSIDs[2].MapRec_Services.emplace(7, nullptr);
    EXPECT_TRUE(esClonAlCargar(indice, 1, 2, 7));
    for (const long clave : {6L, 8L})
        EXPECT_FALSE(esClonAlCargar(indice, 1, 2, clave));
    EXPECT_FALSE(esClonAlCargar(indice, 2, 2, 7)) << "another network";
    EXPECT_FALSE(esClonAlCargar(indice, 1, 1, 7)) << "another stream";
}

// On a record and on its numbers the answer is the same.
TEST(ReglasRegistros, TakeTheFieldsOfTheRule) {
    zarven::tRec_Modulo modulo("A");
    modulo.PIDsModulo = 5;
    modulo.PIDsModuloMax = 8;
    zarven::tRec_Salida salida(1, 2);
    salida.BitRateMax = 38000;
    salida.BitRateActual = 30000;
    salida.NumServicios = 1;
    zarven::tRec_Servicio servicio;
    servicio.peakBitRate = 7999;
    servicio.number_PIDs_CA = 3;
    EXPECT_TRUE(cabe(modulo, salida, servicio));
    EXPECT_TRUE(cabePorResto(salida, servicio));
    EXPECT_TRUE(tieneSitio(salida));

    salida.NumServicios = 2;
    EXPECT_FALSE(cabe(modulo, salida, servicio) || cabePorResto(salida, servicio) || tieneSitio(salida));
    salida.NumServicios = 1;
    servicio.peakBitRate = 8000;
    EXPECT_FALSE(cabe(modulo, salida, servicio) || cabePorResto(salida, servicio));
    servicio.peakBitRate = 7999;
    servicio.number_PIDs_CA = 4;
    EXPECT_FALSE(cabe(modulo, salida, servicio));
    EXPECT_TRUE(cabePorResto(salida, servicio)) << "booking does not ask the module";
    salida.BitRateActual = 32000;
    EXPECT_FALSE(tieneSitio(salida));
}

TEST(ReglasRegistros, AnInputIsTunedThatHasANumberOrAService) {
    zarven::tRec_Entrada entrada(1);
    EXPECT_FALSE(sintonizada(entrada));
    entrada.confEntrada(7, 0);
    EXPECT_TRUE(sintonizada(entrada));
    entrada.confEntrada(0, 7);
    EXPECT_TRUE(sintonizada(entrada));
    entrada.confEntrada(0, 0);
    entrada.MapaServicios.emplace(0, nullptr);
    EXPECT_TRUE(sintonizada(entrada)) << "0 and 0 may be a stream";
}

TEST(ReglasRegistros, TheParentIsKnownByItsOSID) {
    zarven::tRec_Servicio padre;
    padre.SID = 7;
    padre.OSID = 9;
    zarven::tRec_Servicio clon;
    clon.Parent_SID = 7;
    EXPECT_FALSE(esPadre(padre, clon));
    padre.OSID = 7;
    EXPECT_TRUE(esPadre(padre, clon));
}

} // namespace
