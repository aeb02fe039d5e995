// Whole reports, character by character.

#include "report/result_text.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "base/streams.h"
#include "base/utf8.h"
#include "report/fitting.h"
#include "report/result_fixture.h"

namespace zarven::tool::result_text_test {
namespace {

TEST(ResultText, OneOfEverything) {
    EXPECT_EQ(result_text(result_with_everything()),
              read_text(RECALCULO_TOOL_TESTS "/report/result_with_everything.txt"));
}

TEST(ResultText, LabelsOfModulesAndPlacesOfStreams) {
    const std::string text = result_text(with_labels(result_with_everything()));
    EXPECT_NE(text.find("Module M1 (Rack 1, slot 3) · model 3 · controller\n"), std::string::npos) << text;
    EXPECT_NE(text.find("Module M2 · model 3\n"), std::string::npos);
    EXPECT_NE(text.find("Input 1 · stream 1/1001 (19.2E 12187.5 MHz H) · 4 services\n"), std::string::npos);
    EXPECT_NE(text.find("Input 1 · free · tuned to stream 2/7\n"), std::string::npos);
    EXPECT_NE(text.find("Stream 1/1002 (514 MHz) · 1 service\n"), std::string::npos);
}

TEST(ResultText, WhatWasMeasured) {
    Result result = result_with_everything();
    ServiceResult& service = result.left_out.at(0).services.at(0);
    service.is_measured = true;
    EXPECT_NE(result_text(result).find("1 CA PID, measured\n"), std::string::npos) << result_text(result);
    service.mean_bitrate = 2890;
    EXPECT_NE(result_text(result).find("1 CA PID, measured, mean 2890\n"), std::string::npos);
}

TEST(ResultText, AnEmptyResult) {
    EXPECT_EQ(result_text(Result()),
              "0 services loaded: 0 placed, 0 left out; 0 of 0 inputs in use on 0 modules\n");
}

TEST(ResultText, WhatWasNotAskedFor) {
    Result result;
    result.counts.loaded = 3;
    result.counts.placed = 2;
    result.counts.left_out = 1;
    result.counts.not_asked_for = 12;
    EXPECT_EQ(result_text(result), "3 services loaded, 12 not asked for: 2 placed, 1 left out; 0 of 0 inputs "
                                   "in use on 0 modules\n");
}

TEST(ResultText, OnANarrowTerminalWithColours) {
    EXPECT_EQ(result_text(result_with_everything(), {true, true, 72}),
              read_text(RECALCULO_TOOL_TESTS "/report/result_narrow_in_colour.txt"));
}

TEST(ResultText, OnANarrowerTerminalWithoutUtf8) {
    EXPECT_EQ(result_text(result_with_everything(), {false, false, 50}),
              read_text(RECALCULO_TOOL_TESTS "/report/result_narrow_in_ascii.txt"));
}

/// Everything, with names in many scripts.
Result result_with_names() {
    Result result = result_with_everything();
    const ServiceResult model = result.modules[0].inputs[0].services[0];
    for (const char* name : {"央视新闻频道 高清", "قناة الجزيرة", "ערוץ הכנסת", "Te\u0301le\u0301vision",
                             "📺 👨\u200D👩\u200D👧 🇪🇸", "हिन्दी", "M\xFCnchen\t\x9B\u202E"}) {
        ServiceResult service = model;
        service.name = name;
        service.output_name = name;
        result.modules[0].inputs[0].services.push_back(service);
        service.outputs = {};
        result.left_out[0].services.push_back(service);
    }
    return result;
}

TEST(ResultText, NoLineIsLongerThanTheTerminal) {
    Result result = result_with_names();
    result.left_out[0].services[0].reason = "No input is tuned to stream 1/1002 and none is free.";
    expect_to_fit([&](const TextStyle& style) { return result_text(result, style); });
}

TEST(ResultText, PlainCharactersWhereThereAreNoOthers) {
    expect_plain_characters([](const TextStyle& style) { return result_text(result_with_names(), style); });
}

TEST(ResultText, NamesInAnyScriptKeepTheColumns) {
    for (const TextStyle& style :
         {TextStyle{false, true, 0}, TextStyle{false, true, 60}, TextStyle{false, false, 60}}) {
        int rows = 0;
        int end = 0;
        for (const std::string& line : lines_of(result_text(result_with_names(), style))) {
            const std::size_t unit =
                line.find(" kbit/s  " + std::string(symbols_of(style).arrow) + " output");
            if (unit == std::string::npos)
                continue;
            const int width = display_width(line.substr(0, unit));
            EXPECT_EQ(width, rows++ == 0 ? end = width : end) << line;
        }
        EXPECT_EQ(rows, 11);
    }
}

/// The text between the heading of the only stream left out and the summary.
std::string left_out(const std::vector<std::string>& reasons, int width) {
    Result result;
    StreamResult stream{{1, 1002}, {}};
    for (const std::string& reason : reasons) {
        ServiceResult service;
        service.stream = stream.stream;
        service.name = service.output_name = "Canal";
        service.reason = reason;
        stream.services.push_back(service);
    }
    result.left_out = {stream};
    const std::string text = result_text(result, {false, true, width});
    const std::size_t begin = text.find('\n', text.find("Stream 1/1002")) + 1;
    return text.substr(begin, text.find("\n\n", begin) + 1 - begin);
}

const std::string canal = "        0  Canal                 0 kbit/s\n";

TEST(ResultText, AReasonStandsUnderItsService) {
    EXPECT_EQ(left_out({"No room at all."}, 0), canal + "           No room at all.\n");
    EXPECT_EQ(left_out({"No room.", "No PIDs.", ""}, 0),
              canal + "           No room.\n" + canal + "           No PIDs.\n" + canal);
    EXPECT_EQ(left_out({"No room at all on any of the outputs."}, 42),
              canal + "           No room at all on any of the\n             outputs.\n");
}

TEST(ResultText, AStreamThatIsNotThatOfTheHeadingIsTold) {
    Result result = result_with_everything();
    result.modules[0].inputs[0].services[0].stream = {7, 8};
    result.left_out[0].services[0].stream = {7, 9};
    const std::string text = result_text(result);
    EXPECT_NE(text.find("→ output 1      stream 7/8\n"), std::string::npos) << text;
    EXPECT_NE(text.find("scrambled, 1 CA PID, stream 7/9\n"), std::string::npos) << text;
}

TEST(ResultText, AReasonThatAllShareStandsOnce) {
    EXPECT_EQ(left_out({"No room.", "No room."}, 0), "    No room.\n" + canal + canal);
    EXPECT_EQ(left_out({"", ""}, 0), canal + canal);
}

/// The colour of the bar of the only output of a module.
std::string bar_colour(std::uint32_t used, std::uint32_t max) {
    ModuleResult module;
    module.outputs = {{1, used, max, 0, 512, {}}};
    Result result;
    result.modules = {module};
    const std::string text = result_text(result, {true, true, 0});
    const std::string before = "  Output 1  ";
    const std::size_t begin = text.find(before) + before.size();
    return text.substr(begin, 1) == "\x1B" ? text.substr(begin + 2, 2) : "";
}

TEST(ResultText, AFullBarIsRedAndANearlyFullOneYellow) {
    EXPECT_EQ(bar_colour(900, 1000), "");
    EXPECT_EQ(bar_colour(901, 1000), "33");
    EXPECT_EQ(bar_colour(999, 1000), "33");
    EXPECT_EQ(bar_colour(1000, 1000), "31");
    EXPECT_EQ(bar_colour(0, 0), "");
    EXPECT_EQ(bar_colour(4294967295u, 4294967295u), "31");
}

/// The bar of the only output of a module.
std::string bar(std::uint32_t used, std::uint32_t max) {
    ModuleResult module;
    module.outputs = {{1, used, max, 0, 512, {}}};
    Result result;
    result.modules = {module};
    const std::string text = result_text(result);
    const std::string before = "  Output 1  ";
    const std::size_t begin = text.find(before) + before.size();
    return text.substr(begin, text.find("  ", begin) - begin);
}

std::string cells(int filled) {
    std::string text;
    for (int cell = 0; cell < 24; ++cell)
        text += cell < filled ? "█" : "░";
    return text;
}

TEST(ResultText, ABarIsEmptyForNothingAndFullForAllOnly) {
    EXPECT_EQ(bar(0, 38000), cells(0));
    EXPECT_EQ(bar(1, 38000), cells(1));
    EXPECT_EQ(bar(19000, 38000), cells(12));
    EXPECT_EQ(bar(37999, 38000), cells(23));
    EXPECT_EQ(bar(38000, 38000), cells(24));
}

TEST(ResultText, ABarSurvivesOddFigures) {
    EXPECT_EQ(bar(4294966296u, 38000), cells(24));
    EXPECT_EQ(bar(4294967294u, 4294967295u), cells(23));
    EXPECT_EQ(bar(5, 0), cells(0));
}

} // namespace
} // namespace zarven::tool::result_text_test
