// Whole reports, character by character, and the same facts as JSON.

#include "report/sizing_text.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "made_findings.h"
#include "placement/documents.h"
#include "report/fitting.h"

namespace zarven::tool::sizing_text_test {
namespace {

ServiceResult service(std::uint16_t lcn, const std::string& reason) {
    ServiceResult made;
    made.stream = {1, 1001};
    made.lcn = lcn;
    made.sid = static_cast<std::uint16_t>(100 + lcn);
    made.name = "S" + std::to_string(lcn);
    made.bitrate = 5200;
    made.ca_pids = 2;
    made.reason = reason;
    return made;
}

Sizing a_sizing() {
    Sizing sizing;
    sizing.name = "Casa";
    sizing.most = 32;
    sizing.now.loaded = 20;
    sizing.now.placed = 10;
    sizing.now.left_out = 10;
    sizing.findings = {broken_limit("one", "A"), note("two")};
    sizing.addition.kind = {"", 3, false, 2, {38000, 20000}, 15, 1, 2, 3};
    sizing.addition.number = 5;
    sizing.addition.at_least = 2;
    sizing.addition.attempts = {
        {2, 14, 6, 5, 0, 0}, {3, 14, 6, 5, 0, 0}, {4, 14, 6, 5, 3, 2}, {5, 19, 1, 0, 0, 0}};
    sizing.addition.impossible = {service(7, "it is too large")};
    sizing.raises = {
        {LimitKind::pids, "A", 0, 15, 24, 22, 13, 0, 0, "modules[0].pids_max=24"},
        {LimitKind::bitrate, "B", 2, 38000, 40001, 40001, 12, 1, 0, "modules[1].outputs[1]=40001"},
        {LimitKind::one_more_output, "B", 3, 0, 38000, 38000, 11, 0, 0,
         "modules[1].outputs=[38000, 38000, 38000]"}};
    return sizing;
}

TEST(SizingText, OneOfEverything) {
    EXPECT_EQ(sizing_text(a_sizing()), R"(Casa

Broken in the head-end as it is: 1 finding
  module A: one

20 services loaded: 10 placed, 10 left out; 1 limit broken

Further modules (2 inputs, outputs 38000 + 20000 kbit/s, 15 PIDs, transcoders SD 1 HD 2)
  5 more modules: the engine then places everything that can be placed.
  With fewer than 2 no arrangement could; from there on each number was tried.
  A run that breaks a limit is no answer.

        more    placed  left out  broken
      2 to 3        14         6       0
           4        14         6       2
           5        19         1       0

Placed by no number of modules: 1 service
      7  S7  1/1001       it is too large

One limit of one module raised, with no further module
     3 more  PID budget from 15 to 24 (22 is enough)  A  --set 'modules[0].pids_max=24'
     2 more  bitrate of output 2 from 38000 to 40001  B  --set 'modules[1].outputs[1]=40001'
     1 more  one more output of 38000 kbit/s          B  --set 'modules[1].outputs=[38000, 38000, 38000]'
  Each value was run, and so was one less than is enough, which places fewer or breaks a limit.

Notes on the head-end as it is: 1 finding
  two
)");
}

/// The lines from the answer to the first empty one.
std::string answer(const Sizing& sizing) {
    const std::string text = sizing_text(sizing);
    const std::size_t begin = text.find("HD 2)\n") + 6;
    return text.substr(begin, std::min(text.find("\n\n", begin), text.size() - 1) - begin);
}

TEST(SizingText, WithWhatWasChosen) {
    Sizing sizing = a_sizing();
    sizing.are_chosen = true;
    sizing.findings.clear();
    sizing.raises.clear();
    sizing.addition.impossible.clear();
    sizing.addition.musts = 9;
    sizing.addition.attempts = {
        {2, 14, 6, 5, 0, 0, 3}, {3, 14, 6, 5, 0, 0, 4}, {4, 0, 0, 9, 0, 0, 0, true}, {5, 19, 1, 0, 0, 0, 1}};
    const std::string text = sizing_text(sizing);
    EXPECT_NE(text.find(R"(
  5 more modules: the engine then places 9 services marked as must, with 1 service withheld.
  With fewer than 2 no arrangement could; from there on each number was tried.
  What to ask for was searched for with each number, in 20000 states; a longer search may do with fewer modules.
  With 4 the engine was stopped, because it did not end within its limits; that is no answer.

        more    placed  left out     musts  withheld
           2        14         6         4         3
           3        14         6         4         4
           4         -         -         -         -
           5        19         1         9         1
)"),
              std::string::npos)
        << text;
    const nlohmann::json report = nlohmann::json::parse(sizing_json(sizing));
    EXPECT_EQ(report.at("choose"), true);
    EXPECT_EQ(report.at("add").at("tried").at(1).at("withheld"), 4);
    EXPECT_FALSE(report.at("add").at("tried").at(1).contains("stopped"));
    EXPECT_EQ(report.at("add").at("tried").at(2).at("stopped"), true);
    sizing.addition.number.reset();
    EXPECT_NE(sizing_text(sizing).find("  No number of further modules up to 32 was found to be enough.\n"),
              std::string::npos);
    sizing.addition.musts = 0;
    EXPECT_NE(sizing_text(sizing).find("in 20000 states; what is withheld is missing, too.\n"),
              std::string::npos);
    sizing.addition.musts = 9;
    sizing.addition.at_least = 0;
    sizing.addition.number = 0;
    sizing.addition.attempts = {{0, 14, 6, 0, 0, 0, 3}};
    sizing.addition.one_more = Attempt{1, 15, 5, 0, 0, 0, 3};
    EXPECT_NE(sizing_text(sizing).find(
                  "  None is needed: the engine places 9 services marked as must, with 3 services withheld.\n"
                  "  What to ask for was searched for with each number, in 20000 states.\n"),
              std::string::npos)
        << sizing_text(sizing);
    sizing.addition.one_more.reset();
    sizing.addition.attempts = {{0, 14, 6, 0, 0, 0}};
    EXPECT_EQ(sizing_text(sizing).find("searched"), std::string::npos) << "nothing was";
}

TEST(SizingText, EveryAnswer) {
    Sizing sizing = a_sizing();
    sizing.addition.attempts[2].broken = 0;
    sizing.addition.impossible.clear();
    sizing.addition.number = 1;
    sizing.addition.at_least = 1;
    EXPECT_EQ(answer(sizing), "  1 more module: the engine then places everything.\n"
                              "  Without one no arrangement could; from there on each number was tried.");
    sizing.addition.at_least = 0;
    EXPECT_EQ(answer(sizing), "  1 more module: the engine then places everything.");
    sizing.addition.number = 0;
    EXPECT_EQ(answer(sizing), "  None is needed: the engine places everything.");
    sizing.addition.number.reset();
    EXPECT_EQ(answer(sizing), "  No number of further modules up to 32 is enough.");
    sizing.is_partial = true;
    EXPECT_EQ(answer(sizing),
              "  None of the numbers tried before the interruption is enough; with fewer than 0 no "
              "arrangement could place everything.");
    sizing.is_partial = false;
    sizing.addition.at_least = 33;
    sizing.addition.attempts.clear();
    EXPECT_EQ(
        answer(sizing),
        "  Up to 32 more modules are too few: with fewer than 33 no arrangement could place everything; "
        "nothing was tried.");
    sizing.addition.shortages = {{&Bound::transcoders, {3, 4, 19}}};
    EXPECT_EQ(
        answer(sizing),
        "  No number of these modules is enough: to place everything takes 4 transcoders where there are 3; "
        "these modules add none.");
    sizing.addition.shortages = {{&Bound::inputs, {0, 1, 0}},
                                 {&Bound::bitrate, {99, 120, 1}},
                                 {&Bound::pids, {0, 1, 1}},
                                 {&Bound::places, {512, 513, 512}}};
    EXPECT_EQ(
        answer(sizing),
        "  No number of these modules is enough: to place everything takes 1 input where there are 0, and "
        "120 kbit/s of outputs where there are 99, and 1 PID where there are 0, and 513 places on outputs "
        "where there are 512; these modules add none.");
}

TEST(SizingText, MustsAloneAreWanted) {
    Sizing sizing = a_sizing();
    sizing.addition.musts = 7;
    EXPECT_EQ(answer(sizing).substr(0, answer(sizing).find('\n')),
              "  5 more modules: the engine then places all but 1 of the 7 services marked as must.");
    sizing.addition.impossible.clear();
    EXPECT_EQ(answer(sizing).substr(0, answer(sizing).find('\n')),
              "  5 more modules: the engine then places 7 services marked as must.");
    EXPECT_NE(sizing_text(sizing).find("        more    placed  left out     musts  broken\n"
                                       "      2 to 3        14         6         2       0\n"),
              std::string::npos)
        << sizing_text(sizing);
}

TEST(SizingText, BrokenLimitsAndModulesThatMakeItWorse) {
    Sizing sizing = a_sizing();
    sizing.addition.attempts[1].placed = 13;
    sizing.addition.one_more = Attempt{6, 18, 2, 1, 0, 0};
    EXPECT_NE(sizing_text(sizing).find("  A run that breaks a limit is no answer.\n"
                                       "  With 3, 6 it places less than with one fewer.\n"
                                       "\n"
                                       "        more    placed  left out  broken\n"
                                       "           2        14         6       0\n"
                                       "           3        13         6       0\n"
                                       "           4        14         6       2\n"
                                       "           5        19         1       0\n"
                                       "           6        18         2       0\n"),
              std::string::npos)
        << sizing_text(sizing);
}

/// What the report says of a mix, up to the raised limits.
std::string mix_in(const Sizing& sizing) {
    const std::string text = sizing_text(sizing);
    const std::size_t begin = text.find("A mix of ");
    return text.substr(begin, text.find("\n\n", begin) - begin);
}

TEST(SizingText, AMix) {
    Sizing sizing = a_sizing();
    Module other = sizing.addition.kind;
    other.inputs = 8;
    other.price = 90;
    sizing.mix = Mix{{{sizing.addition.kind, 2}, {other, 1}}, 92, Attempt{3, 20, 0, 0, 0, 0}, 91, 7};
    const std::string kinds =
        "A mix of 2 kinds\n"
        "  Kind 1, 1 each: 2 inputs, outputs 38000 + 20000 kbit/s, 15 PIDs, transcoders SD 1 HD 2\n"
        "  Kind 2, 90 each: 8 inputs, outputs 38000 + 20000 kbit/s, 15 PIDs, transcoders SD 1 HD 2\n";
    const std::string tried =
        "\n  For less than 91 no mix could; from there on each was tried by its price, 7 in all, with "
        "the kinds in this order.";
    EXPECT_EQ(mix_in(sizing),
              kinds +
                  "  The cheapest mix found: 2 of kind 1 and 1 of kind 2, for 92 in all; the engine "
                  "then places all that is wanted." +
                  tried);
    sizing.mix->outcome.reset();
    EXPECT_EQ(mix_in(sizing), kinds + "  No mix of up to 32 more modules is enough." + tried);
    sizing.is_partial = true;
    EXPECT_EQ(mix_in(sizing), kinds + "  None of the mixes tried before the interruption is enough." + tried);
    sizing.is_partial = false;
    sizing.mix->at_least.reset();
    EXPECT_EQ(mix_in(sizing),
              kinds + "  No mix of up to 32 more modules could be enough; nothing was tried.");
    sizing.mix->outcome = Attempt();
    sizing.mix->kinds[0].number = sizing.mix->kinds[1].number = 0;
    EXPECT_EQ(mix_in(sizing), kinds + "  None is needed.");
    sizing.mix->outcome->withheld = 3;
    sizing.mix->at_least = 0;
    sizing.mix->tried = 1;
    EXPECT_EQ(mix_in(sizing), kinds +
                                  "  None is needed, with 3 services withheld.\n"
                                  "  Each was tried by its price, 1 in all, with the kinds in this order.");
    sizing.mix->outcome->withheld = 0;
    sizing.mix->kinds[0].number = 3;
    sizing.mix->price = 3;
    sizing.mix->at_least = 1;
    EXPECT_EQ(mix_in(sizing),
              kinds + "  The cheapest found is of one kind alone: 3 of kind 1, for 3 in all; the engine then "
                      "places all that is wanted.\n"
                      "  For less than 1 no mix could; from there on each was tried by its price, 1 in all, "
                      "with the kinds in this order.");
}

TEST(SizingText, Interrupted) {
    Sizing sizing = a_sizing();
    sizing.is_partial = true;
    EXPECT_NE(
        sizing_text(sizing).find("\n\nInterrupted: this is what was found until then.\n\nFurther modules"),
        std::string::npos)
        << sizing_text(sizing);
}

TEST(SizingText, WhatRemains) {
    Sizing sizing = a_sizing();
    sizing.addition.number.reset();
    sizing.addition.remaining = {service(9, "")};
    sizing.addition.remaining[0].is_transcoded = true;
    EXPECT_NE(sizing_text(sizing).find("Left out by the best of these: 1 service\n"
                                       "      9  S9  1/1001         5200 kbit/s  2 CA PIDs, transcoded\n"),
              std::string::npos)
        << sizing_text(sizing);
}

TEST(SizingText, WhatIsLeftOutWithItsReasonsWhereNoNumberHelps) {
    Sizing sizing = a_sizing();
    sizing.addition.number.reset();
    sizing.addition.attempts.clear();
    sizing.addition.shortages = {{&Bound::transcoders, {3, 4, 19}}};
    sizing.addition.remaining = {service(9, "no transcoder is left")};
    EXPECT_NE(sizing_text(sizing).find("these modules add none.\n"
                                       "\n"
                                       "Left out by the head-end as it is: 1 service\n"
                                       "      9  S9  1/1001       no transcoder is left\n"),
              std::string::npos)
        << sizing_text(sizing);
}

TEST(SizingText, RaisesAreToldWhereSomethingIsLeftOutOnly) {
    Sizing sizing = a_sizing();
    sizing.raises.clear();
    EXPECT_NE(sizing_text(sizing).find(
                  "  None of those tried lets the engine place more without breaking a limit.\n"),
              std::string::npos);
    sizing.now.placed = 20;
    EXPECT_EQ(sizing_text(sizing).find("One limit"), std::string::npos);
}

TEST(SizingText, AModuleIsToldWithItsLabel) {
    Sizing sizing = a_sizing();
    sizing.raises[0].label = "Rack 1, slot 3";
    const std::string text = sizing_text(sizing);
    EXPECT_NE(text.find(sizing.raises[0].mac + " (Rack 1, slot 3)  --set"), std::string::npos) << text;
}

std::string everything(const TextStyle& style) {
    Sizing sizing = a_sizing();
    sizing.addition.remaining = {service(9, "")};
    sizing.addition.remaining[0].name = "Música con un nombre muy largo";
    sizing.addition.remaining[0].is_transcoded = true;
    sizing.raises[0].mac = "módulo";
    return sizing_text(sizing, style);
}

TEST(SizingText, NoLineIsLongerThanTheTerminal) {
    expect_to_fit(everything);
}

TEST(SizingText, PlainCharactersWhereThereAreNoOthers) {
    expect_plain_characters(everything);
}

TEST(SizingText, ASettingStaysInOnePiece) {
    const std::string text = sizing_text(a_sizing(), {false, true, 80});
    EXPECT_NE(text.find("  2 more  bitrate of output 2 from 38000 to 40001  B\n"
                        "          --set 'modules[1].outputs[1]=40001'\n"
                        "  1 more  one more output of 38000 kbit/s          B\n"
                        "          --set 'modules[1].outputs=[38000, 38000, 38000]'\n"),
              std::string::npos)
        << text;
}

TEST(SizingJson, TheSameFacts) {
    Sizing sizing = a_sizing();
    sizing.addition.remaining = {service(9, "")};
    const auto json = nlohmann::ordered_json::parse(sizing_json(sizing));
    EXPECT_EQ(
        json.dump(),
        R"({"name":"Casa","loaded":20,"placed":10,"left_out":10,"neither":0,"warnings":["module A: one","two"],"findings":[{"broken":true,"limit":true,"subject":"module A","problem":"one","modules":["A"]},{"broken":false,"problem":"two"}],"partial":false,"choose":false,"most":32,"add":{"module":{"model":3,)"
        R"("inputs":2,"outputs":[38000,20000],"pids_max":15,"sd_transcoders":1,"hd_transcoders":2,)"
        R"("aux_transcoders":3},"number":5,"musts":0,"at_least":2,"tried":[{"number":2,"placed":14,"left_out":6,"missing":5,"warnings":0,"broken":0,"withheld":0},)"
        R"({"number":3,"placed":14,"left_out":6,"missing":5,"warnings":0,"broken":0,"withheld":0},{"number":4,"placed":14,"left_out":6,"missing":5,"warnings":3,"broken":2,"withheld":0},)"
        R"({"number":5,"placed":19,"left_out":1,"missing":0,"warnings":0,"broken":0,"withheld":0}],"one_more":null,"withheld":[],"impossible":[{"lcn":7,"name":"S7","onid":1,"tsid":1001,)"
        R"("sid":107,"reason":"it is too large"}],"remaining":[{"lcn":9,"name":"S9","onid":1,"tsid":1001,)"
        R"("sid":109}]},"mix":null,"raise":[{"limit":"pids_max","mac":"A","from":15,"to":24,"enough":22,"placed":13,"warnings":0,"broken":0,)"
        R"("set":"modules[0].pids_max=24"},{"limit":"output_bitrate","mac":"B","output":2,"from":38000,)"
        R"("to":40001,"enough":40001,"placed":12,"warnings":1,"broken":0,"set":"modules[1].outputs[1]=40001"},{"limit":"one_more_output",)"
        R"("mac":"B","output":3,"from":0,"to":38000,"enough":38000,"placed":11,"warnings":0,"broken":0,)"
        R"("set":"modules[1].outputs=[38000, 38000, 38000]"}]})");
    sizing.addition.number.reset();
    EXPECT_TRUE(nlohmann::json::parse(sizing_json(sizing)).at("add").at("number").is_null());
}

} // namespace
} // namespace zarven::tool::sizing_text_test
