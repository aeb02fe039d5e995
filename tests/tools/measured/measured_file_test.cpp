// Files of measured rates, whatever their form.

#include "measured/measured_file.h"

#include <gtest/gtest.h>

#include "failure_message.h"

namespace zarven::tool::measured_file_test {
namespace {

std::string analysis(int rate) {
    return R"({"ts":{"id":7,"bitrate":100},"services":[{"id":5,"bitrate":)" + std::to_string(rate) + "}]}";
}

std::vector<double> rates(const MeasuredFile& read) {
    std::vector<double> all;
    for (const Measurement& look : read.measurements)
        for (const MeasuredService& service : look.services)
            all.push_back(service.rate);
    return all;
}

TEST(MeasuredFile, IsAnAnalysisAlone) {
    EXPECT_EQ(rates(read_measured_file("x", analysis(3))), (std::vector<double>{3}));
    EXPECT_EQ(rates(read_measured_file("x", "\n{\n  \"services\": [],\n  \"ts\": {}\n}\n")),
              (std::vector<double>{}));
    EXPECT_NE(failure_message([] { read_measured_file("x", analysis(3).substr(0, 30)); }).find("x: line 1"),
              std::string::npos);
}

TEST(MeasuredFile, IsALogWithOtherLinesBetween) {
    const std::string log =
        "* tsp: starting\n* analyze: RATES " + analysis(3) +
        "\n* Debug: {not an analysis}\n* analyze: nothing yet\n* 2026/01/01 - analyze: " + analysis(4) +
        "\r\n";
    const MeasuredFile read = read_measured_file("x", log);
    EXPECT_EQ(rates(read), (std::vector<double>{3, 4}));
    EXPECT_TRUE(read.unreadable.empty());
}

TEST(MeasuredFile, MayHaveAnAnalysisALine) {
    EXPECT_EQ(rates(read_measured_file("x", analysis(3) + "\n" + analysis(4) + "\n")),
              (std::vector<double>{3, 4}));
}

TEST(MeasuredFile, TellsDamagedLinesOfALogAndGoesOn) {
    const MeasuredFile read = read_measured_file("x", "* analyze: {\"ts\": {\n* analyze: " + analysis(4) +
                                                          "\n* analyze: {\"ts\": {}}\n");
    EXPECT_EQ(rates(read), (std::vector<double>{4}));
    ASSERT_EQ(read.unreadable.size(), 2u);
    EXPECT_EQ(read.unreadable[0].rfind("x: line 1: ", 0), 0u);
    EXPECT_EQ(read.unreadable[1],
              "x: line 3: top level: found no \"ts\" and \"services\", expected the analysis of a stream");
}

TEST(MeasuredFile, IsATable) {
    EXPECT_EQ(rates(read_measured_file("x", "tsid,sid,kbit_s\n7,5,2\n")), (std::vector<double>{2000}));
}

TEST(MeasuredFile, IsSomethingElse) {
    for (const char* text : {"", "\n\n", "hello\n", "* analyze: no braces\n"})
        EXPECT_EQ(failure_message([&] {
                      read_measured_file("x", text);
                  }).rfind("x: found no measurement, expected ", 0),
                  0u)
            << text;
}

} // namespace
} // namespace zarven::tool::measured_file_test
