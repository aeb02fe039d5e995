// The driver: which strategies run, which is kept, and what is left for the caller.

#include "support/Lineas.h"
#include "tRecalculo.h"

#include <gtest/gtest.h>

#include "support/Fabrica.h"
#include "support/Registro.h"

namespace Principal_test {

using namespace zarven;

namespace {

using Lineas = std::vector<std::string>;

void cargarControlador(tRecalculo& motor, unsigned short entradas = 1, unsigned short aux = 0) {
    fabrica::DatosModulo datos;
    datos.entradas = entradas;
    datos.controlador = true;
    datos.aux = aux;
    fabrica::cargar(motor, datos);
}

// Runs the engine with a clean record.
int correr(tRecalculo& motor) {
    registro::vaciar();
    return motor.Main_Recalculo();
}

// The log lines that begin so.
Lineas queEmpiezan(const std::string& principio) {
    Lineas elegidas;
    for (const auto& texto : registro::textos())
        if (texto.compare(0, principio.size(), principio) == 0)
            elegidas.push_back(texto);
    return elegidas;
}

Lineas opcionesCorridas() {
    return queEmpiezan("BEGIN OPTION: ");
}

// The option the run says it kept; 0 when it does not say.
int opcionUtilizada() {
    for (int opcion = 1; opcion <= 4; ++opcion)
        if (registro::contiene("||                                        OPCION UTILIZADA: " +
                               std::to_string(opcion) + "\t\t\t\t\t\t ||"))
            return opcion;
    return 0;
}

// The counts compared after each strategy.
Lineas comparaciones() {
    return queEmpiezan(" (count_servicios_proceso (");
}

std::size_t descartados(const tRecalculo& motor) {
    std::size_t n = 0;
    for (const auto& [onid, red] : motor.Mapa_ONIDs_Final)
        for (const auto& [tsid, flujo] : red.MapRec_TSIDs)
            n += flujo.MapRec_Services.size();
    return n;
}

const std::string MAX = "BEGIN OPTION: MAX ----------------------------------------------------->";
const std::string MAX_MIN = "BEGIN OPTION: MAX MIN ------------------------------------------------->";
const std::string MIN = "BEGIN OPTION: MIN ----------------------------------------------------->";
const std::string MIN_MAX = "BEGIN OPTION: MIN MAX ------------------------------------------------->";

// Two streams of one service that fits and one of two services that never fit. MAX takes the big stream and
// places nothing; MAX MIN fills the second input, MIN both, MIN MAX the first one.
void cargarCadaOpcionDistinta(tRecalculo& motor) {
    cargarControlador(motor, 2);
    fabrica::cargar(motor, {1, 7, 50});
    fabrica::cargar(motor, {2, 7, 60});
    fabrica::cargar(motor, {3, 8, 40, 0, 10000});
    fabrica::cargar(motor, {4, 8, 40, 0, 10000});
}

// As many services as fit and one that fits nowhere, on the stream of every strategy's choice.
void cargarEmpate(tRecalculo& motor) {
    cargarControlador(motor);
    fabrica::cargar(motor, {1, 7, 50});
    fabrica::cargar(motor, {2, 7, 50, 0, 10000});
}

} // namespace

TEST(Principal, WithoutControllerItLogsOneErrorAndDoesNothing) {
    tRecalculo motor;
    fabrica::cargar(motor, fabrica::DatosModulo());
    fabrica::cargar(motor, fabrica::DatosServicio());
    motor.Mapa_ModulosCabecera_Final.emplace("viejo", tRec_Modulo("viejo"));
    EXPECT_EQ(correr(motor), 0);
    EXPECT_EQ(registro::hechos(), (Lineas{
                                      "7 El tipo de cabecera es: 1",
                                      "3 ERROR, impossible to get the controller MAC or MODEL",
                                  }));
    EXPECT_EQ(motor.Mapa_ModulosCabecera_Final.count("viejo"), 1u);
    EXPECT_TRUE(motor.Mapa_ModulosCabecera_Proceso.empty());
    EXPECT_TRUE(motor.Mapa_ONIDs.empty());
}

TEST(Principal, WithoutModulesThereIsNoController) {
    tRecalculo motor;
    EXPECT_EQ(correr(motor), 0);
    EXPECT_EQ(registro::hechos(), (Lineas{
                                      "7 El tipo de cabecera es: 0",
                                      "3 ERROR, impossible to get the controller MAC or MODEL",
                                  }));
}

TEST(Principal, AControllerOfModelZeroIsNone) {
    tRecalculo motor;
    cargarControlador(motor);
    motor.Mapa_ModulosCabecera_Inicial.at("A").Modelo = 0;
    EXPECT_EQ(correr(motor), 0);
    EXPECT_EQ(registro::hechos().back(), "3 ERROR, impossible to get the controller MAC or MODEL");
}

TEST(Principal, AControllerWithoutMACIsNone) {
    tRecalculo motor;
    motor.addModulo("", 3, 1, 1, 100, true);
    EXPECT_EQ(correr(motor), 0);
    EXPECT_EQ(registro::hechos().back(), "3 ERROR, impossible to get the controller MAC or MODEL");
}

TEST(Principal, AControllerOfAnyOtherModelWillDo) {
    tRecalculo motor;
    motor.addModulo("A", 5, 1, 1, 100, true);
    EXPECT_EQ(correr(motor), 1);
    EXPECT_TRUE(registro::contiene("Controller MAC A, MODEL 99"));
}

TEST(Principal, AStrategyThatPlacesEverythingIsTheLast) {
    tRecalculo motor;
    cargarControlador(motor);
    fabrica::cargar(motor, fabrica::DatosServicio());
    EXPECT_EQ(correr(motor), 1);
    EXPECT_EQ(opcionesCorridas(), Lineas{MAX});
    EXPECT_EQ(opcionUtilizada(), 4) << "whichever option ran";
    EXPECT_TRUE(registro::contiene("END OPTION  <----------------------------------------------------->"));
    EXPECT_EQ(comparaciones(), Lineas{" (count_servicios_proceso (0) < count_servicios_final (-1))"});
    EXPECT_EQ(motor.Mapa_ModulosCabecera_Final.at("A").mapSalidas.at(1).NumServicios, 1u);
    EXPECT_TRUE(motor.Mapa_ONIDs_Final.empty());
}

TEST(Principal, AllFourStrategiesRunWhenSomethingIsLeftOut) {
    tRecalculo motor;
    cargarEmpate(motor);
    correr(motor);
    EXPECT_EQ(opcionesCorridas(), (Lineas{MAX, MAX_MIN, MIN, MIN_MAX}));
    EXPECT_EQ(registro::cuantas(lineas::QUEDAN_SERVICIOS), 4u);
    EXPECT_FALSE(registro::contiene("END OPTION  <----------------------------------------------------->"));
}

TEST(Principal, TheEarliestOfEqualStrategiesIsKept) {
    tRecalculo motor;
    cargarEmpate(motor);
    correr(motor);
    EXPECT_EQ(opcionUtilizada(), 1);
    EXPECT_EQ(comparaciones(), (Lineas{
                                   " (count_servicios_proceso (1) < count_servicios_final (-1))",
                                   " (count_servicios_proceso (1) < count_servicios_final (1))",
                                   " (count_servicios_proceso (1) < count_servicios_final (1))",
                                   " (count_servicios_proceso (1) < count_servicios_final (1))",
                               }));
    EXPECT_EQ(registro::cuantas("Si el recalculo deja fuera el mismo número de servicios"), 3u);
    EXPECT_EQ(registro::cuantas("Y si anteriormente tenemos guardada una configuración. Tamaño 1"), 3u);
    EXPECT_EQ(descartados(motor), 1u);
}

TEST(Principal, ATieShowsHowManyModulesAreKept) {
    tRecalculo motor;
    cargarEmpate(motor);
    motor.addModulo("B", 3, 0, 0, 100, false);
    motor.addModulo("C", 3, 0, 0, 100, false);
    correr(motor);
    EXPECT_EQ(registro::cuantas("Y si anteriormente tenemos guardada una configuración. Tamaño 3"), 3u);
}

TEST(Principal, TheStrategyThatLeavesTheFewestOutIsKept) {
    tRecalculo motor;
    cargarCadaOpcionDistinta(motor);
    correr(motor);
    EXPECT_EQ(comparaciones(), (Lineas{
                                   " (count_servicios_proceso (4) < count_servicios_final (-1))",
                                   " (count_servicios_proceso (3) < count_servicios_final (4))",
                                   " (count_servicios_proceso (2) < count_servicios_final (3))",
                                   " (count_servicios_proceso (3) < count_servicios_final (2))",
                               }));
    EXPECT_EQ(opcionUtilizada(), 3);
    EXPECT_EQ(
        registro::cuantas("Esta opción es peor que la que tenemos guardada, liberamos memoria y seguimos."),
        1u);
    const tRec_Modulo& modulo = motor.Mapa_ModulosCabecera_Final.at("A");
    EXPECT_EQ(modulo.mapEntradas.at(1).TSID, 50);
    EXPECT_EQ(modulo.mapEntradas.at(2).TSID, 60);
    EXPECT_EQ(descartados(motor), 2u);
}

TEST(Principal, TheWorkingMapsAreEmptyAfterAWorseLastStrategy) {
    tRecalculo motor;
    cargarCadaOpcionDistinta(motor);
    correr(motor);
    EXPECT_TRUE(motor.Mapa_ModulosCabecera_Proceso.empty());
    EXPECT_TRUE(motor.Mapa_ONIDs.empty());
}

TEST(Principal, TheWorkingMapsAreEmptyAfterAKeptLastStrategy) {
    tRecalculo motor;
    cargarControlador(motor);
    fabrica::cargar(motor, fabrica::DatosServicio());
    correr(motor);
    EXPECT_TRUE(motor.Mapa_ModulosCabecera_Proceso.empty());
    EXPECT_TRUE(motor.Mapa_ONIDs.empty());
}

TEST(Principal, TheWorkingMapsHoldALastStrategyThatTied) {
    tRecalculo motor;
    cargarEmpate(motor);
    correr(motor);
    ASSERT_EQ(motor.Mapa_ModulosCabecera_Proceso.size(), 1u);
    EXPECT_EQ(motor.Mapa_ModulosCabecera_Proceso.at("A").mapSalidas.at(1).NumServicios, 1u);
    EXPECT_EQ(motor.num_servicios_procesado(), 1);
}

TEST(Principal, TheLastStrategyCanBeTheBest) {
    // The big stream fits where the small one was placed first; the one between fits nowhere. With the big
    // one first, its first service alone fills the output.
    tRecalculo motor;
    cargarControlador(motor, 2);
    fabrica::cargar(motor, {1, 7, 50, 0, 1500});
    fabrica::cargar(motor, {2, 7, 60, 0, 10000});
    fabrica::cargar(motor, {3, 7, 60, 0, 10000});
    fabrica::cargar(motor, {4, 8, 40, 0, 9000});
    fabrica::cargar(motor, {5, 8, 40, 0, 4000});
    fabrica::cargar(motor, {6, 8, 40, 0, 4000});
    correr(motor);
    EXPECT_EQ(opcionesCorridas().size(), 4u);
    EXPECT_EQ(opcionUtilizada(), 4);
    EXPECT_EQ(comparaciones().back(), " (count_servicios_proceso (3) < count_servicios_final (5))");
    EXPECT_EQ(descartados(motor), 3u);
    EXPECT_TRUE(motor.Mapa_ModulosCabecera_Proceso.empty()) << "a better strategy takes them along";
    EXPECT_TRUE(motor.Mapa_ONIDs.empty());
}

TEST(Principal, EveryStrategyStartsFromTheLoadedModules) {
    tRecalculo motor;
    cargarEmpate(motor);
    correr(motor);
    // Only a fresh module shows an output without load, once for each strategy.
    EXPECT_EQ(registro::cuantas("Salida 1 BitrateActual 0 BitrateMax 10000"), 4u);
}

TEST(Principal, TheLoadedMapsStayAsTheyWere) {
    tRecalculo motor;
    cargarEmpate(motor);
    correr(motor);
    EXPECT_EQ(motor.num_servicios_original(), 2);
    EXPECT_EQ(motor.listaServicios.size(), 2u);
    const tRec_Modulo& modulo = motor.Mapa_ModulosCabecera_Inicial.at("A");
    EXPECT_EQ(modulo.mapEntradas.at(1).TSID, 0);
    EXPECT_TRUE(modulo.mapEntradas.at(1).MapaServicios.empty());
    EXPECT_EQ(modulo.mapSalidas.at(1).NumServicios, 0u);
}

TEST(Principal, ASecondRunGivesTheSameResult) {
    tRecalculo motor;
    cargarCadaOpcionDistinta(motor);
    correr(motor);
    const auto primera = registro::hechos();
    correr(motor);
    EXPECT_EQ(registro::hechos(), primera);
    EXPECT_EQ(motor.Mapa_ModulosCabecera_Final.at("A").mapSalidas.at(1).NumServicios, 2u);
}

TEST(Principal, AnEarlierResultIsReplacedWhole) {
    tRecalculo motor;
    cargarControlador(motor);
    motor.Mapa_ModulosCabecera_Final.emplace("viejo", tRec_Modulo("viejo"));
    motor.Mapa_ONIDs_Final[9];
    motor.Mapa_ONIDs[9];
    motor.Mapa_ModulosCabecera_Proceso.emplace("viejo", tRec_Modulo("viejo"));
    EXPECT_EQ(correr(motor), 1);
    EXPECT_EQ(motor.Mapa_ModulosCabecera_Final.size(), 1u);
    EXPECT_TRUE(motor.Mapa_ONIDs_Final.empty());
}

TEST(Principal, TheSummaryCountsWhatWasPlacedAndWhatWasNot) {
    tRecalculo motor;
    cargarCadaOpcionDistinta(motor);
    correr(motor);
    EXPECT_TRUE(registro::contiene(
        "HEADEND::: **************** Recalculation: List of 4 services *******************"));
    EXPECT_TRUE(registro::contiene(
        "HEADEND::: **************** Recalculation: 2 services correctly configured *******************"));
    EXPECT_TRUE(registro::contiene(
        "HEADEND::: **************** Recalculation: 2 services discarted *******************"));
}

TEST(Principal, OnlyModelsOneAndThreeLeaveOutTheTranscodingFill) {
    const std::string transcoding = lineas::RELLENO_CON_TRANSCODING;
    tRecalculo motor;
    cargarEmpate(motor);
    correr(motor);
    EXPECT_FALSE(registro::contiene(transcoding));
    motor.Mapa_ModulosCabecera_Inicial.at("A").Modelo = 2;
    correr(motor);
    EXPECT_TRUE(registro::contiene("El tipo de cabecera es: 0"));
    EXPECT_TRUE(registro::contiene(transcoding));
}

TEST(Principal, DoesNotBalanceTheOutputs) {
    tRecalculo motor;
    cargarEmpate(motor);
    correr(motor);
    EXPECT_FALSE(registro::contiene("Load_Balance...."));
}

TEST(Principal, ClonesAttachedLeaveTheListAndTheOthersKeepTheirOrder) {
    tRecalculo motor;
    cargarControlador(motor, 1, 1);
    fabrica::cargar(motor, {1, 7, 50});
    const auto huerfano = fabrica::servicio({1, 7, 50});
    huerfano->Parent_SID = 99;
    motor.addRec_Servicio(huerfano);
    const auto primero = fabrica::cargar(motor, {1, 7, 50, 0, 1000, 1});
    const auto segundo = fabrica::cargar(motor, {1, 7, 50});
    const auto sinTranscoder = fabrica::cargar(motor, {1, 7, 50, 0, 1000, 1});
    EXPECT_EQ(correr(motor), 1);
    EXPECT_EQ(motor.listaServiciosClonados,
              (std::vector<std::shared_ptr<tRec_Servicio>>{huerfano, sinTranscoder}));
    const auto& salida = motor.Mapa_ModulosCabecera_Final.at("A").mapSalidas.at(1).MapaServicios;
    ASSERT_EQ(salida.size(), 3u);
    EXPECT_EQ(std::next(salida.begin())->second, primero);
    EXPECT_EQ(std::next(salida.begin(), 2)->second, segundo);
    EXPECT_EQ(motor.Mapa_ModulosCabecera_Final.at("A").AUX_Transcoding, 1);
}

TEST(Principal, EachCloneIsTriedOnce) {
    tRecalculo motor;
    cargarControlador(motor, 1);
    fabrica::cargar(motor, {1, 7, 50});
    for (int i = 0; i < 3; ++i)
        fabrica::cargar(motor, {1, 7, 50, 0, 1000, 1}); // there is no AUX transcoder
    correr(motor);
    EXPECT_EQ(motor.listaServiciosClonados.size(), 3u);
    EXPECT_EQ(registro::cuantas("Encontrado el Servicio Padre: 1 en la Salida"), 3u);
}

TEST(Principal, ASecondRunHasOnlyTheClonesThatWereLeft) {
    tRecalculo motor;
    cargarControlador(motor);
    fabrica::cargar(motor, {1, 7, 50});
    fabrica::cargar(motor, {1, 7, 50});
    correr(motor);
    EXPECT_EQ(motor.Mapa_ModulosCabecera_Final.at("A").mapSalidas.at(1).MapaServicios.size(), 2u);
    correr(motor);
    EXPECT_EQ(motor.Mapa_ModulosCabecera_Final.at("A").mapSalidas.at(1).MapaServicios.size(), 1u);
}

TEST(Principal, TheResultHoldsTheServicesOfTheLoadedIndex) {
    tRecalculo motor;
    cargarControlador(motor);
    const auto s = fabrica::cargar(motor, {1, 7, 50});
    correr(motor);
    EXPECT_EQ(motor.Mapa_ModulosCabecera_Final.at("A").mapEntradas.at(1).MapaServicios.begin()->second, s);
}

TEST(Principal, APlacingStrategyPausesAtItsPlaces) {
    tRecalculo motor;
    cargarControlador(motor);
    fabrica::cargar(motor, fabrica::DatosServicio());
    correr(motor);
    // Preparation; before the copies, before the pass, after it, before the counts, before keeping; then the
    // three parts of the report.
    EXPECT_EQ(registro::pausas(), (std::vector<unsigned>{1, 1, 1, 5, 1, 1, 2, 2, 2}));
}

TEST(Principal, EveryStrategyPausesAtItsPlaces) {
    tRecalculo motor;
    cargarEmpate(motor);
    correr(motor);
    // A tie with a result at hand pauses once more than the strategy kept.
    EXPECT_EQ(registro::pausas(), (std::vector<unsigned>{1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1,
                                                         1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 2, 2, 2}));
}

} // namespace Principal_test
