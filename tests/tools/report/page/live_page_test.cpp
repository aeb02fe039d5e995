#include "report/page/live_page.h"

#include <gtest/gtest.h>

#include "failure_message.h"

namespace zarven::tool {
namespace {

const std::string empty_page =
    R"(<p>Planner</p><script type="application/json" id="plan"></script><p>End</p>)";

TEST(LivePage, HasTheHeadendInItsPlace) {
    EXPECT_EQ(
        live_page("page", empty_page, "{ \"modules\": [] }\n"),
        "<p>Planner</p><script type=\"application/json\" id=\"plan\">{ \"modules\": [] }\n</script><p>End</p>");
}

TEST(LivePage, NoNameEndsThePlace) {
    EXPECT_EQ(live_page("page", empty_page, R"({"name": "</script><!--"})"),
              R"(<p>Planner</p><script type="application/json" id="plan">{"name": "\u003C/script>\u003C!--"})"
              "</script><p>End</p>");
}

TEST(LivePage, IsNoOtherPageAndNoneThatHasAHeadend) {
    const std::string expected =
        "page: found no place for a head-end, expected the page that scripts/web.sh builds";
    EXPECT_EQ(failure_message([] { live_page("page", "<p>Planner</p>", "{}"); }), expected);
    const std::string full = live_page("page", empty_page, "{}");
    EXPECT_EQ(failure_message([&] { live_page("page", full, "{}"); }), expected);
}

} // namespace
} // namespace zarven::tool
