// Which values of a document stand on one line.

#include "records/json_layout.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace zarven::tool::json_layout_test {
namespace {

using nlohmann::ordered_json;

const ordered_json document =
    ordered_json::parse(R"({"name": "a\nb", "list": [{"one": [1, 2]}, {}], "none": []})");

TEST(JsonLayout, LevelsOnLinesAndTheRestOnOne) {
    EXPECT_EQ(laid_out(document, {1}),
              "{\n  \"name\": \"a\\nb\",\n  \"list\": [{ \"one\": [1, 2] }, {}],\n  \"none\": []\n}\n");
    EXPECT_EQ(laid_out(document, {2}),
              "{\n  \"name\": \"a\\nb\",\n  \"list\": [\n    { \"one\": [1, 2] },\n    {}\n"
              "  ],\n  \"none\": []\n}\n");
}

TEST(JsonLayout, AValueThatIsTooLongWithItsCommaStandsOnLines) {
    const ordered_json list = {{"a", {1, 2}}};
    const std::size_t width = std::string("  \"a\": [1, 2],").size();
    EXPECT_EQ(laid_out(list, {1, width}), "{\n  \"a\": [1, 2]\n}\n");
    EXPECT_EQ(laid_out(list, {1, width - 1}), "{\n  \"a\": [\n    1,\n    2\n  ]\n}\n");
}

} // namespace
} // namespace zarven::tool::json_layout_test
