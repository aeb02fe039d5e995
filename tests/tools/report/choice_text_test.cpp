// The text of a choice.

#include "report/choice_text.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "made_findings.h"
#include "placement/documents.h"
#include "report/choice_fixture.h"
#include "report/fitting.h"
#include "report/page/choice_page.h"

namespace zarven::tool::choice_text_test {
namespace {

TEST(ChoiceText, OneOfEverything) {
    EXPECT_EQ(choice_text(choice_with_everything(), "today.json"), R"(Casa

3 of 1234 services withheld: 841 placed in the place of 754, 1 gained, 2 lost

                        all   chosen  at most   wanted
  Musts placed            1        3        4        5
  Value                1000     2000     2500     3000
  Services placed       754      841

Must be placed and is not: 1 service
      6  Seis  1/1001       No input is free.
It is not proven that they cannot be placed: the bound would allow 4 of the 5.

Against today.json: 1 service in another place, 700 where they were, 2 no longer placed
      7  Siete  1/1001       A in 1 out 1 → B in 2 out 1

Withheld: 3 services
      1  Uno   1/1001       value 1
      2  Dos�  1/1001       must, value 0
      3  Tres  1/1001       value 7

Gained: 1 service
      4  Cuatro  1/1001       must, value 3; A in 1 out 1+2

Lost: 2 services
      1  Uno    1/1001       value 1; A in 1 out 1, B no input out 2 → withheld
      5  Cinco  1/1001       value 1; B in 2 out 1 → left out

123456 states tried, 1 run of the engine
)");
}

TEST(ChoiceText, WhatMightBeGivenBack) {
    const std::string note = "The search ended before each service withheld was tried once more: some may be "
                             "asked for without loss.";
    ChoiceReport report = choice_with_everything();
    EXPECT_EQ(remainder_of(report), "");
    report.is_given_back = false;
    EXPECT_EQ(remainder_of(report), note);
    EXPECT_NE(
        choice_text(report, "").find("2 lost\nThe search ended before each service withheld was tried "),
        std::string::npos)
        << choice_text(report, "");
    EXPECT_NE(choice_page(report, "").find("<p class=\"note\">" + note), std::string::npos);
    EXPECT_TRUE(nlohmann::json::parse(choice_json(report)).at("not_given_back"));
    report.withheld.resize(1);
    EXPECT_EQ(remainder_of(report), note);
    report.withheld[0].value = 0;
    EXPECT_EQ(remainder_of(report), "") << "no choice asks for it";
    report.withheld.clear();
    EXPECT_EQ(remainder_of(report), "");
}

TEST(ChoiceText, WhatDoesNotCountIsNoMeasure) {
    ChoiceReport report = choice_with_everything();
    EXPECT_EQ(doubt_of(report), "");
    report.all.findings = {note("n")};
    EXPECT_EQ(doubt_of(report), "");
    report.all.findings = {broken_limit("one", "A")};
    EXPECT_EQ(doubt_of(report),
              "Something is broken with everything asked for: that placement does not count, even where it "
              "places more than the choice.");
    EXPECT_NE(choice_text(report, "").find("2 lost\nSomething is broken with everything asked for: that "),
              std::string::npos)
        << choice_text(report, "");
    report.all.findings.clear();
    report.all.is_stopped = true;
    EXPECT_EQ(doubt_of(report),
              "With everything asked for the engine does not end within its limits: there is "
              "no placement to compare the choice with.");
    report.chosen.findings = {broken_limit("one", "A")};
    EXPECT_EQ(doubt_of(report),
              "Something is broken with everything asked for, and no choice was found that breaks nothing.");
}

TEST(ChoiceText, SaysWhereEverythingAskedForComesToMore) {
    ChoiceReport report = choice_with_everything();
    report.withheld.push_back(valued(8, "Ocho", 0, false));
    report.all.musts = report.chosen.musts;
    report.all.value = report.chosen.value;
    EXPECT_EQ(doubt_of(report), "");
    ++report.all.value;
    EXPECT_EQ(doubt_of(report), "With everything asked for more is reached, a value of 2001 in the place of "
                                "2000: that asks for 1 service of value 0, too, which no choice does.");
    EXPECT_NE(choice_text(report, "").find("2 lost\nWith everything asked for more is reached, "),
              std::string::npos)
        << choice_text(report, "");
    report.withheld.push_back(valued(9, "Nueve", 0, false));
    ++report.all.musts;
    EXPECT_EQ(doubt_of(report), "With everything asked for more is reached, 4 of 5 musts in the place of 3: "
                                "that asks for 2 services of value 0, too, which no choice does.");
    report.chosen.findings = {broken_limit("one", "A")};
    EXPECT_EQ(doubt_of(report), "With everything asked for nothing is broken: that asks for 2 services of "
                                "value 0, too, which no choice does.");
}

TEST(ChoiceText, NothingBetterWasFound) {
    ChoiceReport report;
    report.all.counts.loaded = report.chosen.counts.loaded = 1;
    report.all.counts.placed = report.chosen.counts.placed = 1;
    report.value = {1, 1};
    EXPECT_EQ(choice_text(report, ""), R"(Nothing better than asking for all 1 service was found: 1 placed

                        all   chosen  at most   wanted
  Services placed         1        1        1        1

0 states tried, 0 runs of the engine
)");
}

TEST(ChoiceText, SaysThatItWasInterrupted) {
    ChoiceReport report = choice_with_everything();
    report.is_interrupted = true;
    EXPECT_EQ(verdict_of(report),
              "3 of 1234 services withheld, when it was interrupted: 841 placed in the place "
              "of 754, 1 gained, 2 lost");
    report.withheld.clear();
    EXPECT_EQ(
        verdict_of(report),
        "Nothing better than asking for all 1234 services was found, when it was interrupted: 754 placed");
}

TEST(ChoiceText, SaysWhatIsProvenOfTheMusts) {
    ChoiceReport report = choice_with_everything();
    EXPECT_EQ(proof_of_musts(report),
              "It is not proven that they cannot be placed: the bound would allow 4 of the 5.");
    report.musts.most = 3;
    EXPECT_EQ(proof_of_musts(report),
              "It is proven that no arrangement places more than 3 of the 5 that must be placed.");
    report.missed.clear();
    EXPECT_EQ(proof_of_musts(report), "");
}

TEST(ChoiceText, ProgressTellsWhatThereIsToReach) {
    ChoosingProgress progress;
    progress.best.musts = 1;
    progress.best.value = 7;
    progress.best.placed = 3;
    progress.states = 1;
    Headend headend;
    headend.services.resize(4);
    using Parts = std::vector<std::string>;
    EXPECT_EQ(progress_in_figures(progress, headend), (Parts{"3 placed", "1 state"}));
    headend.services[0].must = headend.services[3].must = true;
    EXPECT_EQ(progress_in_figures(progress, headend), (Parts{"1 of 2 musts", "3 placed", "1 state"}));
    headend.services[0].value = 5;
    EXPECT_EQ(progress_in_figures(progress, headend),
              (Parts{"1 of 2 musts", "value 7", "3 placed", "1 state"}));
    // Two variants of one, and one that is not asked for.
    headend.services[0].one_of = headend.services[3].one_of = "X";
    headend.services[2].must = true;
    EXPECT_EQ(progress_in_figures(progress, headend)[0], "1 of 2 musts");
    headend.services[2].ask = false;
    EXPECT_EQ(progress_in_figures(progress, headend)[0], "1 of 1 musts");
}

TEST(ChoiceText, WhatIsBrokenComesFirstAndNotesComeLast) {
    ChoiceReport report = choice_with_everything();
    report.all.findings = {{{}, "one", true, false, {}}, {{}, "two", false, false, {}}};
    report.chosen.findings = {{{}, "three", false, false, {}}};
    const std::string text = choice_text(report, "");
    EXPECT_EQ(text.find("Broken with everything asked for: 1 finding\n  one\n\n3 of 1234"), 6u) << text;
    EXPECT_NE(text.find("1 run of the engine\n\nNotes with everything asked for: 1 finding\n  two\n\n"
                        "Notes: 1 finding\n  three\n"),
              std::string::npos)
        << text;
}

TEST(ChoiceText, FitsTheTerminal) {
    const auto report = [](const TextStyle& style) {
        return choice_text(choice_with_everything(), "today.json", style);
    };
    expect_to_fit(report);
    expect_plain_characters(report);
}

} // namespace
} // namespace zarven::tool::choice_text_test
