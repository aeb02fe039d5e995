// What the page tells of the streams.

#include "report/page/result_streams.h"

#include <gtest/gtest.h>

#include "report/page/result_page_fixture.h"

namespace zarven::tool::result_streams_test {
namespace {

using result_page_fixture::body_of;
using result_page_fixture::everything;
using result_page_fixture::result_with;
using result_page_fixture::service;

TEST(Page, AStreamTellsWhereItIsReceivedAndWhatItLacks) {
    const std::string page = everything();
    EXPECT_TRUE(has(
        page, R"(B</span></th><td class="number">2/7</td><td class="number">0</td><td class="number">0</td>)"
              R"(<td><a href="#module-2"><span class="mac">M2</span> input 1</a> </td>)"));
    EXPECT_TRUE(
        has(page, R"(<td class="number">1/1001</td><td class="number">2</td><td class="number">0</td>)"));
    EXPECT_TRUE(has(
        page, R"(<td class="number">1/1002</td><td class="number">0</td><td class="number lacking">1</td>)"
              R"(<td><span class="note">none</span></td>)"));
}

TEST(Page, AServiceOnTwoInputsIsOnePlaced) {
    ServiceResult one = service({1, 1}, 4000);
    one.outputs = {1};
    Result result = result_with({1, 4000, 8000, 1, 512, {one}});
    result.modules[0].inputs = {{1, true, {1, 1}, {one}}, {2, true, {1, 1}, {one}}};
    result.left_out = {{{1, 1}, {one}}}; // and left out at once, under two streams
    result.left_out.push_back({{1, 2}, {one}});
    EXPECT_TRUE(has(body_of(result), R"(<td class="number">1/1</td><td class="number">1</td>)"
                                     R"(<td class="number lacking">1</td>)"));
}

TEST(Page, TheLegendHasWhatCanBeToldApart) {
    Result result;
    result.modules.emplace_back();
    for (std::uint16_t number = 1; number <= 48; ++number)
        result.modules[0].inputs.push_back({number, true, {1, number}, {}});
    EXPECT_EQ(occurrences(body_of(result), "<li><span class=\"mark\">"), 48u);
    result.modules[0].inputs.push_back({49, true, {1, 49}, {}});
    EXPECT_EQ(occurrences(body_of(result), "<li><span class=\"mark\">"), 0u);
    EXPECT_TRUE(has(body_of(result), "<a href=\"#streams\">at the end</a>"));
}

} // namespace
} // namespace zarven::tool::result_streams_test
