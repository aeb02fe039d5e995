// The text of a page. How it looks and behaves in a browser is tested in tests/tools/page.

#include "report/page/result_page.h"

#include <gtest/gtest.h>

#include "made_findings.h"
#include "report/page/page_text.h"
#include "report/result_fixture.h"

namespace zarven::tool::result_page_test {
namespace {

std::string body_of(const Result& result) {
    return body_of_page(result_page(result));
}

std::string everything() {
    return body_of(result_with_everything());
}

/// A result with one module that has one output.
Result result_with(const OutputResult& output) {
    Result result;
    result.modules.emplace_back();
    result.modules.back().outputs = {output};
    return result;
}

ServiceResult service(Stream stream, std::uint32_t bitrate) {
    ServiceResult one;
    one.stream = stream;
    one.bitrate = bitrate;
    return one;
}

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

TEST(Page, ATunedInputWithoutServicesIsFree) {
    const std::string page = everything();
    EXPECT_TRUE(has(page, "<span>stream 2/7</span><span class=\"note\">free</span>"));
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
