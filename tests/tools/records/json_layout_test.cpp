// Which values of a document stand on one line, and the document around a list that is written entry by
// entry.

#include "records/json_layout.h"

#include <stdexcept>

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

TEST(JsonLayout, AnOpenedListIsLaidOutAsTheWholeDocument) {
    const OpenedList list = opened_at("list", document);
    EXPECT_EQ(list.begin + entry_of_opened(document["list"][0]) + "," + entry_of_opened(document["list"][1]) +
                  list.end,
              document.dump(2) + "\n");
    const OpenedList last = opened_at("none", document);
    EXPECT_EQ(last.end, "\n  ]\n}\n");
}

TEST(JsonLayout, AListThatIsNotThereIsNotOpened) {
    EXPECT_THROW(opened_at("lists", document), std::logic_error);
}

} // namespace
} // namespace zarven::tool::json_layout_test
