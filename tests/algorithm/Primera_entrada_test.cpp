// The clean-up at the end of a pass: a module whose input 1 is empty takes over the stream of a later input.

#include <iterator>

#include <gtest/gtest.h>

#include "algorithm/Escena.h"
#include "algorithm/PasadaVista.h"

namespace Primera_entrada_test {

using namespace escena;
using vista::entradas;
using vista::PasadaVista;
using vista::salidas;

namespace {

const std::vector<std::string> VACIA = {"sleep 2", "7 PRIMERA ENTRADA VACIA"};
const std::vector<std::string> SUSTITUIDA = {"sleep 2", "7 PRIMERA ENTRADA VACIA", "sleep 2",
                                             "7 SUSTITUIMOS CON OTRA ENTRADA"};

// A pass that does nothing but the clean-up: no option, nothing unassigned, nothing to unify.
std::vector<std::string> corregir(Escena& e) {
    const PasadaVista r(e.motor, 0, 1);
    EXPECT_EQ(r.camino(), "2 5");
    return r.final();
}

} // namespace

TEST(PrimeraEntrada, TunedIsLeftAloneThoughLaterInputsAreEmpty) {
    Escena e({modulo("A", 3, {20000})});
    e.puesto("A", 1, 1, datos(1, 1));
    e.puesto("A", 3, 1, datos(3, 3));
    EXPECT_TRUE(corregir(e).empty());
    EXPECT_EQ(entradas(e.en("A")), "1/1[1] -[] 1/3[3]");
}

TEST(PrimeraEntrada, TunedWithoutServicesIsLeftAlone) {
    Escena e({modulo("A", 2, {20000})});
    e.sintonizar("A", 1, 1, 1);
    e.puesto("A", 2, 1, datos(2, 2));
    EXPECT_TRUE(corregir(e).empty());
    EXPECT_EQ(entradas(e.en("A")), "1/1[] 1/2[2]");
}

TEST(PrimeraEntrada, EmptyTakesOverTheNextInputThatCarriesServices) {
    Escena e({modulo("A", 2, {20000})});
    e.puesto("A", 2, 1, datos(2, 7));
    e.puesto("A", 2, 1, datos(3, 7));
    EXPECT_EQ(corregir(e), SUSTITUIDA);
    EXPECT_EQ(entradas(e.en("A")), "1/7[2 3] -[]");
}

TEST(PrimeraEntrada, TheFirstInputWithServicesIsTheSubstitute) {
    Escena e({modulo("A", 4, {20000})});
    e.sintonizar("A", 2, 1, 2); // tuned, but carries nothing
    e.puesto("A", 3, 1, datos(3, 3));
    e.puesto("A", 4, 1, datos(4, 4));
    EXPECT_EQ(corregir(e), SUSTITUIDA);
    EXPECT_EQ(entradas(e.en("A")), "1/3[3] 1/2[] -[] 1/4[4]");
}

TEST(PrimeraEntrada, WithoutSubstituteTheModuleIsLeftAsItIs) {
    Escena e({modulo("A", 3, {20000})});
    e.sintonizar("A", 2, 1, 2);
    EXPECT_EQ(corregir(e), VACIA);
    EXPECT_EQ(entradas(e.en("A")), "-[] 1/2[] -[]");
}

TEST(PrimeraEntrada, TheOnlyInputEmptyIsLoggedOnce) {
    Escena e({modulo("A", 1, {20000})});
    EXPECT_EQ(corregir(e), VACIA);
}

TEST(PrimeraEntrada, WithOnidButWithoutTsidCountsAsEmpty) {
    Escena e({modulo("A", 2, {20000})});
    e.sintonizar("A", 1, 5, 0);
    e.puesto("A", 2, 1, datos(2, 2));
    EXPECT_EQ(corregir(e), SUSTITUIDA);
    EXPECT_EQ(entradas(e.en("A")), "1/2[2] -[]");
}

TEST(PrimeraEntrada, WithTsidButWithoutOnidCountsAsEmpty) {
    Escena e({modulo("A", 2, {20000})});
    e.sintonizar("A", 1, 0, 5);
    e.puesto("A", 2, 1, datos(2, 2));
    EXPECT_EQ(corregir(e), SUSTITUIDA);
    EXPECT_EQ(entradas(e.en("A")), "1/2[2] -[]");
}

TEST(PrimeraEntrada, WhatItCarriesStaysBesideTheSubstitutesServices) {
    // A stream without TSID: input 1 carries it and counts as empty. Equal keys are both kept.
    Escena e({modulo("A", 2, {20000})});
    fabrica::DatosServicio sinTsid = datos(2, 0);
    const Servicio estaba = e.puesto("A", 1, 1, sinTsid);
    e.puesto("A", 2, 1, datos(1, 2));
    const Servicio viene = e.puesto("A", 2, 1, datos(2, 2));
    EXPECT_EQ(corregir(e), SUSTITUIDA);
    EXPECT_EQ(entradas(e.en("A")), "1/2[1 2 2] -[]");
    const auto iguales = e.entrada("A", 1).MapaServicios.equal_range(2);
    EXPECT_EQ(iguales.first->second, estaba);
    EXPECT_EQ(std::prev(iguales.second)->second, viene);
}

TEST(PrimeraEntrada, OutputsAndCountersStay) {
    Escena e({modulo("A", 2, {20000, 20000})});
    fabrica::DatosServicio uno = conTranscoding(datos(2, 2, 3000, 4), true);
    e.puesto("A", 2, 2, uno);
    corregir(e);
    EXPECT_EQ(salidas(e.en("A")), "0x0[] 3000x1[2]");
    EXPECT_EQ(e.en("A").PIDsModulo, 4);
    EXPECT_EQ(e.en("A").HD_Transcoding, 1);
    EXPECT_EQ(e.en("A").SD_Transcoding, 0);
}

TEST(PrimeraEntrada, EveryModuleIsLookedAtInOrder) {
    Escena e(
        {modulo("D", 1, {20000}), modulo("C", 2, {20000}), modulo("B", 1, {20000}), modulo("A", 2, {20000})});
    e.puesto("A", 2, 1, datos(1, 1));
    e.puesto("B", 1, 1, datos(2, 2));
    e.puesto("C", 2, 1, datos(3, 3));
    std::vector<std::string> esperado = SUSTITUIDA;                        // A
    esperado.insert(esperado.end(), SUSTITUIDA.begin(), SUSTITUIDA.end()); // C
    esperado.insert(esperado.end(), VACIA.begin(), VACIA.end());           // D
    EXPECT_EQ(corregir(e), esperado);
    EXPECT_EQ(entradas(e.en("A")), "1/1[1] -[]");
    EXPECT_EQ(entradas(e.en("C")), "1/3[3] -[]");
}

TEST(PrimeraEntrada, AModuleWithoutInput1IsSkipped) {
    Escena e({modulo("A", 3, {20000}), modulo("B", 0, {20000}), modulo("C", 2, {20000})});
    e.puesto("A", 2, 1, datos(2, 2));
    e.en("A").mapEntradas.erase(1);
    e.puesto("C", 2, 1, datos(3, 3));
    EXPECT_EQ(corregir(e), SUSTITUIDA) << "of C, behind them";
    EXPECT_EQ(entradas(e.en("A")), "1/2[2] -[]");
    EXPECT_EQ(entradas(e.en("C")), "1/3[3] -[]");
}

TEST(PrimeraEntrada, ItComesAfterTheLastOptimizeToo) {
    Escena e({modulo("A", 2, {20000}, 0)});
    e.puesto("A", 2, 1, datos(2, 2));
    e.libre(datos(1, 1, 30000));
    const PasadaVista r(e.motor, 0, 1);
    ASSERT_EQ(r.camino(), "2 5 6 3 5 6 3 5 6 3 5 6");
    EXPECT_EQ(r.final(), SUSTITUIDA);
}

} // namespace Primera_entrada_test
