// What the page tells of services without a place, and why they have none.

#include "report/page/result_unplaced.h"

#include <gtest/gtest.h>

#include "report/page/result_page_fixture.h"

namespace zarven::tool::result_unplaced_test {
namespace {

using result_page_fixture::body_of;
using result_page_fixture::everything;

TEST(Page, AServiceThatTheEngineHasLostIsListed) {
    const std::string page = everything();
    EXPECT_TRUE(
        has(page, R"(<h2 id="neither-title">Neither placed nor left out <span class="note">1</span>)"));
    EXPECT_TRUE(has(page, R"(<a href="#neither">)"));
    EXPECT_TRUE(has(page, R"(<td class="number">11</td><td><bdi>Canal Uno</bdi></td>)"));
    EXPECT_FALSE(has(body_of(Result()), "neither-title"));
}

TEST(Page, ReasonsHaveAColumnIfThereAreAny) {
    Result result = result_with_everything();
    result.neither.clear();
    result.left_out.at(0).services.at(0).reason.clear();
    result.clones_waiting.at(0).reason.clear();
    EXPECT_FALSE(has(body_of(result), "Reason"));
    result.left_out.at(0).services.at(0).reason = "No input receives <its> stream.";
    const std::string page = body_of(result);
    EXPECT_EQ(occurrences(page, R"(<th scope="col" class="wide">Reason</th>)"), 1u);
    EXPECT_TRUE(has(page, R"(<td class="wide">No input receives &lt;its&gt; stream.</td></tr>)"));
    EXPECT_EQ(occurrences(page, R"(<th scope="rowgroup" colspan="4"><span class="line"><span class="mark">)"),
              1u);
}

TEST(Page, BeginsWithTheCauses) {
    const std::string page = everything();
    EXPECT_LT(page.find("id=\"causes\""), page.find("id=\"glance\""));
    EXPECT_TRUE(has(
        page, "PIDs are short on module M1<details><summary>Which one</summary><p>"
              "<a href=\"#left-out-1\">700 <bdi>A name that is longer than the column is wide</bdi></a>"));
    EXPECT_TRUE(has(page, "<a href=\"#neither-1\">11 <bdi>Canal Uno</bdi></a>"));
    EXPECT_TRUE(has(page, "<p>Of the limits, this one raised alone helps most: "));
    EXPECT_TRUE(has(page, "<li><a href=\"#causes\">Why services are not placed</a></li>"));
    Result placed = result_with_everything();
    placed.left_out.clear();
    placed.neither.clear();
    EXPECT_FALSE(has(result_page(placed), "#causes"));
}

TEST(Page, AFreeInputForManyStreamsIsToldOnce) {
    Result result = result_with_everything();
    StreamResult& stream = result.left_out[0];
    stream.services[0].cause = Cause::unused_input;
    EXPECT_TRUE(has(result_page(result), ">No input is free for stream 1/1002.</td>"));
    result.left_out.push_back(stream);
    result.left_out.back().services[0].stream = {1, 1003};
    const std::string page = result_page(result);
    EXPECT_FALSE(has(page, "No input is free for stream 1/1002."));
    const std::string link =
        "<td class=\"wide\"><a href=\"#" +
        page.substr(page.find("cause-"), page.find('"', page.find("cause-")) - page.find("cause-"));
    EXPECT_EQ(occurrences(page, link + "\">A free input, as told above</a></td>"), 2u);
}

} // namespace
} // namespace zarven::tool::result_unplaced_test
