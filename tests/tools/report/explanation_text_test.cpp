// Whole explanations, character by character.

#include "report/explanation_text.h"

#include <gtest/gtest.h>

#include "base/streams.h"
#include "report/explanation_fixture.h"
#include "report/fitting.h"

namespace zarven::tool::explanation_text_test {
namespace {

TEST(ExplanationText, EveryAnswer) {
    EXPECT_EQ(explanation_text(explanation_with_everything()),
              read_text(RECALCULO_TOOL_TESTS "/report/explanation_with_everything.txt"));
}

Explanation plain() {
    Explanation explanation;
    explanation.service.lcn = 5;
    explanation.service.name = "Uno";
    explanation.service.stream = {1, 2};
    explanation.service.bitrate = 4000;
    explanation.sentence = "Why.";
    return explanation;
}

TEST(ExplanationText, AServiceWithoutNeedsHasNoColumnForTranscoders) {
    Explanation explanation = plain();
    explanation.modules = {answer_with_room("M")};
    EXPECT_EQ(explanation_text(explanation),
              "LCN 5 \"Uno\" · stream 1/2 · 4000 kbit/s\n"
              "  Why.\n"
              "    Module  Answer    Inputs  Output               kbit/s         PIDs\n"
              "    M       has room  2 free       1  200 + 4000 of 38000  3 + 0 of 15\n");
}

TEST(ExplanationText, AModuleIsToldWithItsLabel) {
    Explanation explanation = plain();
    explanation.modules = {answer_with_room("M")};
    explanation.modules[0].label = "Rack 1";
    TextStyle narrow;
    narrow.width = 60;
    for (const std::string& text : {explanation_text(explanation), explanation_text(explanation, narrow)})
        EXPECT_NE(text.find("    M (Rack 1)  has room"), std::string::npos) << text;
}

TEST(ExplanationText, ModulesThatAreNotListed) {
    Explanation explanation = plain();
    explanation.unlisted = 1;
    const std::string heading = "LCN 5 \"Uno\" · stream 1/2 · 4000 kbit/s\n  Why.\n";
    EXPECT_EQ(explanation_text(explanation), heading + "    1 module has no input free\n");
    explanation.unlisted = 2;
    EXPECT_EQ(explanation_text(explanation), heading + "    2 modules have no input free\n");
    explanation.modules = {answer_with_room("M")};
    const std::string text = explanation_text(explanation);
    EXPECT_EQ(text.substr(text.rfind("    ")), "    2 other modules have no input free\n");
}

TEST(ExplanationText, ACloneAndAnOddTranscoding) {
    Explanation explanation = plain();
    explanation.service.is_clone = true;
    explanation.service.parent_sid = 105;
    explanation.transcoding = 7;
    EXPECT_EQ(explanation_text(explanation),
              "LCN 5 \"Uno\" · stream 1/2 · clone of SID 105 · transcoding 7\n  Why.\n");
}

TEST(ExplanationText, WhatStandsAfterTheLastOne) {
    EXPECT_EQ(explanations_caveat_text({}), "\nThese are the figures of the placement as it is. With a limit "
                                            "changed the engine places all anew: try it with --set.\n");
    EXPECT_EQ(broken_elsewhere_text({}, {}), "");
    EXPECT_EQ(broken_elsewhere_text({1, 2}, {}),
              "\n1 limit and 2 services broken in the whole head-end; recalculo run lists them\n");
}

std::string everything(const TextStyle& style) {
    Explanation explanation = explanation_with_everything();
    explanation.unlisted = 12;
    return explanation_text(explanation, style);
}

TEST(ExplanationText, NoLineIsLongerThanTheTerminal) {
    expect_to_fit(everything);
}

TEST(ExplanationText, PlainCharactersWhereThereAreNoOthers) {
    expect_plain_characters(everything);
    EXPECT_EQ(everything({false, false, 0}).find("LCN 12 \"???? Musica?\" - stream 1/1002 - 8000 kbit/s"),
              0u);
}

TEST(ExplanationText, WhereThereIsNoRoomForColumnsEachAnswerHasItsFigures) {
    Explanation explanation = plain();
    explanation.modules = {answer_with_room("M")};
    const std::string above = "LCN 5 \"Uno\" · stream 1/2 · 4000 kbit/s\n  Why.\n";
    EXPECT_EQ(explanation_text(explanation, {false, true, 71}),
              above + "    Module  Answer    Inputs  Output               kbit/s         PIDs\n"
                      "    M       has room  2 free       1  200 + 4000 of 38000  3 + 0 of 15\n");
    EXPECT_EQ(explanation_text(explanation, {false, true, 69}), above +
                                                                    "    Module  Answer\n"
                                                                    "    M       has room; input 2 free\n");
    EXPECT_EQ(explanation_text(explanation, {false, true, 40}), above +
                                                                    "    Module  Answer\n"
                                                                    "    M       has room; input 2 free\n");
    const std::string narrow = explanation_text(explanation, {false, true, 33});
    EXPECT_EQ(narrow.substr(narrow.find("    Module")), "    Module  Answer\n"
                                                        "    M       has room; input 2\n"
                                                        "            free\n");
}

TEST(ExplanationText, EveryAnswerOnAUsualTerminal) {
    EXPECT_EQ(explanation_text(explanation_with_everything(), {false, true, 80}),
              read_text(RECALCULO_TOOL_TESTS "/report/explanation_on_80_columns.txt"));
}

} // namespace
} // namespace zarven::tool::explanation_text_test
