// What the page tells of a module, its inputs and outputs.

#include "report/page/result_modules.h"

#include <gtest/gtest.h>

#include "report/page/result_page_fixture.h"

namespace zarven::tool::result_modules_test {
namespace {

using result_page_fixture::body_of;
using result_page_fixture::everything;
using result_page_fixture::result_with;
using result_page_fixture::service;

TEST(Page, AModuleTellsWhatItIsAndUses) {
    const std::string page = everything();
    EXPECT_EQ(occurrences(page, R"(<article class="module searched")"), 2u);
    EXPECT_EQ(occurrences(page, R"(<span class="badge">controller</span>)"), 1u);
    EXPECT_TRUE(has(page, R"(PIDs <b>3</b> of 8 <span class="note">(5 by the engine&apos;s count)</span>)"));
    EXPECT_TRUE(has(page, R"(Transcoders <b>1</b> of 2 <span class="note">(limit 0 with HD)</span>)"));
    EXPECT_TRUE(has(page, "AUX transcoders <b>0</b> of 1<"));
    EXPECT_TRUE(has(page, "<span>Input 2</span><span class=\"note\">free</span>"));
    EXPECT_TRUE(has(page, "<span>stream 1/1001</span><span class=\"note\">4 services, 12,200 kbit/s</span>"));
    EXPECT_TRUE(has(page, "<span>On no input</span><span class=\"note\">1 service</span>"));
}

TEST(Page, AnOutputTellsItsFigures) {
    const std::string page = everything();
    EXPECT_TRUE(has(page, R"(aria-label="Output 1: 12,200 of 38,000 kbit/s, stream A 12,200")"));
    EXPECT_TRUE(has(page, "<b>12,200</b> of 38,000 kbit/s</span> <span class=\"right\">2 of 512 services"));
    EXPECT_TRUE(has(page, "<b>Output 1</b> <span class=\"right\">32.1 %</span>"));
    EXPECT_TRUE(has(page, "<b>Output 10</b> <span class=\"right\">105.3 %</span>"));
    EXPECT_TRUE(has(page, "<b>Output 1</b> <span class=\"right\">–</span>"));
}

TEST(Page, StreamsShareOutTheFilledPartOfABar) {
    const std::string page = body_of(result_with(
        {1, 20000, 40000, 3, 512, {service({1, 1}, 6000), service({1, 2}, 14000), service({1, 1}, 0)}}));
    EXPECT_TRUE(has(page, R"(<rect class="c0" x="0.00%" width="15.00%" height="100%"/>)"));
    EXPECT_TRUE(has(page, R"(<rect class="c1" x="15.00%" width="35.00%" height="100%"/>)"));
    EXPECT_TRUE(has(page, "stream A 6,000, stream B 14,000\""));
}

TEST(Page, ABarIsNeverFullerThanFull) {
    EXPECT_TRUE(has(body_of(result_with({1, 4294967295u, 38000, 1, 512, {service({1, 1}, 8000)}})),
                    R"(x="0.00%" width="100.00%")"));
    EXPECT_TRUE(
        has(body_of(result_with({1, 5, 0, 1, 512, {service({1, 1}, 5)}})), R"(x="0.00%" width="0.00%")"));
}

TEST(Page, ANarrowSegmentHasNoLetters) {
    EXPECT_TRUE(
        has(body_of(result_with({1, 70, 1000, 1, 512, {service({1, 1}, 70)}})), R"(y="50%">A</text>)"));
    EXPECT_FALSE(has(body_of(result_with({1, 69, 1000, 1, 512, {service({1, 1}, 69)}})), "<text"));
}

TEST(Page, ACloneTakesNoPartOfABar) {
    ServiceResult clone = service({1, 2}, 5000);
    clone.is_clone = true;
    const std::string page = body_of(result_with({1, 4000, 8000, 1, 512, {service({1, 1}, 4000), clone}}));
    EXPECT_TRUE(has(page, R"(width="50.00%")"));
    EXPECT_FALSE(has(page, "stream B"));
}

TEST(Page, ATunedInputWithoutServicesIsFree) {
    const std::string page = everything();
    EXPECT_TRUE(has(page, "<span>stream 2/7</span><span class=\"note\">free</span>"));
}

TEST(Page, AModuleWithoutInputsOrOutputsSaysSo) {
    Result result;
    result.modules.emplace_back();
    const std::string page = body_of(result);
    EXPECT_TRUE(has(page, "This module has no inputs."));
    EXPECT_TRUE(has(page, "This module has no outputs."));
}

TEST(Page, AnOutputTellsItsReserveAndWhatItLacks) {
    const auto figures = [](std::uint32_t bitrate) {
        OutputResult output{1, bitrate, 38000, 1, 512, {service({1, 1}, bitrate)}, 950};
        return body_of(result_with(output));
    };
    EXPECT_TRUE(has(figures(37050), "of 38,000 kbit/s <span class=\"note\">reserve 950</span></span>"));
    EXPECT_TRUE(has(figures(37051), "<span class=\"note\">reserve 950</span> <span class=\"lacking\">1 too "
                                    "much</span></span>"));
    EXPECT_FALSE(has(everything(), "reserve"));
}

TEST(Page, AnInputTellsHowMuchOfItsStreamIsCarried) {
    Result result = result_with_everything();
    result.modules[0].inputs[0].net_rate = 33790;
    EXPECT_TRUE(
        has(body_of(result), "<span class=\"note\">4 services, 12,200 of 33,790 kbit/s, 36.1 %</span>"));
    result.modules[0].inputs[0].net_rate = 12200;
    EXPECT_TRUE(has(body_of(result), "12,200 of 12,200 kbit/s, 100.0 %"));
}

} // namespace
} // namespace zarven::tool::result_modules_test
