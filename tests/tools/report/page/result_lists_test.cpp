// The service lists of the outputs, whole tables of them.

#include "report/page/result_lists.h"

#include <gtest/gtest.h>

#include "report/page/page_text.h"
#include "report/page/result_page.h"
#include "report/result_fixture.h"

namespace zarven::tool::result_lists_test {
namespace {

/// The section alone.
std::string section_of(const Result& result) {
    const std::string page = body_of_page(result_page(result));
    const std::size_t begin = page.find("<section class=\"panel unsearched\" id=\"service-lists\"");
    return begin == page.npos ? "" : page.substr(begin, page.find("</section>", begin) - begin);
}

const std::string head =
    R"(<thead><tr><th scope="col" class="number">LCN</th><th scope="col">Service</th><th scope="col" class="number">SID)"
    R"(</th><th scope="col" class="number">kbit/s</th><th scope="col">Module</th><th scope="col" class="number">Input)"
    R"(</th><th scope="col">Position</th><th scope="col" class="number">MHz</th><th scope="col">Pol.</th>)"
    R"(<th scope="col" class="number">kS/s</th></tr></thead>)"
    "\n<tbody>\n";

std::string row(const std::string& lcn, const std::string& name, const std::string& sid,
                const std::string& bitrate, const std::string& module, const std::string& input,
                const std::string& reception) {
    return "<tr><td class=\"number\">" + lcn + "</td><td>" + name + "</td><td class=\"number\">" + sid +
           "</td><td class=\"number\">" + bitrate + "</td><td>" + module + "</td><td class=\"number\">" +
           input + "</td>" + reception + "</tr>\n";
}

const std::string nowhere = R"(<td></td><td class="number"></td><td></td><td class="number"></td>)";
const std::string received =
    R"(<td>19.2E</td><td class="number">12187.5</td><td>H</td><td class="number">22000</td>)";

TEST(ServiceLists, OneOfEverything) {
    Result result = with_labels(result_with_everything());
    result.streams[0].symbol_rate = 22'000'000;
    const std::string rack = "<bdi>Rack 1, slot 3</bdi>";
    const std::string mar =
        "<bdi>Mar</bdi> <span class=\"note\">received as <bdi>海景 Música\uFFFD</bdi></span>";
    EXPECT_EQ(
        section_of(result),
        "<section class=\"panel unsearched\" id=\"service-lists\" aria-labelledby=\"service-lists-title\">\n"
        "<h2 id=\"service-lists-title\">Service lists of the outputs</h2>\n"
        "<div class=\"service-list\" id=\"list-1-1\">\n"
        "<h3><bdi>Rack 1, slot 3</bdi> <a href=\"#module-1\" class=\"mac\">M1</a> output 1 <span class=\"note\">3 "
        "services</span></h3>\n"
        "<table class=\"sortable\">\n<caption>Services on output 1 of module M1</caption>\n" +
            head + row("5", "<bdi>Canal Uno</bdi>", "105", "4,200", rack, "1", received) +
            row("5", "<bdi>Canal Uno</bdi> <span class=\"tag\">clone</span>", "105", "0", rack, "1",
                received) +
            row("12", mar, "112", "8,000", rack, "1", received) +
            "</tbody>\n</table>\n</div>\n"
            "<div class=\"service-list\" id=\"list-1-10\">\n"
            "<h3><bdi>Rack 1, slot 3</bdi> <a href=\"#module-1\" class=\"mac\">M1</a> output 10 <span "
            "class=\"note\">1 service</span></h3>\n"
            "<table class=\"sortable\">\n<caption>Services on output 10 of module M1</caption>\n" +
            head + row("12", mar, "112", "8,000", rack, "1", received) + "</tbody>\n</table>\n</div>\n");
}

TEST(ServiceLists, WhatIsNotKnownStaysEmpty) {
    Result result = result_with_everything();
    result.modules[0].inputs[0].services.clear();
    const std::string section = section_of(result);
    EXPECT_TRUE(has(section, row("5", "<bdi>Canal Uno</bdi>", "105", "4,200", "<span class=\"mac\">M1</span>",
                                 "<span class=\"lacking\">none</span>", nowhere)))
        << section;
    EXPECT_TRUE(has(section, "<h3><a href=\"#module-1\" class=\"mac\">M1</a> output 1 "));
}

TEST(ServiceLists, AreByLcnAndTellEveryInput) {
    Result result = result_with_everything();
    ModuleResult& module = result.modules[0];
    std::swap(module.outputs[0].services[0], module.outputs[0].services[2]);
    module.inputs[1] = {2, true, {1, 1001}, {module.outputs[0].services[2]}};
    const std::string section = section_of(result);
    EXPECT_LT(section.find("<td class=\"number\">5</td>"), section.find("<td class=\"number\">12</td>"));
    EXPECT_TRUE(has(section, "<td class=\"number\">1, 2</td>"));
}

TEST(ServiceLists, AnOutputThatCarriesNothingHasNone) {
    Result result = result_with_everything();
    EXPECT_EQ(occurrences(section_of(result), "<table"), 2u) << "not for that of M2";
    EXPECT_TRUE(
        has(body_of_page(result_page(result)),
            "<a href=\"#service-lists\">Service lists of the outputs <span class=\"note\">2</span></a>"));
    for (OutputResult& output : result.modules[0].outputs)
        output.services.clear();
    EXPECT_EQ(section_of(result), "");
    EXPECT_FALSE(has(body_of_page(result_page(result)), "#service-lists"));
}

TEST(ServiceLists, StandAloneAsTheyStandInThePage) {
    const Result result = result_with_everything();
    const std::string alone = service_lists_markup(result);
    EXPECT_EQ(occurrences(alone, "<div class=\"service-list\""), 2u);
    EXPECT_TRUE(has(result_page(result), alone));
    EXPECT_FALSE(has(service_lists_markup(Result()), "<"));
}

} // namespace
} // namespace zarven::tool::result_lists_test
