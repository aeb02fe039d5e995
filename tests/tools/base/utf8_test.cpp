// Encodings and column widths of names.

#include "base/utf8.h"

#include <gtest/gtest.h>

namespace zarven::tool {
namespace {

using namespace std::string_literals;

TEST(IsUtf8, AcceptsWellFormedText) {
    EXPECT_TRUE(is_utf8(""));
    EXPECT_TRUE(is_utf8("plain"));
    EXPECT_TRUE(is_utf8("Música 海景 📺"));
    EXPECT_TRUE(is_utf8("a\0b"s));
}

TEST(IsUtf8, RefusesStrayCutAndOverlongBytes) {
    EXPECT_FALSE(is_utf8("M\xFCnchen"));
    EXPECT_FALSE(is_utf8("cut \xE6\xB5"));
    EXPECT_FALSE(is_utf8("\xC0\xAF"));
}

TEST(Latin1ToUtf8, ConvertsEveryByte) {
    EXPECT_EQ(latin1_to_utf8("M\xFCnchen \xA1Ol\xE9!"), "München ¡Olé!");
    EXPECT_EQ(latin1_to_utf8("\x7F\x80\xBF\xC0\xFF"), "\x7F\xC2\x80\xC2\xBF\xC3\x80\xC3\xBF");
}

TEST(Printable, ReplacesControlCharactersOnly) {
    EXPECT_EQ(printable("a\x1B[2Jb\tc\nd"), "a\uFFFD[2Jb\uFFFDc\uFFFDd");
    EXPECT_EQ(printable("Música 海景 📺"), "Música 海景 📺");
}

TEST(Printable, ReplacesBytesThatAreNotUtf8) {
    EXPECT_EQ(printable("M\xFCnchen \xE6\xB5"), "M\uFFFDnchen \uFFFD\uFFFD");
}

TEST(DisplayWidth, CountsColumnsNotBytes) {
    EXPECT_EQ(display_width("Canal"), 5);
    EXPECT_EQ(display_width("Música"), 6);
    EXPECT_EQ(display_width("Северный"), 8);
    EXPECT_EQ(display_width("海景"), 4);
    EXPECT_EQ(display_width("e\u0301"), 1);
}

TEST(PadRight, FillsUpToTheColumn) {
    EXPECT_EQ(pad_right("海景", 6), "海景  ");
    EXPECT_EQ(pad_right("Música", 8), "Música  ");
}

TEST(PadRight, LeavesALongerTextWhole) {
    EXPECT_EQ(pad_right("Canal", 3), "Canal");
}

} // namespace
} // namespace zarven::tool
