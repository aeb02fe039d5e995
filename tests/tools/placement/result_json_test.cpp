// The whole JSON report, value by value and in order.

#include "placement/result_json.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "base/streams.h"
#include "report/result_fixture.h"
#include "report/strategies_fixture.h"

namespace zarven::tool::result_json_test {
namespace {

TEST(ResultJson, OneOfEverything) {
    EXPECT_EQ(result_json(result_with_everything()),
              read_text(RECALCULO_TOOL_TESTS "/placement/result_with_everything.json"));
}

TEST(ResultJson, OnOneLineItTellsTheSame) {
    const Result result = result_with_everything();
    EXPECT_EQ(result_json_on_one_line(result), nlohmann::ordered_json::parse(result_json(result)).dump());
}

TEST(ResultJson, WithStrategies) {
    const Strategies strategies = strategies_with_everything();
    auto expected = nlohmann::ordered_json::parse(R"({"name": "Casa", "causes": [], "strategies": [
        {"name": "MAX", "placed": 7, "left_out": 3, "neither": 0, "left_out_counted": 4, "inputs_used": 4, "inputs": 5,
         "warnings": 3, "broken": 2, "verdict": "surpassed", "rival": "MIN"},
        {"name": "MAX MIN", "placed": 6, "left_out": 4, "neither": 0, "left_out_counted": 4, "inputs_used": 5, "inputs": 5,
         "warnings": 0, "broken": 0, "verdict": "tie", "rival": "MAX"},
        {"name": "MIN", "placed": 8, "left_out": 2, "neither": 0, "left_out_counted": 2, "inputs_used": 5, "inputs": 5,
         "warnings": 0, "broken": 0, "verdict": "kept"},
        {"name": "MIN MAX", "placed": 5, "left_out": 5, "neither": 0, "left_out_counted": 5, "inputs_used": 3, "inputs": 123,
         "warnings": 1, "broken": 1, "verdict": "worse", "rival": "MIN"}],
        "contested": [
        {"lcn": 5, "name": "海景 Música\u001b", "onid": 1, "tsid": 1001, "placed_by": ["MAX", "MIN MAX"]},
        {"lcn": 65535, "name": "Dos", "onid": 65535, "tsid": 65535, "placed_by": ["MAX MIN", "MIN"]}]})");
    const auto plain = nlohmann::ordered_json::parse(result_json(result_with_everything()));
    for (const auto& [name, value] : plain.items())
        expected[name] = value;
    EXPECT_EQ(result_json(result_with_everything(), &strategies), expected.dump(2) + "\n");
}

TEST(ResultJson, AStrategyThatWasNotTried) {
    Strategies strategies = strategies_with_everything();
    strategies.list[0].left_out_counted = 0;
    strategies.list[0].places_everything = true;
    judge(strategies.list);
    const auto report = nlohmann::json::parse(result_json(Result(), &strategies));
    EXPECT_EQ(report.at("strategies").at(3).at("verdict"), "not tried");
    EXPECT_EQ(report.at("strategies").at(3).at("rival"), "MAX");
}

TEST(ResultJson, AnEmptyResult) {
    const auto expected = nlohmann::ordered_json::parse(
        R"({"causes": [], "cautions": [], "modules": [], "left_out": [], "clones_waiting": [],
        "neither": [], "warnings": [], "findings": [], "summary": {"loaded": 0, "placed": 0, "left_out": 0, "neither": 0,
        "clones_attached": 0, "clones_waiting": 0}})");
    EXPECT_EQ(result_json(Result()), expected.dump(2) + "\n");
}

} // namespace
} // namespace zarven::tool::result_json_test
