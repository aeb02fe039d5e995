// The progress read off lines as the engine logs them.

#include "placement/running/progress.h"

#include <memory>
#include <vector>

#include <gtest/gtest.h>

namespace zarven::tool::progress_test {
namespace {

std::string after(const std::vector<std::string_view>& lines) {
    Progress progress;
    for (const std::string_view line : lines)
        take_note(progress, line);
    return to_string(progress);
}

constexpr std::string_view max = "BEGIN OPTION: MAX ----------------------------------------------------->";
constexpr std::string_view max_min =
    "BEGIN OPTION: MAX MIN ------------------------------------------------->";
constexpr std::string_view min = "BEGIN OPTION: MIN ----------------------------------------------------->";
constexpr std::string_view min_max =
    "BEGIN OPTION: MIN MAX ------------------------------------------------->";
constexpr std::string_view optimize = " RecalculationAlgorithm ---> STATUS_OPTIMIZE";

TEST(Progress, BeginsBeforeTheFirstStrategy) {
    EXPECT_EQ(after({}), "prepare");
    EXPECT_EQ(after({"**************** START Service Recalculation *******************"}), "prepare");
}

TEST(Progress, KnowsTheStrategies) {
    EXPECT_EQ(after({max}), "strategy 1 of 4, MAX: fill");
    EXPECT_EQ(after({max_min}), "strategy 2 of 4, MAX MIN: fill");
    EXPECT_EQ(after({min}), "strategy 3 of 4, MIN: fill");
    EXPECT_EQ(after({min_max}), "strategy 4 of 4, MIN MAX: fill");
    EXPECT_EQ(after({"BEGIN OPTION: MEDIUM ----"}), "prepare");
}

TEST(Progress, KnowsThePhases) {
    const auto phase = [](std::string_view line) { return after({max, line}).substr(22); };
    EXPECT_EQ(phase(" RecalculationAlgorithm ---> STATUS_CHECK_EMPTY_INPUT"), "check");
    EXPECT_EQ(phase(" RecalculationAlgorithm ---> STATUS_UNCOMPLETE_MODULES"), "complete");
    EXPECT_EQ(phase(" RecalculationAlgorithm ---> STATUS_UNIFY_INPUTS"), "unify");
    EXPECT_EQ(phase(optimize), "optimize 1");
    EXPECT_EQ(phase("END OPTION  <----------------------------------------------------->"), "compare");
    EXPECT_EQ(phase("Mapa_Servicios_Procesado NOT EMPTY"), "compare");
    for (const std::string_view kind : {"TRANSCODING", "NO_TRASCODING"}) {
        const std::string fill =
            " RecalculationAlgorithm ---> STATUS_FILL_INPUTS_SERVICE_" + std::string(kind);
        EXPECT_EQ(after({max, optimize, fill}), "strategy 1 of 4, MAX: fill");
    }
}

TEST(Progress, PassesOverTheOtherLines) {
    for (const std::string_view line :
         {"", " RecalculationAlgorithm ---> FIN STATUS_INPUT_RECALCULATION",
          "status_algorithm = STATUS_UNCOMPLETE_MODULES    ----  1", " Modulos NO vacios y compatibles"})
        EXPECT_EQ(after({max, optimize, line}), "strategy 1 of 4, MAX: optimize 1") << line;
}

TEST(Progress, CountsTheOptimizationsOfAStrategy) {
    EXPECT_EQ(after({max, optimize, " RecalculationAlgorithm ---> STATUS_CHECK_EMPTY_INPUT", optimize}),
              "strategy 1 of 4, MAX: optimize 2");
    EXPECT_EQ(after({max, optimize, optimize, max_min, optimize}), "strategy 2 of 4, MAX MIN: optimize 1");
}

TEST(Progress, CountsTheServicesThatAnOptimizationSearchesFor) {
    const std::string_view service = "soy el servicio nº%d";
    EXPECT_EQ(after({max, optimize, service, service}), "strategy 1 of 4, MAX: optimize 1, service 2");
    EXPECT_EQ(after({max, optimize, service, optimize}), "strategy 1 of 4, MAX: optimize 2");
    EXPECT_EQ(after({max, optimize, service, max_min}), "strategy 2 of 4, MAX MIN: fill");
}

TEST(Progress, EndsWithTheClones) {
    EXPECT_EQ(after({max, "Una vez que hemos terminado de reordenar todo, se hora de transferir"}),
              "attach clones");
    EXPECT_EQ(after({max, "**************** END Service Recalculation *******************"}), "done");
}

TEST(Progress, ServicesAreLeftDuringAPassOnly) {
    Progress progress;
    EXPECT_FALSE(is_placing(progress));
    take_note(progress, max);
    EXPECT_TRUE(is_placing(progress));
    take_note(progress, optimize);
    EXPECT_TRUE(is_placing(progress));
    take_note(progress, "Mapa_Servicios_Procesado NOT EMPTY");
    EXPECT_FALSE(is_placing(progress));
}

TEST(Progress, CountsTheServicesLeft) {
    tRecalculo engine;
    EXPECT_EQ(services_left(engine), 0u);
    const auto service = std::make_shared<tRec_Servicio>();
    engine.Mapa_ONIDs[1].MapRec_TSIDs[1].MapRec_Services = {{1, service}, {2, service}};
    engine.Mapa_ONIDs[1].MapRec_TSIDs[2].MapRec_Services = {{1, service}};
    engine.Mapa_ONIDs[2].MapRec_TSIDs[1].MapRec_Services = {{1, service}};
    EXPECT_EQ(services_left(engine), 4u);
}

} // namespace
} // namespace zarven::tool::progress_test
