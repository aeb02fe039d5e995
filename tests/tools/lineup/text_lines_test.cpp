// Line ends, encodings, numbers and complaints, at their limits.

#include "lineup/text_lines.h"

#include <gtest/gtest.h>

namespace zarven::tool::text_lines_test {
namespace {

using namespace std::string_literals;

std::vector<std::string> texts(const std::string& text) {
    std::vector<std::string> all;
    for (const Line& line : lines_of(text)) {
        all.push_back(line.text);
        EXPECT_EQ(line.number, all.size());
    }
    return all;
}

template <class Function> std::string complaint(Function function) {
    try {
        function();
    } catch (const BadLine& bad) {
        return bad.what();
    }
    return "(none)";
}

TEST(LinesOf, EveryLineEnd) {
    EXPECT_EQ(texts("a\nb\r\n\nc"), (std::vector<std::string>{"a", "b", "", "c"}));
    EXPECT_EQ(texts("a\n"), (std::vector<std::string>{"a", ""}));
    EXPECT_EQ(texts("a\r\r\n"), (std::vector<std::string>{"a\r", ""}));
    EXPECT_EQ(texts(""), std::vector<std::string>{""});
}

TEST(LinesOf, AByteOrderMarkIsNoPartOfTheFirstLine) {
    EXPECT_EQ(texts("\xEF\xBB\xBF"
                    "a"),
              std::vector<std::string>{"a"});
    EXPECT_EQ(texts("\xEF\xBB"), std::vector<std::string>{"\u00EF\u00BB"});
}

TEST(LinesOf, Latin1IsToldLineByLine) {
    EXPECT_EQ(texts("M\xFCnchen\nMúsica"), (std::vector<std::string>{"München", "Música"}));
}

TEST(LinesOf, NulIsACharacterLikeOthers) {
    EXPECT_EQ(texts("a\0b\nc"s), (std::vector<std::string>{"a\0b"s, "c"}));
}

TEST(Trimmed, BlanksAndTabsAtTheEndsOnly) {
    EXPECT_EQ(trimmed(" \ta b\t "), "a b");
    EXPECT_EQ(trimmed(" \t"), "");
    EXPECT_TRUE(is_blank(""));
    EXPECT_TRUE(is_blank(" \t"));
    EXPECT_FALSE(is_blank(" x"));
}

TEST(TextLines, BlankLinesAndRemarksSayNothing) {
    EXPECT_TRUE(is_blank_or_remark(" \t"));
    EXPECT_TRUE(is_blank_or_remark(" # a"));
    EXPECT_FALSE(is_blank_or_remark("a # b"));
}

TEST(TextLines, ANumberIsWithinItsLimits) {
    EXPECT_EQ(read_number("n", "2", 2, 9), 2);
    EXPECT_EQ(read_number("n", "9", 2, 9), 9);
    for (const char* wrong : {"1", "10", "-2", "2.0", "65538", ""})
        EXPECT_THROW(read_number("n", wrong, 2, 9), BadLine) << wrong;
    try {
        read_number("n", "1", 2, 9);
    } catch (const BadLine& bad) {
        EXPECT_STREQ(bad.what(), "n: found \"1\", expected a whole number from 2 to 9");
    }
}

TEST(IsNumber, IsAllOfTheText) {
    std::uint32_t number = 0;
    EXPECT_TRUE(is_number("4294967295", 4294967295u, number));
    EXPECT_EQ(number, 4294967295u);
    EXPECT_TRUE(is_number("fF", 255, number, 16));
    EXPECT_EQ(number, 255u);
    for (const std::string bad : {"", "-1", "+1", " 1", "1 ", "1x", "4294967296", "0x1"})
        EXPECT_FALSE(is_number(bad, 4294967295u, number)) << bad;
    EXPECT_FALSE(is_number("256", 255, number));
}

TEST(ReadId, Limits) {
    EXPECT_EQ(read_id("SID", "65535"), 65535);
    EXPECT_EQ(read_id("SID", "FFFF", 16), 65535);
    EXPECT_EQ(complaint([] { read_id("SID", "65536"); }),
              "SID: found \"65536\", expected a whole number from 0 to 65535");
    EXPECT_EQ(complaint([] { read_id("SID", "10000", 16); }),
              "SID: found \"10000\", expected a hexadecimal number from 0 to FFFF");
}

TEST(Reject, ALongTextIsCutBetweenCharacters) {
    const std::string sixty(60, 'x');
    EXPECT_EQ(complaint([&] { reject("f", sixty, "y"); }), "f: found \"" + sixty + "\", expected y");
    EXPECT_EQ(complaint([&] { reject("f", sixty + "x", "y"); }), "f: found \"" + sixty + "…\", expected y");
    const std::string fifty_nine(59, 'x');
    EXPECT_EQ(complaint([&] { reject("f", fifty_nine + "ñx", "y"); }),
              "f: found \"" + fifty_nine + "…\", expected y");
}

TEST(TextLines, ANumberWhoseFaultsMayPass) {
    EXPECT_EQ(number_or_0("4294967295"), 4294967295u);
    for (const std::string bad : {"", "x", "-1", "4294967296", "1 "})
        EXPECT_EQ(number_or_0(bad), 0u) << bad;
}

} // namespace
} // namespace zarven::tool::text_lines_test
