// The text of the page of a choice.

#include "report/page/choice_page.h"

#include <gtest/gtest.h>

#include "report/choice_fixture.h"
#include "report/page/page_text.h"

namespace zarven::tool::choice_page_test {
namespace {

std::string body_of(const ChoiceReport& report) {
    return body_of_page(choice_page(report, "today.json"));
}

TEST(ChoicePage, EveryListHasItsServices) {
    const std::string page = body_of(choice_with_everything());
    EXPECT_TRUE(has(
        page,
        R"(<tr data-stream="1/1001" data-mac="A "><td class="number">4</td>)"
        R"(<td><bdi>Cuatro</bdi> <span class="tag">must</span></td><td class="number roomy">4,200</td>)"
        R"(<td class="roomy">1/1001</td><td class="number">3</td><td class="wide">A in 1 out 1+2</td></tr>)"));
    EXPECT_TRUE(has(page, R"(<td class="wide">A in 1 out 1, B no input out 2 → withheld</td>)"));
    EXPECT_TRUE(has(page, R"(<td class="wide">B in 2 out 1 → left out</td>)"));
    EXPECT_TRUE(has(page, R"(<td class="wide">No input is free.</td>)"));
    EXPECT_TRUE(has(page, "A in 1 out 1 → B in 2 out 1"));
    EXPECT_TRUE(has(
        page, "Against today.json: 1 service in another place, 700 where they were, 2 no longer placed."));
    EXPECT_TRUE(has(page, "It is not proven that they cannot be placed: the bound would allow 4 of the 5."));
    EXPECT_TRUE(has(page, "Dos\uFFFD"));
    EXPECT_EQ(occurrences(page, "<tr data-stream"), 8u);
    EXPECT_EQ(occurrences(page, R"(<th scope="col" class="number">Value</th>)"), 3u);
}

TEST(ChoicePage, OneOfSeveral) {
    EXPECT_FALSE(has(body_of(choice_with_everything()), "One of several"));
    ChoiceReport report = choice_with_everything();
    VariantResult variant;
    variant.one_of = "ZDF";
    variant.place = 2;
    variant.variants = 3;
    report.variants = {variant};
    const std::string page = body_of(report);
    EXPECT_TRUE(has(page, "What is asked for of each group of variants."));
    EXPECT_TRUE(has(page, R"(<td class="wide">variant 2 of 3 of &quot;ZDF&quot;, not placed</td>)"));
}

TEST(ChoicePage, TheFigures) {
    const std::string page = body_of(choice_with_everything());
    EXPECT_TRUE(
        has(page, "3 of 1234 services withheld: 841 placed in the place of 754, 1 gained, 2 lost</p>"));
    EXPECT_TRUE(has(page, R"(Musts placed</th><td class="number">1</td><td class="number">3</td>)"
                          R"(<td class="number">4</td><td class="number">5</td>)"));
    EXPECT_TRUE(has(page, R"(Value</th><td class="number">1,000</td><td class="number">2,000</td>)"
                          R"(<td class="number">2,500</td><td class="number">3,000</td>)"));
    EXPECT_TRUE(has(page, R"(Services placed</th><td class="number">754</td><td class="number">841</td>)"
                          R"(<td class="number"></td><td class="number"></td>)"));
    EXPECT_TRUE(has(page, "123,456 states tried, 1 run of the engine."));
    EXPECT_TRUE(has(page, "<h1><bdi>Casa</bdi></h1>"));
}

TEST(ChoicePage, WithoutMustsAndValuesTheyAreNotTold) {
    ChoiceReport report = choice_with_everything();
    report.musts = {};
    report.missed.clear();
    report.moves.reset();
    report.has_values = false;
    const std::string page = body_of(report);
    EXPECT_FALSE(has(page, "Musts"));
    EXPECT_FALSE(has(page, ">Value<"));
    EXPECT_FALSE(has(page, "today.json"));
    EXPECT_TRUE(has(page, R"(Services placed</th><td class="number">754</td><td class="number">841</td>)"
                          R"(<td class="number">2,500</td><td class="number">3,000</td>)"));
    EXPECT_TRUE(has(page, R"(<p class="verdict good)")) << page.substr(0, 2000);
}

TEST(ChoicePage, SaysWhereEverythingAskedForComesToMore) {
    ChoiceReport report = choice_with_everything();
    report.withheld.push_back(valued(8, "Ocho", 0, false));
    EXPECT_FALSE(has(body_of(report), "With everything asked for more is reached"));
    report.all.musts = 4;
    EXPECT_TRUE(has(body_of(report),
                    R"(<p class="note">With everything asked for more is reached, 4 of 5 musts)"
                    " in the place of 3: that asks for 1 service of value 0, too, which no "
                    "choice does.</p>"));
}

TEST(ChoicePage, WhatIsBrokenComesFirst) {
    ChoiceReport report = choice_with_everything();
    report.all.findings = {{{}, "one", true, false, {}}};
    report.chosen.findings = {{{}, "two", true, false, {}}};
    const std::string page = body_of(report);
    EXPECT_TRUE(has(page, "Broken with everything asked for"));
    EXPECT_LT(page.find("two"), page.find("In figures</h2>"));
}

TEST(ChoicePage, HasNothingFromOutside) {
    expect_nothing_from_outside(choice_page(choice_with_everything(), "today.json"));
}

} // namespace
} // namespace zarven::tool::choice_page_test
