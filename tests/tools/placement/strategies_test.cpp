// The driver's rule by itself, and the strategies of many random head-ends against what the driver does.

#include "placement/strategies.h"

#include <map>
#include <set>

#include <gtest/gtest.h>

#include "base/streams.h"
#include "failure_message.h"
#include "headend/headend_json.h"
#include "placement/engine_by_hand.h"
#include "placement/random_headend.h"
#include "placement/result_json.h"
#include "placement/running/host.h"
#include "tries.h"

namespace zarven::tool::strategies_test {
namespace {

using Verdicts = std::vector<std::pair<Verdict, std::size_t>>;

/// The verdicts, each with its rival, for strategies that leave so many out.
Verdicts verdicts(const std::array<std::size_t, strategy_count>& left_out) {
    std::array<Strategy, strategy_count> list;
    for (std::size_t index = 0; index < strategy_count; ++index) {
        list[index].left_out_counted = left_out[index];
        list[index].places_everything = left_out[index] == 0;
    }
    judge(list);
    Verdicts judged;
    for (const Strategy& strategy : list)
        judged.emplace_back(strategy.verdict, strategy.rival);
    return judged;
}

TEST(Judge, TheFewestLeftOutIsKept) {
    EXPECT_EQ(verdicts({2, 3, 4, 5}),
              (Verdicts{{Verdict::kept, 0}, {Verdict::worse, 0}, {Verdict::worse, 0}, {Verdict::worse, 0}}));
    EXPECT_EQ(
        verdicts({5, 6, 4, 5}),
        (Verdicts{{Verdict::surpassed, 2}, {Verdict::worse, 0}, {Verdict::kept, 2}, {Verdict::worse, 2}}));
}

TEST(Judge, TheEarliestOnATie) {
    EXPECT_EQ(verdicts({2, 2, 2, 2}),
              (Verdicts{{Verdict::kept, 0}, {Verdict::tie, 0}, {Verdict::tie, 0}, {Verdict::tie, 0}}));
    EXPECT_EQ(
        verdicts({3, 2, 3, 2}),
        (Verdicts{{Verdict::surpassed, 1}, {Verdict::kept, 1}, {Verdict::worse, 1}, {Verdict::tie, 1}}));
}

TEST(Judge, BetterAgainAndAgain) {
    EXPECT_EQ(
        verdicts({4, 3, 2, 1}),
        (Verdicts{
            {Verdict::surpassed, 1}, {Verdict::surpassed, 2}, {Verdict::surpassed, 3}, {Verdict::kept, 3}}));
}

TEST(Judge, ATieWithOneThatIsSurpassedLater) {
    EXPECT_EQ(
        verdicts({4, 4, 3, 4}),
        (Verdicts{{Verdict::surpassed, 2}, {Verdict::tie, 0}, {Verdict::kept, 2}, {Verdict::worse, 2}}));
}

TEST(Judge, NoneIsTriedAfterOneThatPlacesEverything) {
    EXPECT_EQ(
        verdicts({0, 0, 0, 1}),
        (Verdicts{
            {Verdict::kept, 0}, {Verdict::not_tried, 0}, {Verdict::not_tried, 0}, {Verdict::not_tried, 0}}));
    EXPECT_EQ(
        verdicts({1, 1, 0, 0}),
        (Verdicts{{Verdict::surpassed, 2}, {Verdict::tie, 0}, {Verdict::kept, 2}, {Verdict::not_tried, 2}}));
    EXPECT_EQ(verdicts({1, 1, 1, 0}),
              (Verdicts{{Verdict::surpassed, 3}, {Verdict::tie, 0}, {Verdict::tie, 0}, {Verdict::kept, 3}}));
}

TEST(Judge, ACountOfNoneIsNotEverything) {
    // 65,536 services left out, which the engine counts as none.
    std::array<Strategy, strategy_count> list;
    list[2].left_out_counted = 1;
    judge(list);
    EXPECT_EQ(list[0].verdict, Verdict::kept);
    EXPECT_EQ(list[1].verdict, Verdict::tie);
    EXPECT_EQ(list[2].verdict, Verdict::worse);
    EXPECT_EQ(list[3].verdict, Verdict::tie);
}

TEST(Judge, TheKeptOneIsFound) {
    for (const std::size_t kept : {0u, 1u, 2u, 3u}) {
        std::array<Strategy, strategy_count> list;
        for (Strategy& strategy : list)
            strategy.left_out_counted = 2;
        list[kept].left_out_counted = 1;
        judge(list);
        EXPECT_EQ(index_of_kept(list), kept);
    }
}

/// The engine's log is off for the life of the test.
class StrategiesOf : public testing::Test {
private:
    host::Log no_log{""};
};

Strategies strategies_of_text(const char* text) {
    return strategies_of(read_headend("f", text), "f");
}

/// MAX and MAX MIN leave a service out, MIN and MIN MAX place everything.
const char* const everything_by_min = R"({
  "modules": [
    { "mac": "A", "controller": true, "inputs": 1, "outputs": [12000], "pids_max": 2 },
    { "mac": "B", "inputs": 1, "outputs": [6000, 9000, 15000], "pids_max": 6 }
  ],
  "services": [
    { "lcn": 3, "name": "S1", "onid": 1, "tsid": 1, "sid": 1, "bitrate": 4000 },
    { "lcn": 5, "name": "S2", "onid": 1, "tsid": 2, "sid": 2, "bitrate": 2000, "ca_pids": 2 },
    { "lcn": 2, "name": "S3", "onid": 1, "tsid": 2, "sid": 3, "bitrate": 5000, "ca_pids": 2 }
  ]
})";

TEST_F(StrategiesOf, EachAlone) {
    const Strategies strategies = strategies_of_text(everything_by_min);
    std::vector<std::string> names;
    std::vector<std::size_t> placed;
    std::vector<std::size_t> left_out;
    for (const Strategy& strategy : strategies.list) {
        names.push_back(strategy.name);
        placed.push_back(strategy.placed);
        left_out.push_back(strategy.left_out);
        EXPECT_EQ(strategy.left_out_counted, strategy.left_out);
        EXPECT_EQ(strategy.inputs, 2u);
        EXPECT_EQ(strategy.inputs_used, 2u);
        EXPECT_EQ(strategy.findings, 0u);
    }
    EXPECT_EQ(names, (std::vector<std::string>{"MAX", "MAX MIN", "MIN", "MIN MAX"}));
    EXPECT_EQ(placed, (std::vector<std::size_t>{2, 2, 3, 3}));
    EXPECT_EQ(left_out, (std::vector<std::size_t>{1, 1, 0, 0}));
    EXPECT_EQ(index_of_kept(strategies.list), 2u);
    EXPECT_EQ(strategies.list[3].verdict, Verdict::not_tried);
}

TEST_F(StrategiesOf, TheServicesOnWhichTheyDiffer) {
    const Strategies strategies = strategies_of_text(everything_by_min);
    ASSERT_EQ(strategies.contested.size(), 1u);
    EXPECT_EQ(strategies.contested[0].service.name, "S2");
    EXPECT_EQ(to_string(strategies.contested[0].service.stream), "1/2");
    EXPECT_EQ(strategies.contested[0].is_placed_by,
              (std::array<bool, strategy_count>{false, false, true, true}));
}

TEST_F(StrategiesOf, WhatTheKeptOneLeavesOutComesFirst) {
    const Strategies strategies =
        strategies_of(read_headend("f", read_text(RECALCULO_EXAMPLES "/small.json")), "f");
    std::vector<unsigned> lcns;
    for (const Contested& contested : strategies.contested)
        lcns.push_back(contested.service.lcn);
    EXPECT_EQ(lcns, (std::vector<unsigned>{41, 11, 12, 13, 81, 82}));
    EXPECT_FALSE(strategies.contested.at(0).is_placed_by[0]);
    EXPECT_TRUE(strategies.contested.at(1).is_placed_by[0]);
}

TEST_F(StrategiesOf, AServiceThatNonePlacesIsNotAmongThem) {
    const Strategies strategies = strategies_of_text(R"({
      "modules": [{"mac": "A", "controller": true, "inputs": 2, "outputs": [5000], "pids_max": 0}],
      "services": [{"lcn": 1, "name": "fits", "onid": 1, "tsid": 1, "sid": 1, "bitrate": 4999},
                   {"lcn": 2, "name": "does not", "onid": 1, "tsid": 2, "sid": 2, "bitrate": 5000}]})");
    for (const Strategy& strategy : strategies.list) {
        EXPECT_EQ(strategy.placed, 1u);
        EXPECT_EQ(strategy.left_out, 1u);
        EXPECT_EQ(strategy.inputs_used, 1u);
        EXPECT_EQ(strategy.inputs, 2u);
    }
    EXPECT_EQ(strategies.list[3].verdict, Verdict::tie);
    EXPECT_TRUE(strategies.contested.empty());
}

TEST_F(StrategiesOf, WithoutServicesThereIsNothingToChoose) {
    const Strategies strategies =
        strategies_of_text(R"({"modules": [{"mac": "A", "inputs": 1, "outputs": [1], "pids_max": 0}]})");
    EXPECT_EQ(index_of_kept(strategies.list), 0u);
    EXPECT_EQ(strategies.list[1].verdict, Verdict::not_tried);
    EXPECT_EQ(strategies.list[0].inputs_used, 0u);
    EXPECT_TRUE(strategies.contested.empty());
}

TEST_F(StrategiesOf, TheFindingsOfTheAuditAreCounted) {
    const std::string path = RECALCULO_TOOL_TESTS "/placement/lagging_pids.json";
    const Strategies strategies = strategies_of(read_headend(path, read_text(path)), path);
    EXPECT_EQ(strategies.list[index_of_kept(strategies.list)].findings, 3u);
    EXPECT_EQ(strategies.list[index_of_kept(strategies.list)].broken, 1u);
}

TEST_F(StrategiesOf, ARefusalIsTold) {
    const std::string message = failure_message([] {
        strategies_of_text(R"({"modules": [{"mac": "", "inputs": 1, "outputs": [1], "pids_max": 0}]})");
    });
    EXPECT_EQ(message, "f: /modules/0: module \"\": found an empty MAC, expected one that names the module");
}

/// A tight head-end; streams share LCNs, so that the engine's exchanges fail now and then.
Headend random_headend(unsigned seed) {
    const ModuleSizes sizes{{1, 3}, {1, 3}, {6000, 15000, 3000}, {0, 8}, {0, 3}, {0, 2}};
    Dice dice(seed);
    Headend headend;
    const unsigned modules = dice.one_of({2, 4});
    for (unsigned index = 0; index < modules; ++index)
        headend.modules.push_back(random_module(dice, letter(index), index == 0, sizes));
    const unsigned streams = dice.one_of({2, 8});
    for (std::uint16_t tsid = 1; tsid <= streams; ++tsid)
        for (std::uint16_t lcn = 1; lcn <= 6; ++lcn) {
            if (dice.up_to(4) < 3)
                continue;
            Service made = service(lcn, tsid, dice.one_of({1000, 6000, 1000}));
            made.ca_pids = made.ca_pids_max = dice.once_in(2) ? dice.up_to(4) : std::uint16_t{0};
            made.transcoding = dice.once_in(4);
            made.video_format = dice.once_in(3) ? 4 : 0;
            headend.services.push_back(made);
            if (dice.once_in(6))
                headend.clones.push_back(clone_of(made, dice.up_to(1)));
        }
    return headend;
}

/// Takes the clones off again, which the driver attaches when it has chosen.
void detach_clones(EngineRun& run) {
    for (auto& [mac, module] : run.engine.Mapa_ModulosCabecera_Final) {
        module.AUX_Transcoding = 0;
        const auto detach = [](tMapaServicios& services) {
            for (auto it = services.begin(); it != services.end();)
                it = it->second->Parent_SID != 0 ? services.erase(it) : std::next(it);
        };
        for (auto& [number, input] : module.mapEntradas)
            detach(input.MapaServicios);
        for (auto& [number, output] : module.mapSalidas)
            detach(output.MapaServicios);
    }
    run.engine.listaServiciosClonados = run.clones;
}

std::size_t entries_left_out(const EngineRun& run) {
    std::size_t entries = 0;
    for (const auto& [onid, network] : run.engine.Mapa_ONIDs_Final)
        for (const auto& [tsid, stream] : network.MapRec_TSIDs)
            entries += stream.MapRec_Services.size();
    return entries;
}

class StrategiesAndDriver : public testing::Test {
protected:
    /// Compares the kept strategy with what the driver did, everything that a report tells. Gives the
    /// strategies.
    static Strategies compare(const Headend& headend) {
        const Strategies strategies = strategies_of(headend, "f");
        const std::size_t kept = index_of_kept(strategies.list);
        EngineRun driven = load_engine(headend, "f");
        run_engine(driven, "f");
        detach_clones(driven);
        EngineRun alone = load_engine(headend, "f");
        run_strategy(alone, kept, "f");
        const Result result = result_of(driven, "");
        EXPECT_EQ(result_json(result), result_json(result_of(alone, "")));
        EXPECT_EQ(strategies.list[kept].placed, result.counts.placed);
        EXPECT_EQ(strategies.list[kept].left_out, result.counts.left_out);
        EXPECT_EQ(strategies.list[kept].left_out_counted, entries_left_out(driven));
        EXPECT_EQ(strategies.list[kept].findings, result.findings.size());
        EXPECT_EQ(strategies.list[kept].broken, broken_in(result).all());
        return strategies;
    }

private:
    host::Log no_log{""};
};

TEST_F(StrategiesAndDriver, TheKeptStrategyIsTheDriversResult) {
    std::map<Verdict, int> seen;
    std::set<std::size_t> kept;
    std::size_t findings = 0;
    for (unsigned seed = 0; seed < tries(400) && !HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        const Strategies strategies = compare(random_headend(seed));
        kept.insert(index_of_kept(strategies.list));
        for (const Strategy& strategy : strategies.list) {
            ++seen[strategy.verdict];
            findings += strategy.findings;
        }
    }
    // Nothing of this would be worth much if the head-ends were all alike.
    EXPECT_EQ(seen.size(), 5u);
    EXPECT_EQ(kept.size(), strategy_count);
    EXPECT_GT(findings, 0u);
}

TEST_F(StrategiesAndDriver, WhatAStrategyHasLost) {
    const std::string path = RECALCULO_TOOL_TESTS "/placement/failed_exchange.json";
    const Strategies strategies = compare(read_headend(path, read_text(path)));
    for (std::size_t index = 0; index < strategy_count; ++index)
        EXPECT_EQ(strategies.list[index].neither, strategies.list[index].name == "MIN" ? 1u : 0u) << index;
}

TEST_F(StrategiesAndDriver, OnTheExamples) {
    for (const std::string name : {"small", "medium"}) {
        const std::string path = RECALCULO_EXAMPLES "/" + name + ".json";
        compare(read_headend(path, read_text(path)));
    }
}

} // namespace
} // namespace zarven::tool::strategies_test
