// Where a text stops being JSON, and keys that come twice.

#include "records/json_text.h"

#include <algorithm>
#include <string>

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
              "headend.json: line 3, column 14: found '}', expected a value");
}

TEST(ParseJson, CountsColumnsInCharacters) {
    EXPECT_EQ(complaint("{ \"ñandú\" 1 }"), "headend.json: line 1, column 11: found a number, expected ':'");
}

TEST(ParseJson, SaysWhatItFoundAndWhatItExpected) {
    const auto reason = [](const std::string& text) {
        const std::string whole = complaint(text);
        return whole.substr(std::min(whole.find("found"), whole.size()));
    };
    EXPECT_EQ(reason(R"({"a": 1 "b": 2})"), "found a text, expected ',' or '}'");
    EXPECT_EQ(reason(R"({"a": 1, })"), "found '}', expected a key in double quotes");
    EXPECT_EQ(reason(R"({a: 1})"), "found \"a\", expected a key in double quotes");
    EXPECT_EQ(reason(R"({'a': 1})"), "found \"'\", expected a key in double quotes");
    EXPECT_EQ(reason(R"([1 2])"), "found a number, expected ',' or ']'");
    EXPECT_EQ(reason(R"([1, ])"), "found ']', expected a value");
    EXPECT_EQ(reason(R"([1})"), "found '}', expected ',' or ']'");
    EXPECT_EQ(reason(R"({"a"})"), "found '}', expected ':'");
    EXPECT_EQ(reason(R"([true false])"), "found false, expected ',' or ']'");
    EXPECT_EQ(reason(R"([tru])"), "found \"tru\", expected a value");
    EXPECT_EQ(reason(R"([yes, no])"), "found \"yes\", expected a value");
    EXPECT_EQ(reason(R"([1, // one)"), "found \"/\", expected a value");
    EXPECT_EQ(reason("[1,\n2"), "found the end, expected ',' or ']'");
    EXPECT_EQ(reason("{"), "found the end, expected a key in double quotes");
    EXPECT_EQ(reason("{} {}"), "found '{', expected nothing more");
    EXPECT_EQ(reason("[1e999]"), "found \"1e999\", expected a number that is not so large");
    EXPECT_EQ(reason("[-]"), "found a number that breaks off, expected a digit");
    EXPECT_EQ(reason("[1.]"), "found a number that breaks off, expected a digit");
    EXPECT_EQ(reason("[\"a"), "found the end in a text, expected '\"'");
    EXPECT_EQ(reason("[\"a\n\"]"), "found a line end in a text, expected '\"', or \\n for a line end");
    EXPECT_EQ(reason("[\"a\t\"]"), "found a tab in a text, expected \\t for a tab");
    EXPECT_EQ(reason("[\"a\x1B\"]"), "found a control character in a text, expected \\u and its four digits");
    EXPECT_EQ(reason(R"(["\d"])"),
              R"(found an unknown character after \, expected one of " \ / b f n r t u)");
    EXPECT_EQ(reason(R"(["\u12"])"), R"(found \u without four hexadecimal digits, expected them)");
    EXPECT_EQ(reason(R"(["\ud800 "])"), R"(found half of a character behind \u, expected its other half)");
    EXPECT_EQ(reason("[\"M\xFCnchen\"]"), "found a byte that is not UTF-8, expected UTF-8");
    EXPECT_EQ(reason("\xEF\xBB{}"), "found a damaged byte order mark, expected EF BB BF or none");
    // What was read last is not taken for the library's own words.
    EXPECT_EQ(reason(R"(["must be escaped", x])"), "found \"x\", expected a value");
}

TEST(ParseJson, NamesTheEndOfACutFile) {
    EXPECT_EQ(complaint("[1,\n2"), "headend.json: line 2, column 2: found the end, expected ',' or ']'");
}

TEST(ParseJson, AnEmptyFileIsNotJson) {
    for (const char* text : {"", " \r\n\t"})
        EXPECT_EQ(complaint(text), "headend.json: found nothing in it, expected JSON");
}

TEST(ParseJson, ALongWordIsCut) {
    EXPECT_LT(complaint("[" + std::string(5000, '9') + "]").size(), 200u);
    EXPECT_LT(complaint("[" + std::string(5000, 'a') + "]").size(), 200u);
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
    EXPECT_EQ(complaint("\xFF").substr(0, 33), "headend.json: line 1, column 1: f");
}

TEST(ParseJson, TextBehindANulIsAnError) {
    EXPECT_EQ(complaint(std::string("{}\n\0", 4)),
              "headend.json: line 2: found a NUL character, expected text");
    EXPECT_EQ(complaint(std::string("\0\0", 2)),
              "headend.json: line 1: found a NUL character, expected text");
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
