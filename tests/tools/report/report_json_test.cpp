// The whole JSON report, value by value and in order.

#include "report/report_json.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "base/streams.h"
#include "report/report_fixture.h"

namespace zarven::tool {
namespace {

TEST(JsonReport, OneOfEverything) {
    EXPECT_EQ(json_report(result_with_everything()),
              read_text(RECALCULO_TOOL_TESTS "/report/report_with_everything.json"));
}

TEST(JsonReport, AnEmptyResult) {
    const auto expected =
        nlohmann::ordered_json::parse(R"({"modules": [], "left_out": [], "clones_waiting": [],
        "warnings": [], "summary": {"loaded": 0, "placed": 0, "left_out": 0, "clones_attached": 0,
        "clones_waiting": 0}})");
    EXPECT_EQ(json_report(Result()), expected.dump(2) + "\n");
}

} // namespace
} // namespace zarven::tool
