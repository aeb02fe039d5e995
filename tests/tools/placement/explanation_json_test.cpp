// Explanations as JSON, member by member and in order.

#include "placement/reasons/explanation_json.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "made_findings.h"
#include "report/explanation_fixture.h"
#include "report/result_fixture.h"

namespace zarven::tool::explanation_json_test {
namespace {

using nlohmann::ordered_json;

std::string document(const std::string& name, const std::vector<Explanation>& explanations,
                     const std::vector<Finding>& findings = {}) {
    std::string text = explanations_json_begin(result_called(name));
    for (std::size_t index = 0; index < explanations.size(); ++index)
        text += (index == 0 ? "" : ",") + explanation_json(explanations[index]);
    return text + explanations_json_end(findings);
}

TEST(ExplanationJson, AnAnswerOfAModule) {
    Explanation explanation = explanation_with_everything();
    explanation.modules = {explanation.modules.at(7)};
    const ordered_json json = ordered_json::parse(explanation_json(explanation));
    EXPECT_EQ(json.at("modules").dump(), ordered_json::parse(R"([{"mac": "bitrate", "carried_on": [],
        "limit": "bitrate", "inputs": 2, "inputs_receiving": [], "inputs_free": [2], "outputs": 2,
        "outputs_full": 0, "output": {"number": 10, "bitrate": 36500, "bitrate_max": 38000, "short_by": 6501,
        "can_be_freed": true}, "pids": {"used": 3, "max": 15, "short_by": 0},
        "transcoders": {"used": 0, "max": 2}, "could_ever": true,
        "engine_has_room": false}])")
                                             .dump());
}

TEST(ExplanationJson, AService) {
    Explanation explanation;
    explanation.service.name = "two\nlines";
    explanation.sentence = "Why.";
    explanation.findings = {broken("on \"two\" outputs")};
    explanation.transcoding = 7;
    explanation.unlisted = 4;
    EXPECT_EQ(ordered_json::parse(explanation_json(explanation)).dump(),
              ordered_json::parse(R"({"lcn": 0, "name": "two\nlines", "output_name": "", "onid": 0, "tsid": 0,
        "sid": 0, "osid": 0, "bitrate": 0, "hd": false, "scrambled": false, "ca_pids": 0,
        "transcoded": false, "clone": false, "transcoding": 7, "standing": "neither", "sentence": "Why.",
        "warnings": ["on \"two\" outputs"],
        "findings": [{"broken": true, "problem": "on \"two\" outputs"}],
        "modules": [], "modules_not_listed": 4})")
                  .dump());
}

TEST(ExplanationJson, EveryLimitHasAName) {
    std::vector<std::string> names;
    const ordered_json json = ordered_json::parse(explanation_json(explanation_with_everything()));
    for (const ordered_json& module : json.at("modules"))
        names.push_back(module.at("limit"));
    EXPECT_EQ(names, (std::vector<std::string>{"none", "none", "no_input", "no_input", "stream_not_chosen",
                                               "no_output", "service_count", "bitrate", "bitrate", "bitrate",
                                               "pids", "pids", "transcoders", "transcoders"}));
    EXPECT_TRUE(json.at("modules").at(2).at("engine_has_room"));
    EXPECT_FALSE(json.at("modules").at(13).at("engine_has_room"));
    EXPECT_FALSE(json.at("modules").at(8).at("could_ever"));
    EXPECT_EQ(json.at("modules").at(5).count("output"), 0u);
    EXPECT_EQ(json.at("modules").at(6).count("output"), 0u);
}

TEST(ExplanationJson, EveryStandingHasAName) {
    const std::vector<std::pair<Standing, std::string>> names = {
        {Standing::placed, "placed"},     {Standing::left_out, "left_out"},
        {Standing::neither, "neither"},   {Standing::placed_and_left_out, "placed_and_left_out"},
        {Standing::attached, "attached"}, {Standing::waiting, "waiting"}};
    for (const auto& [standing, name] : names) {
        Explanation explanation;
        explanation.standing = standing;
        EXPECT_EQ(ordered_json::parse(explanation_json(explanation)).at("standing"), name);
    }
}

TEST(ExplanationJson, TheDocumentIsIndentedThroughout) {
    const std::vector<Explanation> two = {explanation_with_everything(), explanation_with_everything()};
    ordered_json expected;
    expected["name"] = "Casa \"Uno\"";
    expected["causes"] = ordered_json::array();
    expected["cautions"] = ordered_json::array();
    for (const Explanation& explanation : two)
        expected["services"].push_back(ordered_json::parse(explanation_json(explanation)));
    expected["warnings"] = {"one", "two\nlines"};
    expected["findings"] = ordered_json::parse(
        R"([{"broken": true, "problem": "one"}, {"broken": false, "problem": "two\nlines"}])");
    EXPECT_EQ(document("Casa \"Uno\"", two, {broken("one"), note("two\nlines")}), expected.dump(2) + "\n");
}

TEST(ExplanationJson, ADocumentWithoutServicesAndName) {
    EXPECT_EQ(
        document("", {}),
        "{\n  \"causes\": [],\n  \"cautions\": [],\n  \"services\": [\n  ],\n  \"warnings\": [],\n  \"findings\": []\n}\n");
}

} // namespace
} // namespace zarven::tool::explanation_json_test
