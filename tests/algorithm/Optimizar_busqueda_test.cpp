// Choosing the two modules of an exchange: MAC[0], the stream to exchange, MAC[1].

#include <gtest/gtest.h>

#include "algorithm/EscenaDePermuta.h"

namespace Optimizar_busqueda_test {

using namespace permuta;
using escena::modulo;
using vista::PasadaVista;
using vista::Tramo;

namespace {

using Hechos = std::vector<std::string>;

constexpr char COMPATIBLES[] = " Modulos NO vacios y compatibles";

// The search for the first service left out.
Hechos busqueda(const Tramo& tramo) {
    Hechos hechos = tramo.desde(" itModulo ", " Modulos NO vacios");
    const auto fin = std::find_if(hechos.begin(), hechos.end(), [](const std::string& hecho) {
        return hecho.compare(0, 8, "7  MAC 1") == 0 && hecho.find(" y MAC 2 ") != std::string::npos;
    });
    if (fin != hechos.end())
        hechos.erase(fin + 1, hechos.end());
    return hechos;
}

std::string buscaremos(int onid, int tsid, int numero) {
    return " Buscaremos modulos con ONID " + std::to_string(onid) + "  y TSID " + std::to_string(tsid) +
           " NumEntrada " + std::to_string(numero) + " ";
}

// A head-end in which each module is given by the TSIDs (of network 1) of its inputs, 0 for an untuned one,
// and service 30 of stream 1 is left out. No module is uncomplete.
Escena cabecera(const std::vector<std::pair<std::string, std::vector<int>>>& modulos) {
    std::vector<fabrica::DatosModulo> lista;
    for (const auto& [mac, tsids] : modulos)
        lista.push_back(modulo(mac, static_cast<int>(tsids.size()), {10000}, 0));
    Escena e(lista);
    for (const auto& [mac, tsids] : modulos)
        for (std::size_t i = 0; i < tsids.size(); ++i)
            if (tsids[i] != 0)
                e.sintonizar(mac, static_cast<unsigned short>(i + 1), 1,
                             static_cast<unsigned short>(tsids[i]));
    e.libre(datos(30, ORIGINAL));
    return e;
}

Tramo optimizar(Escena& e, int recurso = 1) {
    return PasadaVista(e.motor, 0, recurso).tramo(6);
}

} // namespace

TEST(OptimizarModulos, TheSearchIsLoggedStepByStep) {
    EscenaDePermuta e;
    e.completo();
    EXPECT_EQ(
        busqueda(e.optimizar()),
        (Hechos{"7  itModulo A ", "7  itModulo A itEntradaModulo 1", "7  MAC 1 A ",
                "7  itModulo A itEntradaModulo 2", "7  Buscaremos modulos con ONID 1  y TSID 2 NumEntrada 2 ",
                "7  itModuloAux A", "7  itModuloAux B",
                "7  ENTRADA QUE BUSCAMOS ONID 1  y TSID 2 NumEntrada 2 ",
                "7  ENTRADA ACTUAL ONID 1  y TSID 3 NumEntrada 1 ",
                "7  ENTRADA QUE BUSCAMOS ONID 1  y TSID 2 NumEntrada 2 ",
                "7  ENTRADA ACTUAL ONID 1  y TSID 2 NumEntrada 2 ", "7  MAC 2 B ", "7  MAC 1 A y MAC 2 B "}));
}

// ---- MAC[0] and the stream to exchange ----------------------------------------------------------------

TEST(OptimizarPrincipal, IsTheFirstModuleThatReceivesTheStream) {
    Escena e = cabecera({{"A", {2}}, {"B", {3, 1}}, {"C", {4, 1}}});
    const Tramo t = optimizar(e);
    EXPECT_EQ(t.cuantas(" MAC 1 B "), 1U);
    EXPECT_TRUE(t.contiene(" MAC 1 B y MAC 2  "));
    EXPECT_FALSE(t.contiene(" MAC 1 C "));
}

TEST(OptimizarPrincipal, IsKnownByOnidAndTsid) {
    Escena e = cabecera({{"A", {0}}, {"B", {1}}});
    e.sintonizar("A", 1, 2, 1); // the same TSID in another network
    const Tramo t = optimizar(e);
    EXPECT_TRUE(t.contiene(" MAC 1 B "));
    EXPECT_FALSE(t.contiene(" MAC 1 A "));
}

TEST(OptimizarPrincipal, AnInputBeforeTheOneOfTheStreamGivesTheStreamToExchange) {
    Escena e = cabecera({{"A", {2, 1}}, {"B", {3}}});
    EXPECT_TRUE(optimizar(e).contiene(buscaremos(1, 2, 1)));
}

TEST(OptimizarPrincipal, TheLastInputOnAnotherStreamGivesTheStreamToExchange) {
    Escena e = cabecera({{"A", {2, 1, 4, 5}}, {"B", {3}}});
    const Tramo t = optimizar(e);
    EXPECT_TRUE(t.contiene(buscaremos(1, 5, 4)));
    EXPECT_EQ(t.cuantasEmpiezan(" Buscaremos"), 2U); // at A and again at B
}

TEST(OptimizarPrincipal, AnUntunedInputGives0And0) {
    Escena e = cabecera({{"A", {1, 2, 0}}, {"B", {3}}});
    EXPECT_TRUE(optimizar(e).contiene(buscaremos(0, 0, 3)));
}

TEST(OptimizarPrincipal, ModulesBeforeItLeaveNoTrace) {
    Escena e = cabecera({{"A", {9, 8}}, {"B", {1}}});
    EXPECT_TRUE(optimizar(e).contiene(buscaremos(0, 0, 0)));
}

TEST(OptimizarPrincipal, ModulesAfterItDoNotChangeTheStreamToExchange) {
    // Nobody else receives stream 2: the search is repeated at the end of every later module.
    Escena e = cabecera({{"A", {2, 1}}, {"B", {3, 1}}, {"C", {4}}});
    const Tramo t = optimizar(e);
    EXPECT_EQ(t.cuantas(buscaremos(1, 2, 1)), 3U);
    EXPECT_EQ(t.cuantasEmpiezan(" Buscaremos"), 3U);
    EXPECT_EQ(t.cuantas(" MAC 1 A "), 1U);
    EXPECT_FALSE(t.contiene(" MAC 1 B "));
    EXPECT_TRUE(t.contiene(" itModulo C itEntradaModulo 1"));
    EXPECT_TRUE(t.contiene(" MAC 1 A y MAC 2  "));
    EXPECT_FALSE(t.contiene(COMPATIBLES));
}

// ---- MAC[1] -------------------------------------------------------------------------------------------

TEST(OptimizarAuxiliar, MayComeBeforeMac0) {
    Escena e = cabecera({{"A", {3, 2}}, {"B", {1, 2}}});
    const Tramo t = optimizar(e);
    EXPECT_TRUE(t.contiene(" MAC 1 B y MAC 2 A "));
    EXPECT_TRUE(t.contiene(COMPATIBLES));
}

TEST(OptimizarAuxiliar, IsTheFirstModuleThatReceivesTheStreamToExchange) {
    Escena e = cabecera({{"A", {1, 2}}, {"B", {3}}, {"C", {4, 2}}, {"D", {5, 2}}});
    const Tramo t = optimizar(e);
    EXPECT_TRUE(t.contiene(" MAC 1 A y MAC 2 C "));
    EXPECT_FALSE(t.contiene(" itModuloAux D"));
    // Found at the end of A: the later modules are not walked for MAC[0].
    EXPECT_FALSE(t.contiene(" itModulo B "));
}

TEST(OptimizarAuxiliar, TheSearchEndsAtTheInputFound) {
    Escena e = cabecera({{"A", {1, 2}}, {"B", {3, 2, 4}}});
    const Tramo t = optimizar(e);
    EXPECT_EQ(t.cuantasEmpiezan(" ENTRADA ACTUAL"), 2U);
}

TEST(OptimizarAuxiliar, IsKnownByOnidAndTsid) {
    Escena e = cabecera({{"A", {1, 2}}, {"B", {3, 0, 4}}});
    e.sintonizar("B", 2, 2, 2); // the same TSID in another network
    const Tramo t = optimizar(e);
    EXPECT_EQ(t.cuantasEmpiezan(" MAC 2 "), 0U);
    EXPECT_TRUE(t.contiene(" MAC 1 A y MAC 2  "));
}

TEST(OptimizarAuxiliar, Mac0IsPassedOver) {
    // Its own inputs are not compared, though one of them receives the stream.
    Escena e = cabecera({{"A", {1, 2}}});
    const Tramo t = optimizar(e);
    EXPECT_EQ(busqueda(t), (Hechos{"7  itModulo A ", "7  itModulo A itEntradaModulo 1", "7  MAC 1 A ",
                                   "7  itModulo A itEntradaModulo 2", "7 " + buscaremos(1, 2, 2),
                                   "7  itModuloAux A", "7  MAC 1 A y MAC 2  "}));
}

TEST(OptimizarAuxiliar, UntunedInputsMatchWhenTheStreamToExchangeIs0And0) {
    Escena e = cabecera({{"A", {1}}, {"B", {3, 0}}});
    const Tramo t = optimizar(e);
    EXPECT_TRUE(t.contiene(" MAC 1 A y MAC 2 B "));
    EXPECT_TRUE(t.contiene(COMPATIBLES));
}

// ---- Models -------------------------------------------------------------------------------------------

TEST(OptimizarModelos, WithResource3AnotherModelIsNeverChosen) {
    Escena e = cabecera({{"A", {1, 2}}, {"B", {3, 2}}, {"C", {4, 2}}});
    e.en("B").Modelo = 1;
    const Tramo t = optimizar(e, 3);
    EXPECT_TRUE(t.contiene(" itModuloAux B"));
    EXPECT_FALSE(t.contiene(" MAC 2 B "));
    EXPECT_EQ(t.cuantasEmpiezan(" ENTRADA ACTUAL ONID 1  y TSID 3"), 0U); // B's inputs are not looked at
    EXPECT_TRUE(t.contiene(" MAC 1 A y MAC 2 C "));
    EXPECT_TRUE(t.contiene(COMPATIBLES));
}

TEST(OptimizarModelos, WithResource3AndNoOtherOfTheModelTheServiceIsGivenUp) {
    Escena e = cabecera({{"A", {1, 2}}, {"B", {3, 2}}});
    e.en("B").Modelo = 1;
    EXPECT_TRUE(optimizar(e, 3).contiene(" MAC 1 A y MAC 2  "));
}

TEST(OptimizarModelos, WithAnyOtherResourceTheFirstIsChosenAndGivenUpWhenItsModelDiffers) {
    for (const int recurso : {0, 1, 2}) {
        Escena e = cabecera({{"A", {1, 2}}, {"B", {3, 2}}, {"C", {4, 2}}});
        e.en("B").Modelo = 1;
        const Tramo t = optimizar(e, recurso);
        EXPECT_TRUE(t.contiene(" MAC 1 A y MAC 2 B ")) << recurso;
        EXPECT_FALSE(t.contiene(COMPATIBLES)) << recurso;
        EXPECT_EQ(t.cuantasEmpiezan(" MAC 1 A itSalida"), 0U) << recurso;
    }
}

TEST(OptimizarModelos, WithResource3EqualModelsExchange) {
    EscenaDePermuta e;
    e.completo();
    EXPECT_TRUE(e.optimizar(3).contiene("clear = 2"));
}

// ---- The values in hand -------------------------------------------------------------------------------

TEST(OptimizarEnMano, EveryServiceStartsWithoutModules) {
    // 30 finds A and B; nobody receives the stream of 31.
    EscenaDePermuta e;
    e.completo();
    e.libre(datos(31, 9));
    const Tramo t = e.optimizar();
    const Hechos segunda = t.desde("Hay servicios sin asignar con  idServicio: (itService_Out) 31");
    EXPECT_NE(std::find(segunda.begin(), segunda.end(), "7  MAC 1  y MAC 2  "), segunda.end());
}

} // namespace Optimizar_busqueda_test
