// The text of a page. How it looks and behaves in a browser is tested in tests/tools/page.

#include "report/page/result_page.h"

#include <gtest/gtest.h>

#include "made_findings.h"
#include "report/page/result_page_fixture.h"

namespace zarven::tool::result_page_test {
namespace {

using result_page_fixture::body_of;
using result_page_fixture::everything;
using result_page_fixture::service;

std::string row(const std::string& cells, const std::string& anchor = "") {
    return (anchor.empty() ? "<tr>" : "<tr id=\"" + anchor + "\">") + cells + "</tr>\n";
}

TEST(Page, EveryServiceHasItsRow) {
    const std::string page = everything();
    const std::size_t lists = page.find("id=\"service-lists\"");
    EXPECT_EQ(occurrences(page.substr(0, lists), "<tr><td class=\"number\">"), 5u);
    EXPECT_TRUE(has(page, row(R"(<td class="number">5</td><td><bdi>Canal Uno</bdi></td>)"
                              R"(<td class="number">4,200</td><td class="number">1</td>)")));
    EXPECT_TRUE(has(
        page,
        row(R"(<td class="number">5</td><td><bdi>Canal Uno</bdi> <span class="tag">clone of SID 105</span></td>)"
            R"(<td class="number">0</td><td class="number">1</td>)")));
    EXPECT_TRUE(
        has(page, row(R"(<td class="number">8</td><td><bdi>Canal Uno</bdi></td><td class="number">4,200</td>)"
                      R"(<td class="number"><span class="lacking">none</span></td>)")));
    EXPECT_TRUE(has(
        page,
        row("<td class=\"number\">12</td><td><bdi>海景 Música\uFFFD</bdi> <span class=\"note\">sent as <bdi>Mar"
            "</bdi></span> <span class=\"tag\">HD</span> <span class=\"tag\">scrambled</span> "
            "<span class=\"tag\">3 CA PIDs</span> <span class=\"tag\">transcoded</span></td>"
            "<td class=\"number\">8,000</td><td class=\"number\">1, 10</td>")));
    EXPECT_TRUE(has(
        page,
        row(R"(<td class="number">9</td><td><bdi>Canal Uno</bdi> <span class="tag">stream 1/1001</span></td>)"
            R"(<td class="number">4,200</td><td class="number">10</td>)")));
    EXPECT_TRUE(has(
        page, row(R"(<td class="number">700</td><td><bdi>A name that is longer than the column is wide</bdi>)"
                  R"( <span class="tag">scrambled</span> <span class="tag">1 CA PID</span></td>)"
                  R"(<td class="number">4,200</td><td class="wide">No input is free for stream 1/1002.</td>)",
                  "left-out-1")));
    EXPECT_TRUE(has(
        page,
        row(R"(<td class="number">700</td><td><bdi>Canal Uno</bdi> <span class="tag">clone of SID 105</span>)"
            "</td><td class=\"number\">0</td><td class=\"wide\">Its parent, \uFFFD, is left out.</td>",
            "waiting-1")));
}

TEST(Page, TheSummaryHasTheFigures) {
    const std::string page = everything();
    const auto tile = [](const std::string& label, const std::string& figure, const std::string& note) {
        return "<dt>" + label + "</dt><dd><span class=\"big\">" + figure + "</span> <span class=\"note\">" +
               note + "</span>";
    };
    EXPECT_TRUE(has(
        page,
        ">1 of 6 services left out, 1 neither placed nor left out, 1 clone waiting, 1 limit and 1 service broken</p>"));
    EXPECT_TRUE(has(page, tile("Placed", "4", "of 6 loaded")));
    EXPECT_TRUE(has(page, tile("Left out", "1", "in 1 stream")));
    EXPECT_TRUE(has(page, tile("Neither", "1", "placed nor left out")));
    EXPECT_TRUE(has(page, tile("Inputs in use", "1", "of 3")));
    EXPECT_TRUE(has(page, tile("Output bitrate", "52,200", "of 76,000 kbit/s")));
    EXPECT_TRUE(has(page, tile("PIDs in use", "3", "of 8")));
    EXPECT_TRUE(has(page, tile("Clones attached", "1", "1 waiting")));
}

TEST(Page, TheSummaryHasTheMustsWhereAnyAre) {
    Result result = result_with_everything();
    EXPECT_FALSE(has(result_page(result), "Musts"));
    result.counts.musts = 10;
    result.counts.musts_placed = 9;
    EXPECT_TRUE(has(result_page(result), "<dt>Musts placed</dt><dd><span class=\"big\">9</span> <span "
                                         "class=\"note\">of 10</span>"));
}

TEST(Page, TheSummaryHasWhatWasNotAskedFor) {
    Result result = result_with_everything();
    EXPECT_FALSE(has(result_page(result), "Not asked for"));
    result.counts.not_asked_for = 1234;
    EXPECT_TRUE(has(result_page(result), R"(<dt>Not asked for</dt><dd><span class="big">1,234</span>)"));
}

TEST(Page, TheVerdictIsGoodOnlyIfEverythingIsPlaced) {
    Result result;
    result.counts = {3, 3, 0, 0, 1, 0};
    EXPECT_TRUE(has(body_of(result), R"(<p class="verdict good">3 of 3 services placed</p>)"));
    result.findings = {broken_limit("too much", "A")};
    EXPECT_TRUE(
        has(body_of(result), R"(<p class="verdict short">3 of 3 services placed, 1 limit broken</p>)"));
    result.findings = {note("a counter lags")};
    EXPECT_TRUE(has(body_of(result), R"(<p class="verdict good">3 of 3 services placed</p>)"));
    result.findings.clear();
    result.counts = {3, 2, 1, 0, 1, 0};
    EXPECT_TRUE(has(body_of(result), R"(<p class="verdict short">1 of 3 services left out</p>)"));
    result.counts = {3, 3, 0, 0, 1, 2};
    EXPECT_TRUE(
        has(body_of(result), R"(<p class="verdict short">3 of 3 services placed, 2 clones waiting</p>)"));
    result.counts = {3, 2, 0, 0, 1, 0};
    EXPECT_TRUE(has(body_of(result), R"(<p class="verdict short">2 of 3 services placed</p>)"));
    result.counts = {3, 2, 0, 1, 1, 0};
    EXPECT_TRUE(has(body_of(result),
                    R"(<p class="verdict short">2 of 3 services placed, 1 neither placed nor left out</p>)"));
}

TEST(Page, WhatIsBrokenComesBeforeThePlanAndNotesBehindIt) {
    const std::string page = everything();
    EXPECT_TRUE(has(page, R"(<section class="panel audit broken unsearched" id="broken")"));
    EXPECT_TRUE(has(page, R"(<a href="#broken">Broken <span class="note">2</span></a>)"));
    EXPECT_TRUE(has(page, R"(<a href="#notes">Notes <span class="note">1</span></a>)"));
    EXPECT_TRUE(has(page, "<li><bdi>LCN 9: on no input</bdi></li>"));
    EXPECT_LT(page.find("on no input</bdi>"), page.find("Modules at a glance"));
    EXPECT_TRUE(has(page, R"(<section class="panel audit unsearched" id="notes")"));
    EXPECT_LT(page.find("id=\"streams\""), page.find("<li><bdi>a counter lags</bdi></li>"));
    EXPECT_FALSE(has(body_of(Result()), "id=\"broken\""));
    EXPECT_FALSE(has(body_of(Result()), "id=\"notes\""));
}

TEST(Page, AFindingLeadsToItsModules) {
    EXPECT_TRUE(has(
        everything(),
        R"(<li><bdi><a href="#module-1">module M1</a>: the services on output 10 need 40000 kbit/s</bdi></li>)"));
    Result result;
    for (const char* mac : {"A", "AB", "C"}) {
        result.modules.emplace_back();
        result.modules.back().mac = mac;
    }
    result.findings = {{"LCN 5",
                        "output 1 of module AB, output 2 of module A, not of module C",
                        true,
                        false,
                        {"A", "AB", "gone"}}};
    EXPECT_TRUE(has(body_of(result),
                    R"(<li><bdi>LCN 5: output 1 of <a href="#module-2">module AB</a>, )"
                    R"(output 2 of <a href="#module-1">module A</a>, not of module C</bdi>)"));
}

/// A result with this text in every place that takes one.
Result result_full_of(const std::string& text) {
    Result result = result_with_everything();
    result.name = text;
    result.findings = {broken(text)};
    for (ModuleResult& module : result.modules) {
        module.mac = text;
        for (InputResult& input : module.inputs)
            for (ServiceResult& one : input.services)
                one.name = text;
    }
    ServiceResult& left_out = result.left_out.at(0).services.at(0);
    left_out.name = text;
    left_out.output_name = text + "2";
    left_out.reason = text;
    return result;
}

TEST(Page, NamesAreTextWhateverTheySay) {
    const std::string text = "<script>alert(1)</script>\"&'{{{style}}}";
    const std::string escaped = "&lt;script&gt;alert(1)&lt;/script&gt;&quot;&amp;&apos;{{{style}}}";
    const std::string page = result_page(result_full_of(text));
    EXPECT_FALSE(has(page, "<script>alert"));
    EXPECT_FALSE(has(page, "\"&'"));
    // Title, heading, warning; 4 + 3 in the list left out, 4 on an input; 7 for each of the 2 modules, one of
    // which appears twice for its stream; the link of the cause.
    EXPECT_EQ(occurrences(page, "<bdi>" + escaped + "</bdi>"), 1 + 1 + 4 + 1 + 1u);
    EXPECT_EQ(occurrences(page, "<title>Placement of " + escaped + "</title>"), 1u);
    EXPECT_EQ(occurrences(page, "<bdi>" + escaped + "2</bdi>"), 1u);
    EXPECT_EQ(occurrences(page, "<td class=\"wide\">" + escaped + "</td>"), 1u);
    EXPECT_EQ(occurrences(page, "data-mac=\"" + escaped + "\""), 4u);
}

TEST(Page, WhatNoPageCanShowIsReplaced) {
    const std::string page = result_page(result_full_of("a\x1B\x80z\u202E"));
    EXPECT_FALSE(has(page, "\x1B"));
    EXPECT_FALSE(has(page, "a\x1B\x80z"));
    // A change of the direction of writing ends with the element around the name.
    EXPECT_TRUE(has(page, "<bdi>a\uFFFD\uFFFDz\uFFFD</bdi>"));
}

TEST(Page, AnEmptyResultIsAWholePage) {
    const std::string page = body_of(Result());
    EXPECT_TRUE(has(page, "<h1>Head-end</h1>"));
    EXPECT_FALSE(has(page, "<table"));
    EXPECT_FALSE(has(page, "<li>"));
    EXPECT_TRUE(has(result_page(Result()), "<title>Placement</title>"));
}

TEST(Page, NeedsNothingFromOutside) {
    const std::string page = result_page(result_with_everything());
    expect_nothing_from_outside(page);
}

TEST(Page, LabelsOfModulesAndPlacesOfStreams) {
    const std::string text = result_page(with_labels(result_with_everything()));
    EXPECT_NE(
        text.find(
            "<span class=\"mac\">M1</span> <span class=\"note\">(<bdi>Rack 1, slot 3</bdi>)</span></h3>"),
        std::string::npos);
    EXPECT_NE(text.find("<span class=\"mac\">M2</span></h3>"), std::string::npos);
    EXPECT_NE(text.find("<span>stream 1/1001</span> <span class=\"note\">19.2E 12187.5 MHz H</span>"),
              std::string::npos);
    EXPECT_NE(text.find("<span>stream 1/1002</span> <span class=\"note\">514 MHz</span>"), std::string::npos);
}

TEST(Page, GroupsAndVariantsHaveTheirSections) {
    EXPECT_FALSE(has(everything(), "id=\"groups\""));
    EXPECT_FALSE(has(everything(), "id=\"variants\""));
    Result result;
    result.groups = {{"Sport <1>", 3, 2}, {"News", 1, 1}};
    VariantResult variant;
    variant.one_of = "ZDF";
    variant.service = service({1, 1011}, 8000);
    variant.service.lcn = 6;
    variant.service.name = "ZDF HD";
    variant.place = 2;
    variant.variants = 3;
    result.variants = {variant};
    const std::string page = body_of(result);
    EXPECT_TRUE(has(page,
                    "<tr><th scope=\"row\"><bdi>Sport &lt;1&gt;</bdi></th><td class=\"number lacking\">2</td>"
                    "<td class=\"number\">3</td></tr>\n"));
    EXPECT_TRUE(has(page, "<bdi>News</bdi></th><td class=\"number\">1</td>"));
    EXPECT_TRUE(
        has(page, "<tr><th scope=\"row\"><bdi>ZDF</bdi></th><td class=\"number\">6</td><td><bdi>ZDF HD</bdi>"
                  "</td><td class=\"number\">1/1011</td><td class=\"number\">2 of 3</td><td "
                  "class=\"lacking\">not placed</td></tr>\n"));
    EXPECT_TRUE(has(page, "href=\"#groups\""));
    result.variants[0].is_placed = true;
    EXPECT_TRUE(has(body_of(result), "<td>placed</td></tr>"));
}

} // namespace
} // namespace zarven::tool::result_page_test
