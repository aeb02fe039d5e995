// The text of the page of a comparison. How it looks and behaves in a browser is tested in tests/tools/page.

#include "report/page/comparison_page.h"

#include <gtest/gtest.h>

#include "made_findings.h"
#include "report/comparison_fixture.h"
#include "report/page/page_text.h"

namespace zarven::tool::comparison_page_test {
namespace {

std::string body_of(const Comparison& comparison) {
    return body_of_page(comparison_page(comparison, {"old.json", "new.json"}));
}

Comparison a_comparison() {
    Comparison comparison = changed_headend();
    comparison.before.name = "Casa";
    comparison.after.name = "Hotel";
    comparison.before.counts.loaded = 1005;
    comparison.before.counts.placed = 3;
    comparison.before.counts.left_out = 1002;
    comparison.after.counts.loaded = 4;
    comparison.after.counts.placed = 4;
    comparison.gained = {change(1, "Uno", {}, {{"A", 1, {1, 2}}})};
    comparison.gained[0].service.is_hd = true;
    comparison.lost = {change(2, "Dos", {{"A", 1, {1}}}, {})};
    comparison.moved = {change(3, "Tres", {{"A", 1, {1}}, {"B", 0, {2}}}, {{"B", 2, {1}}})};
    comparison.unmoved = 2004;
    comparison.never_placed = 5;
    comparison.modules_new = {"Y", "Z"};
    comparison.became_tight = {{TightKind::inputs, "A", 0, 2, 2}, {TightKind::pids, "A", 0, 15, 16}};
    comparison.relaxed = {{TightKind::bitrate, "B", 1, 19000, 38000}};
    return comparison;
}

TEST(ComparisonPage, EveryServiceHasItsRow) {
    const std::string page = body_of(a_comparison());
    EXPECT_TRUE(has(
        page, R"(<tr data-stream="1/1001" data-mac="A "><td class="number">1</td>)"
              R"(<td><bdi>Uno</bdi> <span class="tag">HD</span></td>)"
              R"(<td class="number roomy">4,200</td><td class="roomy">1/1001</td>)"
              R"(<td><span class="note">left out</span></td><td><span class="place">)"
              R"(<span class="mac">A</span> <span class="ports">input 1, outputs 1, 2</span></span></td>)"));
    EXPECT_TRUE(
        has(page, R"(output 1</span></span></td><td><span class="lacking">left out</span></td></tr>)"));
    EXPECT_TRUE(has(page, R"(<tr data-stream="1/1001" data-mac="A B B "><td class="number">3</td>)"));
    EXPECT_TRUE(has(page, R"(<span class="place"><span class="mac">A</span> )"
                          R"(<span class="ports">input 1, output 1</span></span>)"
                          R"(<span class="place"><span class="mac">B</span> )"
                          R"(<span class="ports">no input, output 2</span></span></td><td>)"
                          R"(<span class="place"><span class="mac">B</span> )"
                          R"(<span class="ports">input 2, output 1</span></span></td></tr>)"));
    EXPECT_EQ(occurrences(page, "<tr data-stream"), 3u);
}

TEST(ComparisonPage, AServiceThatOneSideDoesNotHaveIsNotThere) {
    Comparison comparison = a_comparison();
    comparison.gained[0].absence_before = Absence::not_there;
    comparison.lost[0].absence_after = Absence::not_there;
    const std::string page = body_of(comparison);
    EXPECT_TRUE(has(page, R"(<td><span class="note">not there</span></td>)"));
    EXPECT_TRUE(has(page, R"(<td><span class="lacking">not there</span></td>)"));
    EXPECT_FALSE(has(page, ">left out<"));
}

TEST(ComparisonPage, TheLineupIsToldApart) {
    Comparison comparison = a_comparison();
    comparison.added = {change(4, "Cuatro", {}, {{"A", 1, {1}}})};
    comparison.removed = {change(5, "Cinco", {{"A", 1, {1}}}, {}), change(6, "Seis", {{"A", 1, {1}}}, {})};
    const std::string page = body_of(comparison);
    EXPECT_TRUE(has(page, R"(<p class="verdict short">1 gained, 1 lost, 1 added, 2 removed, 1 moved</p>)"));
    EXPECT_TRUE(has(page, R"(<dt>Removed</dt><dd><span class="big">2</span>)"));
    EXPECT_TRUE(has(page, R"(<h2 id="added-title">Added <span class="note">1</span></h2>)"));
    EXPECT_TRUE(has(page, R"(<a href="#removed">Removed)"));
    EXPECT_FALSE(has(body_of(a_comparison()), ">Removed"));
    comparison.lost.clear();
    EXPECT_TRUE(has(body_of(comparison), R"(<p class="verdict good">)"));
}

TEST(ComparisonPage, ModulesHaveTheirLabels) {
    Comparison comparison = a_comparison();
    comparison.labels = {{"A", "Rack <1>\x1B"}};
    const std::string page = body_of(comparison);
    const std::string label = R"(<span class="mac">A</span> <bdi class="note">Rack &lt;1&gt;)"
                              "\uFFFD</bdi>";
    EXPECT_TRUE(has(page, label + R"( <span class="ports">input 1)")) << page;
    EXPECT_TRUE(has(page, "<td>" + label + R"(</td><td class="number">1</td>)"));
    EXPECT_TRUE(has(page, R"(<span class="mac">B</span> <span class="ports">)"));
    // The search finds them.
    EXPECT_TRUE(has(page, R"(data-mac="A (Rack &lt;1&gt;)")) << page;
}

TEST(ComparisonPage, TheSummaryTellsBothSides) {
    const std::string page = body_of(a_comparison());
    EXPECT_TRUE(has(page, R"(<p class="verdict short">1 gained, 1 lost, 1 moved</p>)"));
    EXPECT_TRUE(has(page, R"(<bdi>Casa</bdi> <span class="note">→</span> <bdi>Hotel</bdi></h1>)"));
    EXPECT_TRUE(has(page, R"(<dt>In the same place</dt><dd><span class="big">2,004</span></dd>)"));
    EXPECT_TRUE(has(page, R"(<dt>Placed before</dt><dd><span class="big">3</span> )"
                          R"(<span class="note">of 1,005 loaded</span>)"));
    EXPECT_TRUE(has(
        page, R"(<td class="number"><bdi>old.json</bdi></td><td class="number"><bdi>new.json</bdi></td>)"));
    EXPECT_TRUE(has(page, R"(Services loaded</th><td class="number">1,005</td><td class="number">4</td>)"
                          R"(<td class="number lacking">−1,001</td>)"));
    EXPECT_TRUE(has(
        page, R"(Placed</th><td class="number">3</td><td class="number">4</td><td class="number">+1</td>)"));
    EXPECT_TRUE(has(page, R"(<td class="number">−1,002</td>)"));
}

TEST(ComparisonPage, TheSummaryHasWhatWasNotAskedFor) {
    Comparison comparison = a_comparison();
    EXPECT_FALSE(has(body_of(comparison), "Not asked for"));
    comparison.after.counts.not_asked_for = 3;
    EXPECT_TRUE(
        has(body_of(comparison), R"(Not asked for</th><td class="number">0</td><td class="number">3</td>)"));
}

TEST(ComparisonPage, MoreLeftOutIsWorse) {
    Comparison comparison;
    comparison.after.counts.left_out = 1;
    EXPECT_TRUE(has(body_of(comparison), R"(<td class="number">1</td><td class="number lacking">+1</td>)"));
}

TEST(ComparisonPage, NothingLostIsGood) {
    Comparison comparison = a_comparison();
    comparison.lost.clear();
    EXPECT_TRUE(has(body_of(comparison), R"(<p class="verdict good">1 gained, 0 lost, 1 moved</p>)"));
}

TEST(ComparisonPage, WhatIsBrokenAndWhatIsCountedOnEitherSide) {
    Comparison comparison = a_comparison();
    comparison.lost.clear();
    EXPECT_FALSE(has(body_of(comparison), "Broken"));
    EXPECT_FALSE(has(body_of(comparison), "Notes"));
    comparison.after.findings = {broken("<one>"), broken_limit("two", "A"), note("four")};
    std::string page = body_of(comparison);
    EXPECT_FALSE(has(page, "Broken before"));
    EXPECT_FALSE(has(page, "Notes before"));
    EXPECT_TRUE(has(page, R"(<a href="#broken-after">Broken after <span class="note">2</span></a>)"));
    EXPECT_TRUE(has(page, R"(<h2 id="broken-after-title">Broken after</h2>)"));
    EXPECT_TRUE(has(page, "<li><bdi>&lt;one&gt;</bdi></li>"));
    EXPECT_TRUE(has(page, "<li><bdi>module A: two</bdi></li>"));
    EXPECT_TRUE(has(page, R"(Broken</th><td class="number">0</td><td class="number">2</td>)"
                          R"(<td class="number lacking">+2</td>)"));
    EXPECT_TRUE(has(page, R"(<p class="verdict short">)"));
    EXPECT_TRUE(has(page, R"(<h2 id="notes-after-title">Notes after</h2>)"));
    EXPECT_LT(page.find("two</bdi>"), page.find("id=\"sides\""));
    EXPECT_LT(page.find("id=\"sides\""), page.find("four</bdi>"));
    comparison.before.findings = {broken("three")};
    page = body_of(comparison);
    EXPECT_LT(page.find("three"), page.find("two"));
    comparison.after.findings = {note("four")};
    EXPECT_TRUE(has(body_of(comparison), R"(<p class="verdict good">)"));
}

TEST(ComparisonPage, ServicesThatTheEngineHasLost) {
    Comparison comparison = a_comparison();
    EXPECT_FALSE(has(body_of(comparison), "Neither placed"));
    comparison.lost[0].absence_after = Absence::neither;
    comparison.after.counts.neither = 1;
    const std::string page = body_of(comparison);
    EXPECT_TRUE(has(page, R"(<td><span class="lacking">neither</span></td>)"));
    EXPECT_TRUE(has(page,
                    R"(Neither placed nor left out</th><td class="number">0</td><td class="number">1</td>)"
                    R"(<td class="number lacking">+1</td>)"));
}

TEST(ComparisonPage, ClonesAreToldWhereThereAreAny) {
    Comparison comparison = a_comparison();
    EXPECT_FALSE(has(body_of(comparison), "Clones attached"));
    comparison.after.counts.clones_waiting = 1;
    EXPECT_TRUE(has(body_of(comparison),
                    R"(Clones waiting</th><td class="number">0</td><td class="number">1</td>)"
                    R"(<td class="number lacking">+1</td>)"));
}

TEST(ComparisonPage, AHeadendIsNamedOnce) {
    Comparison comparison = a_comparison();
    comparison.after.name = "Casa";
    EXPECT_TRUE(has(body_of(comparison), "<h1><bdi>Casa</bdi></h1>"));
    comparison.after.name = "";
    EXPECT_TRUE(has(body_of(comparison), "<bdi>new.json</bdi></h1>"));
    EXPECT_TRUE(
        has(comparison_page(a_comparison(), {"a", "b"}), "<title>Comparison of Casa and Hotel</title>"));
}

TEST(ComparisonPage, InputsLimitsAndModulesStandInGroups) {
    const std::string page = body_of(a_comparison());
    EXPECT_TRUE(has(
        page, R"(<td><span class="mac">A</span></td><td class="number">1</td><td>1/10</td><td>free</td>)"));
    EXPECT_TRUE(has(
        page, R"(<td><span class="mac">A</span></td><td class="number">2</td><td>free</td><td>1/20</td>)"));
    EXPECT_TRUE(has(
        page, R"(<td><span class="mac">B</span></td><td class="number">1</td><td>1/30</td><td>1/40</td>)"));
    EXPECT_TRUE(has(page, R"(<td>Inputs</td><td class="number">2</td><td class="number">2</td>)"
                          R"(<td class="number">100.0 %</td>)"));
    EXPECT_TRUE(has(page, R"(<td>PIDs</td><td class="number">15</td><td class="number">16</td>)"));
    EXPECT_TRUE(has(page, R"(<td>Output 1, kbit/s</td><td class="number">19,000</td>)"));
    EXPECT_TRUE(has(page, R"(colspan="1"><span class="line"><span>New</span><span class="note">2</span>)"));
    for (const char* title :
         {"Freed", "Taken", "Tuned to another stream", "Became tight", "No longer tight", "Gone"})
        EXPECT_TRUE(has(page, "<span>" + std::string(title) + R"(</span><span class="note">)")) << title;
}

TEST(ComparisonPage, TheOrderOfTheChangeIsATable) {
    const std::string page = body_of(a_comparison());
    EXPECT_TRUE(has(page,
                    R"(<td><span class="mac">B</span></td><td class="number">2</td><td class="number">1</td>)"
                    R"(<td class=" roomy">1/30</td><td>1/40</td><td>3 Tres (step 3)</td></tr>)"));
    EXPECT_TRUE(has(page, "<span>The best order</span>"));
    Comparison found = a_comparison();
    found.order.is_least = false;
    EXPECT_TRUE(has(body_of(found), "<span>The best order that was found</span>"));
}

TEST(ComparisonPage, WhatIsTheSameHasNoSection) {
    const std::string page = body_of(Comparison());
    EXPECT_EQ(occurrences(page, "<section"), 1u);
    EXPECT_EQ(occurrences(page, "<a href"), 1u); // "Before and after"; the other is the skip link
    EXPECT_TRUE(has(page, R"(<p class="verdict good">Every service stands where it stood</p>)"));
}

TEST(ComparisonPage, NamesAreTextWhateverTheySay) {
    const std::string text = "<script>alert(1)</script>\"&'{{{style}}}\x1B";
    Comparison comparison = a_comparison();
    comparison.before.name = text;
    comparison.gained[0].service.name = comparison.gained[0].after[0].mac = text;
    comparison.modules_new = {text};
    comparison.inputs_freed[0].mac = comparison.became_tight[0].mac = text;
    const std::string page = comparison_page(comparison, {text, text});
    const std::string escaped = "&lt;script&gt;alert(1)&lt;/script&gt;&quot;&amp;&apos;{{{style}}}\uFFFD";
    EXPECT_FALSE(has(page, "<script>alert"));
    EXPECT_FALSE(has(page, "\x1B"));
    // Title; heading, both files, the name and the service; 4 places of a MAC and 1 for the search.
    EXPECT_EQ(occurrences(page, escaped), 1 + 5 + 4 + 1u);
}

TEST(ComparisonPage, NeedsNothingFromOutside) {
    const std::string page = comparison_page(a_comparison(), {"a", "b"});
    expect_nothing_from_outside(page);
}

} // namespace
} // namespace zarven::tool::comparison_page_test
