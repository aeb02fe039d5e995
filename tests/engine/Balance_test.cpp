#include "tRecalculo.h"

#include <gtest/gtest.h>

#include "support/Fabrica.h"
#include "support/Registro.h"

namespace Balance_test {

using namespace zarven;

namespace {

using Lineas = std::vector<std::string>;
using Claves = std::vector<long>;

const std::string DE_ACTUAL_A_SIGUIENTE =
    "7 -----------*** Movemos un servicio de itSalidaActual a itSalidaSiguiente ";
const std::string DE_SIGUIENTE_A_ACTUAL =
    "7 -----------*** Movemos un servicio de itSalidaSiguiente a itSalidaActual ";

// Adds a module with one output for each number of services; keys count from 1 through the module.
tRec_Modulo& anadir(tMapaModulos& mapa, const std::vector<unsigned>& servicios,
                    const std::string& mac = "A") {
    fabrica::DatosModulo datos;
    datos.mac = mac;
    datos.salidas.assign(servicios.size(), 10000);
    tRec_Modulo& modulo = mapa.emplace(mac, fabrica::modulo(datos)).first->second;
    unsigned short clave = 0;
    for (std::size_t i = 0; i < servicios.size(); ++i) {
        tRec_Salida& salida = modulo.mapSalidas.at(static_cast<std::uint32_t>(i + 1));
        for (unsigned n = 0; n < servicios[i]; ++n)
            salida.addServicioALaSalida(fabrica::servicio({++clave}));
        salida.NumServicios = servicios[i];
    }
    registro::vaciar();
    return modulo;
}

Claves claves(const tRec_Modulo& modulo, std::uint32_t salida) {
    Claves todas;
    for (const auto& [clave, s] : modulo.mapSalidas.at(salida).MapaServicios)
        todas.push_back(clave);
    return todas;
}

// How many services the outputs of a module carry after balancing.
std::vector<std::size_t> equilibrar(const std::vector<unsigned>& servicios) {
    tMapaModulos mapa;
    const tRec_Modulo& modulo = anadir(mapa, servicios);
    tRecalculo().Load_Balance(&mapa);
    std::vector<std::size_t> cuentas;
    for (const auto& [numero, salida] : modulo.mapSalidas)
        cuentas.push_back(salida.MapaServicios.size());
    return cuentas;
}

using Cuentas = std::vector<std::size_t>;

} // namespace

TEST(Balance, AnEmptyMapLogsItsFirstLineOnly) {
    tMapaModulos mapa;
    registro::vaciar();
    EXPECT_EQ(tRecalculo().Load_Balance(&mapa), 1u);
    EXPECT_EQ(registro::hechos(), Lineas{"7 Load_Balance...."});
}

TEST(Balance, ANullMapCountsAsEmpty) {
    registro::vaciar();
    EXPECT_EQ(tRecalculo().Load_Balance(nullptr), 1u);
    EXPECT_EQ(registro::hechos(), Lineas{"7 Load_Balance...."});
}

TEST(Balance, ASingleOutputHasNoPartner) {
    tMapaModulos mapa;
    const tRec_Modulo& modulo = anadir(mapa, {5});
    EXPECT_EQ(tRecalculo().Load_Balance(&mapa), 1u);
    const Lineas esperado = {
        "7 Load_Balance....",
        "7 ---- Evaluando MAC: A .... num salidas 1",
        "7 -------- Evaluando Salida Actual: 1 ....",
        "7 ----------- NumServicios Salida Actual : 5 ....",
    };
    EXPECT_EQ(registro::hechos(), esperado);
    EXPECT_EQ(modulo.mapSalidas.at(1).MapaServicios.size(), 5u);
}

TEST(Balance, AModuleWithoutOutputsHasItsLineOnly) {
    tMapaModulos mapa;
    anadir(mapa, {});
    tRecalculo().Load_Balance(&mapa);
    EXPECT_EQ(registro::hechos(),
              (Lineas{"7 Load_Balance....", "7 ---- Evaluando MAC: A .... num salidas 0"}));
}

TEST(Balance, MovesTheLowestKeysFromTheFullerOutputAndLogsIt) {
    tMapaModulos mapa;
    const tRec_Modulo& modulo = anadir(mapa, {5, 1});
    EXPECT_EQ(tRecalculo().Load_Balance(&mapa), 1u);
    const Lineas esperado = {
        "7 Load_Balance....",
        "7 ---- Evaluando MAC: A .... num salidas 2",
        "7 -------- Evaluando Salida Actual: 1 ....",
        "7 ----------- NumServicios Salida Actual : 5 ....",
        "7 --------*** Evaluando Salida Siguiente: 2 ....",
        "7 -----------*** NumServicios Salida Siguiente : 1 ....",
        DE_ACTUAL_A_SIGUIENTE,
        DE_ACTUAL_A_SIGUIENTE,
        "7 -------- Evaluando Salida Actual: 2 ....",
        "7 ----------- NumServicios Salida Actual : 3 ....",
    };
    EXPECT_EQ(registro::hechos(), esperado);
    EXPECT_EQ(claves(modulo, 1), (Claves{3, 4, 5}));
    EXPECT_EQ(claves(modulo, 2), (Claves{1, 2, 6}));
}

TEST(Balance, MovesTheLowestKeysBackFromTheFullerNeighbour) {
    tMapaModulos mapa;
    const tRec_Modulo& modulo = anadir(mapa, {1, 5});
    tRecalculo().Load_Balance(&mapa);
    const Lineas esperado = {
        "7 Load_Balance....",
        "7 ---- Evaluando MAC: A .... num salidas 2",
        "7 -------- Evaluando Salida Actual: 1 ....",
        "7 ----------- NumServicios Salida Actual : 1 ....",
        "7 --------*** Evaluando Salida Siguiente: 2 ....",
        "7 -----------*** NumServicios Salida Siguiente : 5 ....",
        DE_SIGUIENTE_A_ACTUAL,
        DE_SIGUIENTE_A_ACTUAL,
        "7 -------- Evaluando Salida Actual: 2 ....",
        "7 ----------- NumServicios Salida Actual : 3 ....",
    };
    EXPECT_EQ(registro::hechos(), esperado);
    EXPECT_EQ(claves(modulo, 1), (Claves{1, 2, 3}));
    EXPECT_EQ(claves(modulo, 2), (Claves{4, 5, 6}));
}

TEST(Balance, OutputsThatDifferByOneAreLeftAlone) {
    EXPECT_EQ(equilibrar({3, 2}), (Cuentas{3, 2}));
    EXPECT_EQ(equilibrar({2, 3}), (Cuentas{2, 3}));
    EXPECT_EQ(equilibrar({2, 2}), (Cuentas{2, 2}));
    EXPECT_EQ(equilibrar({0, 1}), (Cuentas{0, 1}));
    EXPECT_EQ(equilibrar({0, 0}), (Cuentas{0, 0}));
}

TEST(Balance, OutputsThatDifferByTwoBecomeEqual) {
    EXPECT_EQ(equilibrar({4, 2}), (Cuentas{3, 3}));
    EXPECT_EQ(equilibrar({2, 4}), (Cuentas{3, 3}));
    EXPECT_EQ(equilibrar({2, 0}), (Cuentas{1, 1}));
}

TEST(Balance, AnOddDifferenceLeavesOneMoreWhereTheyCameFrom) {
    EXPECT_EQ(equilibrar({4, 1}), (Cuentas{3, 2}));
    EXPECT_EQ(equilibrar({1, 4}), (Cuentas{2, 3}));
}

TEST(Balance, EvensOutPairByPairWithoutAGlobalView) {
    // 9,0,0 -> 5,4,0 -> 3,4,2 -> 3,3,3
    EXPECT_EQ(equilibrar({9, 0, 0}), (Cuentas{3, 3, 3}));
    // 0,2,8 -> 1,1,8 -> 4,1,5 -> 4,3,3
    EXPECT_EQ(equilibrar({0, 2, 8}), (Cuentas{4, 3, 3}));
}

TEST(Balance, VisitsEachPairOnceAndEachModuleByMAC) {
    tMapaModulos mapa;
    anadir(mapa, {0}, "B");
    anadir(mapa, {1, 1, 1}, "A");
    tRecalculo().Load_Balance(&mapa);
    const Lineas esperado = {
        "7 Load_Balance....",
        "7 ---- Evaluando MAC: A .... num salidas 3",
        "7 -------- Evaluando Salida Actual: 1 ....",
        "7 ----------- NumServicios Salida Actual : 1 ....",
        "7 --------*** Evaluando Salida Siguiente: 2 ....",
        "7 -----------*** NumServicios Salida Siguiente : 1 ....",
        "7 --------*** Evaluando Salida Siguiente: 3 ....",
        "7 -----------*** NumServicios Salida Siguiente : 1 ....",
        "7 -------- Evaluando Salida Actual: 2 ....",
        "7 ----------- NumServicios Salida Actual : 1 ....",
        "7 --------*** Evaluando Salida Siguiente: 3 ....",
        "7 -----------*** NumServicios Salida Siguiente : 1 ....",
        "7 -------- Evaluando Salida Actual: 3 ....",
        "7 ----------- NumServicios Salida Actual : 1 ....",
        "7 ---- Evaluando MAC: B .... num salidas 1",
        "7 -------- Evaluando Salida Actual: 1 ....",
        "7 ----------- NumServicios Salida Actual : 0 ....",
    };
    EXPECT_EQ(registro::hechos(), esperado);
}

TEST(Balance, AnOutputWithoutACeilingIsNoPartner) {
    tMapaModulos mapa;
    tRec_Modulo& modulo = anadir(mapa, {0, 4});
    modulo.mapSalidas.at(2).BitRateMax = 0;
    tRecalculo().Load_Balance(&mapa);
    EXPECT_EQ(modulo.mapSalidas.at(2).MapaServicios.size(), 4u);
    EXPECT_EQ(registro::cuantasEmpiezan("--------***"), 0u);
    EXPECT_EQ(registro::hechos().size(), 6u);
}

TEST(Balance, AnOutputWithoutACeilingStillTakesPartAsTheCurrentOne) {
    tMapaModulos mapa;
    tRec_Modulo& modulo = anadir(mapa, {0, 4});
    modulo.mapSalidas.at(1).BitRateMax = 0;
    tRecalculo().Load_Balance(&mapa);
    EXPECT_EQ(claves(modulo, 1), (Claves{1, 2}));
    EXPECT_EQ(claves(modulo, 2), (Claves{3, 4}));
}

TEST(Balance, AnOutputWithoutACeilingIsPassedOverAndTheNextIsNot) {
    tMapaModulos mapa;
    tRec_Modulo& modulo = anadir(mapa, {4, 0, 0});
    modulo.mapSalidas.at(2).BitRateMax = 0;
    tRecalculo().Load_Balance(&mapa);
    // Output 2 is evened out with 3 when its own turn comes.
    EXPECT_EQ(claves(modulo, 1), (Claves{3, 4}));
    EXPECT_EQ(claves(modulo, 2), Claves{1});
    EXPECT_EQ(claves(modulo, 3), Claves{2});
}

TEST(Balance, BitratesMoveAlongAndServiceCountsDoNot) {
    tMapaModulos mapa;
    const tRec_Modulo& modulo = anadir(mapa, {4, 0});
    tRecalculo().Load_Balance(&mapa);
    EXPECT_EQ(modulo.mapSalidas.at(1).BitRateActual, 2000u);
    EXPECT_EQ(modulo.mapSalidas.at(2).BitRateActual, 2000u);
    EXPECT_EQ(modulo.mapSalidas.at(1).NumServicios, 4u);
    EXPECT_EQ(modulo.mapSalidas.at(2).NumServicios, 0u);
}

TEST(Balance, CountsTheEntriesAndNotTheServiceCounter) {
    tMapaModulos mapa;
    tRec_Modulo& modulo = anadir(mapa, {2, 2});
    modulo.mapSalidas.at(1).NumServicios = 50;
    modulo.mapSalidas.at(2).NumServicios = 60;
    tRecalculo().Load_Balance(&mapa);
    EXPECT_EQ(modulo.mapSalidas.at(1).MapaServicios.size(), 2u);
    EXPECT_EQ(registro::cuantas("----------- NumServicios Salida Actual : 2 ...."), 2u);
    EXPECT_TRUE(registro::contiene("-----------*** NumServicios Salida Siguiente : 2 ...."));
}

TEST(Balance, AMovePushesAnOutputPastItsLimits) {
    tMapaModulos mapa;
    tRec_Modulo& modulo = anadir(mapa, {4, 0});
    modulo.mapSalidas.at(2).BitRateMax = 10;
    modulo.mapSalidas.at(2).NumServiciosMax = 0;
    tRecalculo().Load_Balance(&mapa);
    EXPECT_EQ(modulo.mapSalidas.at(2).MapaServicios.size(), 2u);
    EXPECT_EQ(modulo.mapSalidas.at(2).BitRateActual, 2000u);
}

TEST(Balance, PrintsTheOutputsOwnNumber) {
    tMapaModulos mapa;
    tRec_Modulo& modulo = anadir(mapa, {1, 1});
    modulo.mapSalidas.at(1).NumSalida = 7;
    modulo.mapSalidas.at(2).NumSalida = 8;
    tRecalculo().Load_Balance(&mapa);
    EXPECT_TRUE(registro::contiene("-------- Evaluando Salida Actual: 7 ...."));
    EXPECT_TRUE(registro::contiene("--------*** Evaluando Salida Siguiente: 8 ...."));
}

TEST(Balance, InputsAndModuleCountersStay) {
    tMapaModulos mapa;
    tRec_Modulo& modulo = anadir(mapa, {2, 0});
    const auto s = modulo.mapSalidas.at(1).MapaServicios.begin()->second;
    modulo.mapEntradas.at(1).addServicioALaEntrada(s);
    modulo.PIDsModulo = 9;
    tRecalculo().Load_Balance(&mapa);
    EXPECT_EQ(modulo.mapEntradas.at(1).MapaServicios.size(), 1u);
    EXPECT_EQ(s->pEntrada, &modulo.mapEntradas.at(1));
    EXPECT_EQ(modulo.PIDsModulo, 9);
}

TEST(Balance, AMovedServiceIsHeldByItsNewOutputOnly) {
    tMapaModulos mapa;
    const tRec_Modulo& modulo = anadir(mapa, {2, 0});
    const auto s = modulo.mapSalidas.at(1).MapaServicios.begin()->second;
    tRecalculo().Load_Balance(&mapa);
    EXPECT_EQ(s.use_count(), 2);
    EXPECT_EQ(modulo.mapSalidas.at(2).MapaServicios.begin()->second, s);
    EXPECT_EQ(s->pSalida, nullptr) << "taking it off its old output cleared it last";
}

TEST(Balance, OneOfTwoEqualKeysMovesAndTheOtherIsLost) {
    tMapaModulos mapa;
    tRec_Modulo& modulo = anadir(mapa, {2, 0});
    modulo.mapSalidas.at(1).addServicioALaSalida(fabrica::servicio({1}));
    modulo.mapSalidas.at(1).addServicioALaSalida(fabrica::servicio({5}));
    tRecalculo().Load_Balance(&mapa);
    EXPECT_EQ(claves(modulo, 1), (Claves{2, 5}));
    EXPECT_EQ(claves(modulo, 2), Claves{1});
    EXPECT_EQ(modulo.mapSalidas.at(1).BitRateActual, 3000u);
    EXPECT_EQ(modulo.mapSalidas.at(2).BitRateActual, 1000u);
}

TEST(Balance, AnEntryWithoutServiceIsNotMovedAndEndsThePair) {
    for (const std::uint32_t llena : {1U, 2U}) {
        tMapaModulos mapa;
        tRec_Modulo& modulo = anadir(mapa, {llena == 1U ? 3U : 0U, llena == 2U ? 3U : 0U});
        modulo.mapSalidas.at(llena).MapaServicios.emplace(-1, nullptr);
        EXPECT_EQ(tRecalculo().Load_Balance(&mapa), 1U);
        EXPECT_EQ(claves(modulo, llena), (Claves{-1, 1, 2, 3}));
        EXPECT_FALSE(registro::contiene(DE_ACTUAL_A_SIGUIENTE.substr(2)));
        EXPECT_FALSE(registro::contiene(DE_SIGUIENTE_A_ACTUAL.substr(2)));
    }
}

} // namespace Balance_test
