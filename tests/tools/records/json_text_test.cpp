// Where a text stops being JSON, and keys that come twice.

#include "records/json_text.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "failure_message.h"

namespace zarven::tool::json_text_test {
namespace {

std::string complaint(const std::string& text) {
    return failure_message([&] { parse_json("headend.json", text); });
}

TEST(ParseJson, BuildsTheValue) {
    const nlohmann::json expected = {
        {"name", "Música"}, {"numbers", {1, -2, 3.5, true, nullptr}}, {"empty", {}}};
    EXPECT_EQ(parse_json("f", R"({"name": "Música", "numbers": [1, -2, 3.5, true, null], "empty": null})"),
              expected);
}

TEST(ParseJson, NamesLineAndColumnOfASyntaxError) {
    EXPECT_EQ(complaint("{\n  \"modules\": [\n    { \"mac\": }\n"),
              "headend.json: line 3, column 14: not JSON: syntax error while parsing value - unexpected '}'; "
              "expected '[', '{', or a literal");
}

TEST(ParseJson, CountsColumnsInCharacters) {
    EXPECT_EQ(complaint("{ \"ñandú\" 1 }").substr(0, 42), "headend.json: line 1, column 11: not JSON:");
}

TEST(ParseJson, NamesTheEndOfACutFile) {
    EXPECT_EQ(
        complaint("[1,\n2"),
        "headend.json: line 2, column 2: not JSON: syntax error while parsing array - unexpected end of input; "
        "expected ']'");
}

TEST(ParseJson, AnEmptyFileIsNotJson) {
    EXPECT_EQ(complaint(""),
              "headend.json: line 1, column 1: not JSON: syntax error while parsing value - unexpected "
              "end of input; expected '[', '{', or a literal");
}

TEST(ParseJson, MoreAfterTheEndIsNotJson) {
    EXPECT_EQ(complaint("{} {}").substr(0, 41), "headend.json: line 1, column 4: not JSON:");
}

TEST(ParseJson, ANumberTooLargeForAnyTypeIsRefused) {
    EXPECT_EQ(complaint("[1e999]").substr(0, 41), "headend.json: line 1, column 6: not JSON:");
}

TEST(ParseJson, BytesThatAreNotUtf8AreRefused) {
    EXPECT_EQ(complaint("[\"M\xFCnchen\"]").substr(0, 41), "headend.json: line 1, column 4: not JSON:");
}

TEST(ParseJson, ALongReasonIsCut) {
    EXPECT_LT(complaint("[" + std::string(5000, '9') + "]").size(), 300u);
    EXPECT_LT(complaint("[\"" + std::string(5000, 'a') + "\xFF\"]").size(), 300u);
}

TEST(ParseJson, AKeyThatComesTwiceIsShownAsFarAsItCanBe) {
    EXPECT_EQ(complaint(R"({"a\u0000b": 1, "a\u0000b": 2})"),
              "headend.json: top level: found the key \"a\uFFFDb\" twice, expected it once");
    const std::string key(61, 'k');
    EXPECT_EQ(complaint("{\"" + key + "\": 1, \"" + key + "\": 2}"),
              "headend.json: top level: found the key \"" + std::string(60, 'k') +
                  "…\" twice, expected it once");
}

TEST(ParseJson, TellsUtf16) {
    const std::string message = "headend.json: the text is UTF-16, expected UTF-8";
    for (const std::string text : {"\xFF\xFE{", "\xFE\xFF", "\xFF\xFE"})
        EXPECT_EQ(complaint(text), message);
    EXPECT_EQ(complaint(std::string("{\0}\0", 4)), message);
    EXPECT_EQ(complaint(std::string("\0{\0}", 4)), message);
    EXPECT_EQ(complaint(std::string("\0\0", 2)).substr(0, 41), "headend.json: line 1, column 1: not JSON:");
    EXPECT_EQ(complaint("\xFF").substr(0, 41), "headend.json: line 1, column 1: not JSON:");
}

TEST(ParseJson, NamesTheObjectThatHasAKeyTwice) {
    EXPECT_EQ(complaint(R"({"a": 1, "b": 2, "a": 3})"),
              "headend.json: top level: found the key \"a\" twice, expected it once");
    EXPECT_EQ(complaint(R"({"services": [{"lcn": 1}, [], {"sub/1": {"lcn": 2, "sid": 1, "lcn": 3}}]})"),
              "headend.json: /services/2/sub~11: found the key \"lcn\" twice, expected it once");
}

TEST(ParseJson, TheSameKeyInSeveralObjectsIsFine) {
    EXPECT_NO_THROW(parse_json("f", R"([{"a": 1}, {"a": {"a": [{"a": 2}]}}])"));
}

TEST(ParseJson, DeepNestingDoesNotExhaustTheStack) {
    const std::size_t levels = 100000;
    EXPECT_NO_THROW(parse_json("f", std::string(levels, '[') + std::string(levels, ']')));
}

} // namespace
} // namespace zarven::tool::json_text_test
