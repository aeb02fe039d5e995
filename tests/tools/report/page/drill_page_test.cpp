// The text of the page of a drill.

#include "report/page/drill_page.h"

#include <gtest/gtest.h>

#include "report/drill_fixture.h"
#include "report/page/page_text.h"

namespace zarven::tool::drill_page_test {
namespace {

std::string body_of(const Drill& drill) {
    return body_of_page(drill_page(drill));
}

TEST(DrillPage, EveryFailureHasItsRow) {
    const std::string page = body_of(drill_with_everything());
    EXPECT_TRUE(has(page,
                    R"(<tr data-stream="" data-mac="A"><td><bdi>module A (Rack 1), the controller</bdi></td>)"
                    R"(<td class="number">2</td><td class="number roomy">1</td><td class="number">1</td>)"
                    R"(<td class="number">2</td><td class="number">1</td><td class="number">1</td>)"
                    R"(<td class="number roomy">1</td><td class="wide">)"))
        << page;
    EXPECT_TRUE(has(
        page, "without a new run fewer are lost: 2. Lost: 1 Uno\uFFFD (must). Lost besides: 2 Dos, 3 Tres"));
    EXPECT_TRUE(has(page, "the new run was stopped. too long. Lost: 1 Uno (must), 4 Cuatro"));
    EXPECT_TRUE(has(page, R"(<tr data-stream="1/7" data-mac=""><td><bdi>stream 1/7</bdi>)"));
    EXPECT_EQ(occurrences(page, "<tr data-stream"), 4u);
    EXPECT_TRUE(has(page, "B (Rack 2) in 1 out 1 → B (Rack 2) in 2 out 3"));
}

TEST(DrillPage, SparesAndSummary) {
    Drill drill = drill_with_everything();
    const std::string page = body_of(drill);
    EXPECT_TRUE(has(page, "2 are enough: then no module or input"));
    EXPECT_TRUE(has(page, R"(<tr><td class="number">1</td><td class="number">broken</td>)"));
    EXPECT_TRUE(has(
        page,
        R"(<tr><td class="number">0</td><td class="number">0</td><td class="number">2</td><td class="number">1</td></tr>)"));
    EXPECT_TRUE(has(page, "Musts lost at worst"));
    EXPECT_TRUE(has(page, "Broken before anything fails"));
    EXPECT_FALSE(has(page, "verdict good"));
    drill.spare.reset();
    drill.failures.clear();
    drill.worst_moved.clear();
    drill.findings.clear();
    drill.musts = 0;
    drill.is_partial = true;
    const std::string bare = body_of(drill);
    EXPECT_FALSE(has(bare, "Spare modules"));
    EXPECT_FALSE(has(bare, "Musts"));
    EXPECT_FALSE(has(bare, "<table"));
    EXPECT_TRUE(has(bare, "Interrupted: this is what was found until then. "));
    EXPECT_TRUE(has(bare, "verdict good"));
}

TEST(DrillPage, HasNothingFromOutside) {
    expect_nothing_from_outside(drill_page(drill_with_everything()));
}

} // namespace
} // namespace zarven::tool::drill_page_test
