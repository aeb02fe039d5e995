// Whole reports, character by character.

#include "report/report_text.h"

#include <gtest/gtest.h>

#include "base/streams.h"
#include "report/report_fixture.h"

namespace zarven::tool {
namespace {

TEST(TextReport, OneOfEverything) {
    EXPECT_EQ(text_report(result_with_everything()),
              read_text(RECALCULO_TOOL_TESTS "/report/report_with_everything.txt"));
}

TEST(TextReport, AnEmptyResult) {
    EXPECT_EQ(text_report(Result()),
              "0 services loaded: 0 placed, 0 left out; 0 of 0 inputs in use on 0 modules\n");
}

/// The part about what is left out, of a report with two services of one stream.
std::string left_out(const std::string& first_reason, const std::string& second_reason) {
    ServiceResult first;
    first.name = first.output_name = "Uno";
    first.reason = first_reason;
    ServiceResult second = first;
    second.reason = second_reason;
    Result result;
    result.left_out = {{{1, 2}, {first, second}}};
    const std::string text = text_report(result);
    const std::size_t begin = text.find('\n') + 1;
    return text.substr(begin, text.find("\n\n") + 1 - begin);
}

TEST(TextReport, AReasonThatServicesOfAStreamShareStandsOnce) {
    EXPECT_EQ(left_out("Why.", "Why."), "  Stream 1/2 · 2 services\n"
                                        "    Why.\n"
                                        "        0  Uno                   0 kbit/s\n"
                                        "        0  Uno                   0 kbit/s\n");
}

TEST(TextReport, ReasonsThatDifferStandWithTheirServices) {
    EXPECT_EQ(left_out("Why.", "Because."), "  Stream 1/2 · 2 services\n"
                                            "        0  Uno                   0 kbit/s\n"
                                            "           Why.\n"
                                            "        0  Uno                   0 kbit/s\n"
                                            "           Because.\n");
}

/// The bar of the only output of a module.
std::string bar(std::uint32_t used, std::uint32_t max) {
    ModuleResult module;
    module.outputs = {{1, used, max, 0, 512, {}}};
    Result result;
    result.modules = {module};
    const std::string text = text_report(result);
    const std::string before = "  Output 1  ";
    const std::size_t begin = text.find(before) + before.size();
    return text.substr(begin, text.find("  ", begin) - begin);
}

std::string cells(int filled) {
    std::string text;
    for (int cell = 0; cell < 24; ++cell)
        text += cell < filled ? "█" : "░";
    return text;
}

TEST(TextReport, ABarIsEmptyForNothingAndFullForAllOnly) {
    EXPECT_EQ(bar(0, 38000), cells(0));
    EXPECT_EQ(bar(1, 38000), cells(1));
    EXPECT_EQ(bar(19000, 38000), cells(12));
    EXPECT_EQ(bar(37999, 38000), cells(23));
    EXPECT_EQ(bar(38000, 38000), cells(24));
}

TEST(TextReport, ABarSurvivesOddFigures) {
    EXPECT_EQ(bar(4294966296u, 38000), cells(24));
    EXPECT_EQ(bar(4294967294u, 4294967295u), cells(23));
    EXPECT_EQ(bar(5, 0), cells(0));
}

} // namespace
} // namespace zarven::tool
