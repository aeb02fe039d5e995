// Both forms of a comparison, whole.

#include "placement/documents.h"
#include "report/comparison_text.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "made_findings.h"
#include "report/comparison_fixture.h"
#include "report/fitting.h"

namespace zarven::tool::comparison_text_test {
namespace {

Comparison a_comparison() {
    Comparison comparison = changed_headend();
    comparison.before.name = "Casa";
    comparison.before.counts.loaded = 5;
    comparison.before.counts.placed = 3;
    comparison.before.counts.left_out = 2;
    comparison.after.counts.loaded = 1;
    comparison.after.counts.placed = 1;
    comparison.after.counts.neither = 1;
    comparison.before.findings = {broken_limit("one", "A"), note("two")};
    comparison.after.findings = {broken("one")};
    comparison.gained = {change(1, "Uno", {}, {{"A", 1, {1, 2}}})};
    comparison.lost = {change(2, "Doscientos", {{"A", 1, {1}}}, {})};
    comparison.lost[0].absence_after = Absence::not_there;
    comparison.moved = {change(3, "Tres", {{"A", 1, {1}}, {"B", 0, {2}}}, {{"B", 2, {1}}})};
    comparison.unmoved = 4;
    comparison.never_placed = 5;
    return comparison;
}

TEST(ComparisonText, WhatWasNotAskedFor) {
    Comparison comparison = a_comparison();
    comparison.after.counts.not_asked_for = 3;
    EXPECT_NE(
        comparison_text(comparison, {"old.json", "new.json"})
            .find("After  new.json: 1 of 1 service placed, 1 neither placed nor left out, 3 not asked for; "
                  "1 service broken\n"),
        std::string::npos);
}

/// And services that one line-up alone has, and a module with a label.
Comparison with_another_lineup() {
    Comparison comparison = a_comparison();
    const auto not_there = [](ServiceChange made, Absence ServiceChange::*side) {
        made.*side = Absence::not_there;
        return made;
    };
    comparison.added = {not_there(change(4, "Cuatro", {}, {{"A", 1, {1}}}), &ServiceChange::absence_before)};
    comparison.removed = {not_there(change(5, "Cinco", {{"A", 1, {1}}}, {}), &ServiceChange::absence_after),
                          not_there(change(6, "Seis", {{"B", 1, {1}}}, {}), &ServiceChange::absence_after)};
    comparison.labels = {{"A", "Rack 1\x1B"}};
    return comparison;
}

TEST(ComparisonText, TheLineupIsToldApartAndModulesByTheirLabels) {
    const std::string text = comparison_text(with_another_lineup(), {"a", "b"});
    const auto has = [&text](const char* part) { return text.find(part) != text.npos; };
    EXPECT_TRUE(has(
        "1 gained, 1 lost, 1 added, 2 removed, 1 moved, 4 in the same place (1 renamed), 5 placed in neither\n"))
        << text;
    EXPECT_TRUE(has("\nAdded to the line-up: 1\n"
                    "      4  Cuatro      1/1001       not there → A (Rack 1\uFFFD) in 1 out 1\n"))
        << text;
    EXPECT_TRUE(has("\nRemoved from the line-up: 2\n"
                    "      5  Cinco       1/1001       A (Rack 1\uFFFD) in 1 out 1 → not there\n"
                    "      6  Seis        1/1001       B in 1 out 1 → not there\n"))
        << text;
    EXPECT_TRUE(has("\n  A (Rack 1\uFFFD) in 1  1/10 → free\n")) << text;
    EXPECT_TRUE(has("\n  A (Rack 1\uFFFD)  PIDs: 15 of 15\n")) << text;
}

TEST(ComparisonText, ALineupThatOnlyGrewOrShrankIsAnother) {
    Comparison grown = with_another_lineup();
    grown.removed.clear();
    EXPECT_NE(comparison_text(grown, {"a", "b"}).find("1 lost, 1 added, 0 removed, 1 moved"),
              std::string::npos);
    Comparison shrunk = with_another_lineup();
    shrunk.added.clear();
    EXPECT_NE(comparison_text(shrunk, {"a", "b"}).find("1 lost, 0 added, 2 removed, 1 moved"),
              std::string::npos);
}

TEST(ComparisonText, OneOfEverything) {
    EXPECT_EQ(comparison_text(a_comparison(), {"old.json", "new.json"}),
              R"(Broken before: 1 finding
  module A: one

Broken after: 1 finding
  one

1 gained, 1 lost, 1 moved, 4 in the same place (1 renamed), 5 placed in neither

Before old.json (Casa): 3 of 5 services placed; 1 limit broken
After  new.json: 1 of 1 service placed, 1 neither placed nor left out; 1 service broken

Inputs tuned to another stream: 1
  B in 1  1/30 → 1/40

Moved: 1
      3  Tres        1/1001       A in 1 out 1, B no input out 2 → B in 2 out 1

Renamed: 1
  LCN 4 Cuatro (SID 104)  → LCN 5 Five as FIVE (SID 105)

Gained: 1
      1  Uno         1/1001       left out → A in 1 out 1+2

Lost: 1
      2  Doscientos  1/1001       A in 1 out 1 → not there

Modules gone: 1
  X

Modules new: 1
  Y

Inputs freed: 1
  A in 1  1/10 → free

Inputs taken: 1
  A in 2  free → 1/20

Became tight: 2
  A  inputs: 2 of 2 in use
  A  PIDs: 15 of 15

No longer tight: 1
  B  output 1: 0 of 38000 kbit/s

Change on air in 3 steps: at most 1 service off the air at a time
  1  A in 2  free → 1/20
  2  B in 1  1/30 → 1/40  off the air: LCN 3
  3  A in 1  1/10 → free  back: LCN 3

Notes before: 1 finding
  two
)");
}

TEST(ComparisonText, AServiceThatTheEngineHasLost) {
    Comparison comparison;
    comparison.lost = {change(2, "Dos", {{"A", 1, {1}}}, {})};
    comparison.lost[0].absence_after = Absence::neither;
    const std::string text = comparison_text(comparison, {"a", "b"});
    EXPECT_NE(text.find("A in 1 out 1 → neither\n"), std::string::npos) << text;
}

TEST(ComparisonText, WhatIsTheSameIsNotListed) {
    EXPECT_EQ(comparison_text(Comparison(), {"a", "b"}),
              "0 gained, 0 lost, 0 moved, 0 in the same place, 0 placed in neither\n\n"
              "Before a: 0 of 0 services placed\nAfter  b: 0 of 0 services placed\n");
}

std::string everything(const TextStyle& style) {
    Comparison comparison = a_comparison();
    comparison.gained[0].service.name = "Música con un nombre muy largo";
    comparison.moved[0].before[0].mac = "módulo";
    comparison.inputs_freed[0].mac = "un módulo con una dirección muy larga";
    return comparison_text(comparison, {"o\x1B.json", "ñ.json"}, style);
}

TEST(ComparisonText, NoLineIsLongerThanTheTerminal) {
    expect_to_fit(everything);
}

TEST(ComparisonText, PlainCharactersWhereThereAreNoOthers) {
    expect_plain_characters(everything);
    EXPECT_NE(everything({false, false, 0}).find("left out -> A in 1 out 1+2\n"), std::string::npos);
}

TEST(ComparisonText, AChangeGoesBeneathItsServiceOnANarrowTerminal) {
    const std::string text = comparison_text(a_comparison(), {"a", "b"}, {false, true, 48});
    EXPECT_NE(text.find("\n  3  Tres        1/1001\n"
                        "     A in 1 out 1, B no input out 2 → B in 2 out\n"
                        "     1\n"),
              std::string::npos)
        << text;
}

TEST(ComparisonJson, TheSameFacts) {
    const auto json = nlohmann::ordered_json::parse(comparison_json(a_comparison()));
    EXPECT_EQ(
        json.dump(),
        R"({"summary":{"gained":1,"lost":1,"moved":1,"unmoved":4,"renamed":1,"never_placed":5,"added":0,"removed":0},)"
        R"("before":{"name":"Casa","loaded":5,"placed":3,"left_out":2,"neither":0,"warnings":["module A: one","two"],"findings":[{"broken":true,"limit":true,"subject":"module A",)"
        R"("problem":"one","modules":["A"]},{"broken":false,"problem":"two"}],"cautions":[]},)"
        R"("after":{"name":"","loaded":1,"placed":1,"left_out":0,"neither":1,"warnings":["one"],"findings":[{"broken":true,"problem":"one"}],"cautions":[]},)"
        R"("gained":[{"lcn":1,"name":"Uno","onid":1,"tsid":1001,"sid":101,"before":[],)"
        R"("after":[{"mac":"A","input":1,"outputs":[1,2]}]}],)"
        R"("lost":[{"lcn":2,"name":"Doscientos","onid":1,"tsid":1001,"sid":102,)"
        R"("before":[{"mac":"A","input":1,"outputs":[1]}],"after":null}],)"
        R"("moved":[{"lcn":3,"name":"Tres","onid":1,"tsid":1001,"sid":103,)"
        R"("before":[{"mac":"A","input":1,"outputs":[1]},{"mac":"B","input":0,"outputs":[2]}],)"
        R"("after":[{"mac":"B","input":2,"outputs":[1]}]}],)"
        R"("renamed":[{"before":{"lcn":4,"name":"Cuatro","onid":1,"tsid":1001,"sid":104,"output_name":""},)"
        R"("after":{"lcn":5,"name":"Five","onid":1,"tsid":1001,"sid":105,"output_name":"FIVE"}}],)"
        R"("modules_gone":["X"],"modules_new":["Y"],)"
        R"("inputs_freed":[{"mac":"A","number":1,"before":{"onid":1,"tsid":10},"after":null}],)"
        R"("inputs_taken":[{"mac":"A","number":2,"before":null,"after":{"onid":1,"tsid":20}}],)"
        R"("inputs_retuned":[{"mac":"B","number":1,"before":{"onid":1,"tsid":30},)"
        R"("after":{"onid":1,"tsid":40}}],)"
        R"("became_tight":[{"limit":"inputs","mac":"A","used":2,"max":2},)"
        R"({"limit":"pids","mac":"A","used":15,"max":15}],)"
        R"("relaxed":[{"limit":"bitrate","mac":"B","output":1,"used":0,"max":38000}],)"
        R"("order":{"steps":[{"input":{"mac":"A","number":2,"before":null,"after":{"onid":1,"tsid":20}},)"
        R"("goes_off":[],"comes_back":[],"off_air":0},)"
        R"({"input":{"mac":"B","number":1,"before":{"onid":1,"tsid":30},"after":{"onid":1,"tsid":40}},)"
        R"("goes_off":[{"lcn":3,"name":"Tres","onid":1,"tsid":1001,"sid":103}],"comes_back":[],"off_air":1},)"
        R"({"input":{"mac":"A","number":1,"before":{"onid":1,"tsid":10},"after":null},"goes_off":[],)"
        R"("comes_back":[{"lcn":3,"name":"Tres","onid":1,"tsid":1001,"sid":103}],"off_air":0}],)"
        R"("most_off_air":1,"is_least":true},)"
        R"("added":[],"removed":[],"labels":[]})");
}

TEST(ComparisonJson, TellsTheLineupApartAndTheLabels) {
    const auto json = nlohmann::ordered_json::parse(comparison_json(with_another_lineup()));
    EXPECT_EQ(json.at("summary").at("added"), 1);
    EXPECT_EQ(json.at("summary").at("removed"), 2);
    EXPECT_EQ(json.at("added").at(0).at("name"), "Cuatro");
    EXPECT_EQ(json.at("added").at(0).at("before"), nullptr);
    EXPECT_EQ(json.at("removed").at(1).at("name"), "Seis");
    EXPECT_EQ(json.at("labels").dump(), R"([{"mac":"A","label":"Rack 1\u001b"}])");
}

} // namespace
} // namespace zarven::tool::comparison_text_test
