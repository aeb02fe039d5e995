// The fills: which inputs are offered a stream, how each chooses, what the sweep logs.

#include <gtest/gtest.h>

#include "algorithm/Escena.h"
#include "algorithm/PasadaVista.h"
#include "support/Lineas.h"

namespace Rellenar_test {

using namespace escena;
using vista::entradas;
using vista::indice;
using vista::PasadaVista;

namespace {

constexpr int CON_TRANSCODING = 1;
constexpr int SIN_TRANSCODING = 2;
// The resource codes that begin with either fill.
constexpr int RECURSO_DE[] = {-1, 0, 1};

std::string lineaDeEntrada(int numero) {
    return " RecalculationAlgorithm ---> itEntrada : " + std::to_string(numero) + "u";
}

// ---- The table of options -----------------------------------------------------------------------------

struct Caso {
    int option;
    int numEntrada;
    const char* eleccion; // the stream that the input takes
};

constexpr char MAS[] = "1/1[1 2 3]"; // the one with the most services
constexpr char MENOS[] = "1/2[4]";   // the one with the fewest
constexpr char NINGUNO[] = "-[]";

std::string nombre(const Caso& caso, const std::string& fill) {
    return "Option" + std::to_string(caso.option) + "Input" + std::to_string(caso.numEntrada) + fill;
}

class Opciones : public testing::TestWithParam<std::tuple<Caso, int>> {};

// Two streams without transcoding, offered to one input; the others carry something.
TEST_P(Opciones, ChooseTheStream) {
    const auto& [caso, estado] = GetParam();
    Escena e({modulo("A", 3, {20000})});
    for (int numero = 1; numero <= 3; ++numero)
        if (numero != caso.numEntrada)
            e.puesto("A", static_cast<unsigned short>(numero), 1, datos(10 + numero, 10 + numero));
    for (const int clave : {1, 2, 3})
        e.libre(datos(clave, 1));
    e.libre(datos(4, 2));

    const PasadaVista r(e.motor, caso.option, RECURSO_DE[estado]);
    const tRec_Modulo& despues = r.tramo(estado).despues.en("A");
    const tRec_Entrada& entrada = despues.mapEntradas.at(static_cast<unsigned short>(caso.numEntrada));
    tRec_Modulo sola;
    sola.mapEntradas.emplace(static_cast<unsigned short>(1), entrada);
    EXPECT_EQ(entradas(sola), caso.eleccion);
    // An input that is not offered costs no question either.
    const std::size_t preguntas = std::string(caso.eleccion) == NINGUNO ? 0 : 1;
    EXPECT_EQ(r.tramo(estado).cuantasEmpiezan("exists_Transcoding_Services"), preguntas);
}

std::string nombreDeParametro(const testing::TestParamInfo<std::tuple<Caso, int>>& info) {
    return nombre(std::get<0>(info.param),
                  std::get<1>(info.param) == CON_TRANSCODING ? "Transcoding" : "NoTranscoding");
}

INSTANTIATE_TEST_SUITE_P(
    Rellenar, Opciones,
    testing::Combine(testing::Values(Caso{1, 1, MAS}, Caso{1, 2, MAS}, Caso{1, 3, MAS}, Caso{2, 1, MAS},
                                     Caso{2, 2, MENOS}, Caso{2, 3, NINGUNO}, Caso{3, 1, MENOS},
                                     Caso{3, 2, MENOS}, Caso{3, 3, MENOS}, Caso{4, 1, MENOS}, Caso{4, 2, MAS},
                                     Caso{4, 3, NINGUNO}, Caso{5, 1, NINGUNO}, Caso{5, 2, NINGUNO},
                                     Caso{5, 3, NINGUNO}, Caso{0, 1, NINGUNO}, Caso{0, 2, NINGUNO},
                                     Caso{0, 3, NINGUNO}),
                     testing::Values(CON_TRANSCODING, SIN_TRANSCODING)),
    nombreDeParametro);

} // namespace

// ---- Which services -----------------------------------------------------------------------------------

TEST(Rellenar, TheTranscodingFillChoosesByTheServicesThatNeedATranscoder) {
    Escena e({modulo("A", 1, {20000})});
    e.en("A").SD_MAX_Transcoding = 1;
    e.libre(datos(1, 1));
    e.libre(datos(2, 1));
    e.libre(conTranscoding(datos(3, 2)));
    const PasadaVista r(e.motor, 1, 0);
    EXPECT_EQ(entradas(r.tramo(1).despues.en("A")), "1/2[3]");
}

TEST(Rellenar, TheOtherFillLeavesServicesThatNeedATranscoder) {
    Escena e({modulo("A", 1, {20000})});
    e.en("A").SD_MAX_Transcoding = 2;
    e.libre(datos(1, 1));
    e.libre(conTranscoding(datos(2, 1)));
    e.libre(conTranscoding(datos(3, 2)));
    e.libre(conTranscoding(datos(4, 2)));
    const PasadaVista r(e.motor, 1, 1);
    EXPECT_EQ(entradas(r.tramo(2).despues.en("A")), "1/1[1]");
    EXPECT_EQ(indice(r.tramo(2).despues.indice), "1/1[2] 1/2[3 4]");
}

// ---- The sweep ----------------------------------------------------------------------------------------

TEST(Rellenar, MixedOptionsNeverFillInputsBeyondTheSecond) {
    for (const int option : {2, 4})
        for (const int recurso : {0, 1}) {
            Escena e({modulo("A", 4, {20000})});
            for (const int clave : {1, 2, 3, 4})
                e.libre(datos(clave, clave));
            const PasadaVista r(e.motor, option, recurso);
            EXPECT_EQ(entradas(e.en("A")), "1/1[1] 1/2[2] -[] -[]") << option << " " << recurso;
        }
}

TEST(Rellenar, AnInputThatCarriesServicesIsPassedOverThoughItCouldTakeMore) {
    for (const int estado : {CON_TRANSCODING, SIN_TRANSCODING}) {
        Escena e({modulo("A", 2, {20000})});
        e.puesto("A", 1, 1, datos(1, 1));
        e.libre(datos(2, 1));
        e.libre(datos(3, 3));
        const PasadaVista r(e.motor, 1, RECURSO_DE[estado]);
        EXPECT_EQ(entradas(r.tramo(estado).despues.en("A")), "1/1[1] 1/1[2]") << estado;
        EXPECT_EQ(r.tramo(estado).cuantasEmpiezan("exists_Transcoding_Services"), 1U) << estado;
    }
}

TEST(Rellenar, ATunedInputWithoutServicesIsOffered) {
    Escena e({modulo("A", 1, {20000})});
    e.sintonizar("A", 1, 9, 9);
    e.libre(datos(1, 1));
    const PasadaVista r(e.motor, 1, 1);
    EXPECT_EQ(entradas(r.tramo(2).despues.en("A")), "1/1[1]");
}

TEST(Rellenar, ModulesByMacAndInputsByNumberAscend) {
    Escena e({modulo("B", 2, {20000}), modulo("A", 2, {20000})});
    for (const int clave : {1, 2, 3, 4})
        e.libre(datos(clave, clave));
    const PasadaVista r(e.motor, 1, 1);
    const auto& despues = r.tramo(2).despues;
    EXPECT_EQ(entradas(despues.en("A")), "1/1[1] 1/2[2]");
    EXPECT_EQ(entradas(despues.en("B")), "1/3[3] 1/4[4]");
}

TEST(Rellenar, WhenTheIndexRunsEmptyTheTranscodingFillStillLogsTheInputsLeft) {
    Escena e({modulo("A", 3, {20000}), modulo("B", 1, {20000})});
    e.libre(datos(1, 1));
    const PasadaVista r(e.motor, 1, 0);
    EXPECT_EQ(r.tramo(1).cuantas(lineaDeEntrada(1)), 2U);
    EXPECT_EQ(r.tramo(1).cuantas(lineaDeEntrada(2)), 1U);
    EXPECT_EQ(r.tramo(1).cuantas(lineaDeEntrada(3)), 1U);
    EXPECT_EQ(r.tramo(1).cuantasEmpiezan("exists_Transcoding_Services"), 1U);
}

TEST(Rellenar, WhenTheIndexRunsEmptyTheOtherFillOffersNoMoreInputs) {
    Escena e({modulo("A", 3, {20000}), modulo("B", 1, {20000})});
    e.libre(datos(1, 1));
    const PasadaVista r(e.motor, 1, 1);
    EXPECT_EQ(r.tramo(2).cuantasEmpiezan(" RecalculationAlgorithm ---> itEntrada"), 0U);
    EXPECT_EQ(r.tramo(2).cuantasEmpiezan("exists_Transcoding_Services"), 1U);
}

TEST(Rellenar, TheTranscodingFillLogsEveryInputBeforeItIsOffered) {
    Escena e({modulo("A", 2, {20000})});
    e.puesto("A", 1, 1, datos(1, 1));
    e.libre(datos(2, 2));
    const PasadaVista r(e.motor, 2, 0);
    const std::vector<std::string> esperado = {
        lineas::hecho(lineas::RELLENO_CON_TRANSCODING),
        "7  RecalculationAlgorithm ---> itEntrada : 1u",
        "7  RecalculationAlgorithm ---> itEntrada : 2u",
        "7 ",
        "7 exists_Transcoding_Services 0",
        "7 ",
        "7 MAC[A]: ONID= 1 / TSID 2",
        "7 Salida 1 BitrateActual 1000 BitrateMax 20000",
        "7 if ( ( (itSalida->second.BitRateActual (1000) + itService->second->peakBitRate (1000) ) < "
        "itSalida->second.BitRateMax (20000) ) &&  )",
        "7 if ( && ( itModulo->second.PIDsModulo (0) + itService->second->number_PIDs_CA (0) <= "
        "itModulo->second.PIDsModuloMax (100) ) )",
        "7 He añadido el servicio: 2",
        "7 ELIMINAMOS EL TSID: 2",
        "7 ELIMINAMOS EL ONID: 1",
        lineas::hecho(lineas::FIN_DEL_RELLENO),
    };
    EXPECT_EQ(r.tramo(1).hechos, esperado);
}

TEST(Rellenar, ASweepThatPlacedNothingSaysSoBeforeItsLastLine) {
    for (const int estado : {CON_TRANSCODING, SIN_TRANSCODING}) {
        Escena e({modulo("A", 1, {500})});
        e.libre(datos(1, 1));
        const PasadaVista r(e.motor, 1, RECURSO_DE[estado]);
        const auto& hechos = r.tramo(estado).hechos;
        ASSERT_GT(hechos.size(), 2U);
        EXPECT_EQ(hechos[hechos.size() - 2], lineas::hecho(lineas::NO_SE_PUEDE_MAS));
        EXPECT_EQ(hechos.back(), lineas::hecho(lineas::FIN_DEL_RELLENO));
    }
}

TEST(Rellenar, ASweepThatPlacedSomethingEndsWithItsLastLineAlone) {
    for (const int estado : {CON_TRANSCODING, SIN_TRANSCODING}) {
        Escena e({modulo("A", 1, {20000})});
        e.libre(datos(1, 1));
        const PasadaVista r(e.motor, 1, RECURSO_DE[estado]);
        EXPECT_FALSE(r.tramo(estado).contiene(lineas::NO_SE_PUEDE_MAS));
        EXPECT_EQ(r.tramo(estado).hechos.back(), lineas::hecho(lineas::FIN_DEL_RELLENO));
    }
}

TEST(Rellenar, AnInputThatTookNothingDoesNotSpoilTheCountOfTheSweep) {
    // Input 1 finds no room for the largest stream, input 2 neither; module B takes it.
    Escena e({modulo("A", 2, {500}), modulo("B", 1, {20000})});
    e.libre(datos(1, 1));
    const PasadaVista r(e.motor, 1, 1);
    EXPECT_EQ(r.camino(), "2 3 5");
    EXPECT_EQ(entradas(r.tramo(2).despues.en("A")), "-[] -[]");
    EXPECT_EQ(entradas(r.tramo(2).despues.en("B")), "1/1[1]");
}

TEST(Rellenar, ALaterSweepOffersOnlyTheInputsStillEmpty) {
    // Service 2 fits nowhere, so input 2 is offered, in vain, by both sweeps; input 1 by the first alone.
    Escena e({modulo("A", 2, {20000})});
    e.libre(datos(1, 1));
    e.libre(datos(2, 2, 19500));
    const PasadaVista r(e.motor, 1, 1);
    ASSERT_EQ(r.camino().substr(0, 7), "2 3 2 5");
    EXPECT_EQ(r.tramo(2, 1).cuantasEmpiezan("exists_Transcoding_Services"), 2U);
    EXPECT_EQ(r.tramo(2, 2).cuantasEmpiezan("exists_Transcoding_Services"), 1U);
}

TEST(Rellenar, AStreamThatFitsNowhereKeepsTheOthersOut) {
    // Stream 1 is the MIN choice of every input, though none can take it.
    Escena e({modulo("A", 2, {9000})});
    e.libre(datos(1, 1, 9000));
    e.libre(datos(2, 2));
    e.libre(datos(3, 2));
    const PasadaVista r(e.motor, 3, 1);
    EXPECT_EQ(entradas(e.en("A")), "-[] -[]");
    EXPECT_EQ(r.camino().substr(0, 5), "2 5 6");
}

} // namespace Rellenar_test
