// A whole report, character by character, and its sentences.

#include "report/drill_text.h"

#include <gtest/gtest.h>

#include "report/drill_fixture.h"

namespace zarven::tool::drill_text_test {
namespace {

bool has(const std::string& text, const std::string& part) {
    return text.find(part) != text.npos;
}

TEST(DrillText, OneOfEverything) {
    EXPECT_EQ(drill_text(drill_with_everything(), FailuresShown::all), R"(Casa

Broken before anything fails: 1 finding
  module A: one

20 services loaded: 18 placed, 2 left out; 2 of 3 musts placed; 1 limit broken
2 modules, 3 inputs and 1 stream taken out one by one: 3 take services off the air, 3 without effect. After a new run 3 of these lose services, at worst 3, with 1 must among them: module A (Rack 1), the controller.

What fails, the worst first
                                        off air    saved     lost  besides    musts    moved   gained
  module A (Rack 1), the controller           2        1        1        2        1        1        1  without a new run fewer are lost: 2
  input 2 of A (Rack 1), stream 1/1001        2        0        2        0        1        0        0  the new run was stopped
  stream 1/7                                  1        0        1        0        0        0        0  the new run breaks something and does not count

Spare modules (2 inputs, outputs 38000 kbit/s, 15 PIDs, transcoders SD 0 HD 0)
  2 are enough: then no module or input that fails alone loses any of the 2 musts placed now.

   spares  missing  failures    worst
        0        0         2        1
        1   broken    broken   broken
        2        0         0        0

The worst case: module A (Rack 1), the controller

Lost: 1 service
      1  Uno�  1/1001       must

Lost besides: 2 services
      2  Dos   1/1001
      3  Tres  1/1001

Off the air until the new run: 1 service
      4  Cuatro  1/1001

Gained: 1 service
      5  Cinco  1/1001

Moved: 1 service
      7  Siete  1/1001       B (Rack 2) in 1 out 1 → B (Rack 2) in 2 out 3

Notes before anything fails: 1 finding
  two
)");
}

TEST(DrillText, ByDefaultTheWorstTwentyAndNoMoves) {
    Drill drill = drill_with_everything();
    drill.failures.resize(20, drill.failures.back());
    std::string text = drill_text(drill);
    EXPECT_FALSE(has(text, "more, which --all tells"));
    EXPECT_TRUE(has(text, "\nMoved: 1 service, which --all tells\n"));
    EXPECT_FALSE(has(text, "Siete"));
    drill.failures.push_back(drill.failures.back());
    text = drill_text(drill);
    EXPECT_TRUE(has(text, "\n  1 more, which --all tells\n")) << text;
    EXPECT_FALSE(has(drill_text(drill, FailuresShown::all), "--all"));
}

TEST(DrillText, WithoutMustsNoneAreTold) {
    Drill drill = drill_with_everything();
    drill.musts = 0;
    const std::string text = drill_text(drill);
    EXPECT_FALSE(has(text, "musts "));
    EXPECT_TRUE(has(text, "loses any of the 2 services placed now"));
    EXPECT_TRUE(has(verdict_of(drill), "at worst 3: module A (Rack 1), the controller."));
}

TEST(DrillText, EveryVerdict) {
    Drill drill = drill_with_everything();
    EXPECT_FALSE(has(verdict_of(drill), "not tried"));
    drill.taken_out = {2, 4, 2};
    EXPECT_TRUE(has(verdict_of(drill),
                    "2 modules, 4 inputs and 2 streams taken out one by one: 3 take services off the air, 3 "
                    "without effect, 2 not tried. "));
    for (DrilledFailure& failure : drill.failures)
        failure.lost = failure.lost_besides = {};
    EXPECT_TRUE(has(verdict_of(drill), ". After a new run nothing is lost."));
    drill.failures.clear();
    EXPECT_TRUE(has(verdict_of(drill), ". Nothing was lost."));
    const std::string text = drill_text(drill);
    EXPECT_FALSE(has(text, "worst case"));
    drill.is_partial = true;
    EXPECT_TRUE(has(drill_text(drill), "\nInterrupted: this is what was found until then.\n"));
}

TEST(DrillText, EveryAnswer) {
    Spare spare = *drill_with_everything().spare;
    EXPECT_EQ(answer_of(spare, false, true),
              "2 are enough: then no module or input that fails alone loses any of the 2 musts placed now.");
    spare.number = 1;
    spare.kept = 1;
    EXPECT_EQ(answer_of(spare, false, false),
              "1 is enough: then no module or input that fails alone loses any of the 1 service placed now.");
    spare.number = 0;
    EXPECT_EQ(answer_of(spare, false, true),
              "None is needed: no module or input that fails alone loses any of the 1 must placed now.");
    spare.number.reset();
    EXPECT_EQ(answer_of(spare, false, true), "Up to 8 are not enough: with each number a module or an input "
                                             "fails and loses some of the 1 must placed now.");
    EXPECT_EQ(answer_of(spare, true, true), "None of the numbers tried before the interruption is enough.");
}

TEST(DrillText, RemarksOnWhatTheNumbersDoNotTell) {
    DrilledFailure failure;
    EXPECT_EQ(remark_on(failure), "");
    failure.saved = {drilled(1, "Uno")};
    failure.lost_besides = {drilled(2, "Dos")};
    EXPECT_EQ(remark_on(failure), "");
    failure.lost_besides.push_back(drilled(3, "Tres"));
    EXPECT_EQ(remark_on(failure), "without a new run fewer are lost: 1");
    failure.run = NewRun::impossible;
    EXPECT_EQ(remark_on(failure), "no module is left");
}

} // namespace
} // namespace zarven::tool::drill_text_test
