// Encodings and column widths of names.

#include "base/utf8.h"

#include <gtest/gtest.h>

namespace zarven::tool::utf8_test {
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

TEST(DisplayWidth, TakesAClusterForOneCharacter) {
    EXPECT_EQ(display_width("❤\uFE0F"), 1);
    EXPECT_EQ(display_width("👨\u200D👩\u200D👧 TV"), 5);
    EXPECT_EQ(display_width("🇪🇸"), 2);
    EXPECT_EQ(display_width("🇪🇸🇫🇷"), 4);
    EXPECT_EQ(display_width("\u1112\u1161\u11AB"), 2); // a Korean syllable in parts
    EXPECT_EQ(display_width("שָׁלוֹם"), 4);
    EXPECT_EQ(display_width("قناة"), 4);
    EXPECT_EQ(display_width(""), 0);
}

TEST(DisplayWidth, CountsAByteThatIsNotUtf8AsOne) {
    EXPECT_EQ(display_width("M\xFCnchen"), 7);
}

TEST(Printable, ReplacesTheSeparatorsOfLines) {
    EXPECT_EQ(printable("a\u2028b\u2029c\u0085"), "a\uFFFDb\uFFFDc\uFFFD");
}

TEST(Printable, ReplacesWhatTurnsRoundTheRestOfALine) {
    EXPECT_EQ(printable("\u202Aa\u202Eb\u2066c\u2069"), "\uFFFDa\uFFFDb\uFFFDc\uFFFD");
    EXPECT_EQ(printable("\u200Fقناة\u200E\u2065"), "\u200Fقناة\u200E\u2065");
}

TEST(Ascii, TakesMarksOffLatinLetters) {
    EXPECT_EQ(ascii("Cine Clásico Télé Ñandú"), "Cine Clasico Tele Nandu");
    EXPECT_EQ(ascii("e\u0301"), "e");
}

TEST(Ascii, PutsAQuestionMarkPerColumn) {
    EXPECT_EQ(ascii("海景 TV"), "???? TV");
    EXPECT_EQ(ascii("Первый"), "??????");
    EXPECT_EQ(ascii("קן"), "??");
    EXPECT_EQ(ascii("👨\u200D👩\u200D👧"), "??");
    EXPECT_EQ(ascii("\uFFFD\xFC"), "??");
    EXPECT_EQ(ascii("½"), "?");
}

TEST(Ascii, SurvivesAClusterOfAnyLength) {
    std::string text = "a";
    for (int mark = 0; mark < 100; ++mark)
        text += "\u0301";
    EXPECT_EQ(ascii(text + "b"), "ab");
    for (int part = 0; part < 100; ++part)
        text += "\u200D👩";
    EXPECT_FALSE(ascii(text).empty());
}

TEST(Shortened, LeavesWhatFits) {
    EXPECT_EQ(shortened("Canal", 6, "…"), "Canal");
    EXPECT_EQ(shortened("Canal", 5, "…"), "Canal");
}

TEST(Shortened, EndsWithTheEllipsis) {
    EXPECT_EQ(shortened("Canal", 4, "…"), "Can…");
    EXPECT_EQ(shortened("Canal", 4, "..."), "C...");
    EXPECT_EQ(shortened("Canal", 1, "…"), "…");
    EXPECT_EQ(shortened("Canal", 3, "..."), "...");
}

TEST(Shortened, GoesWithoutTheEllipsisWhereItDoesNotFit) {
    EXPECT_EQ(shortened("Canal", 2, "..."), "Ca");
    EXPECT_EQ(shortened("Canal", 0, "…"), "");
}

TEST(Shortened, DoesNotCutACluster) {
    EXPECT_EQ(shortened("海景台", 5, "…"), "海景…");
    EXPECT_EQ(shortened("海景台", 4, "…"), "海…");
    EXPECT_EQ(shortened("e\u0301e\u0301e\u0301", 2, "…"), "e\u0301…");
    EXPECT_EQ(shortened("👨\u200D👩\u200D👧 TV", 2, "…"), "…");
}

using Lines = std::vector<std::string>;

TEST(Wrapped, BreaksAtBlanks) {
    EXPECT_EQ(wrapped("one two three", 0), Lines{"one two three"});
    EXPECT_EQ(wrapped("one two three", 13), Lines{"one two three"});
    EXPECT_EQ(wrapped("one two three", 12), (Lines{"one two", "three"}));
    EXPECT_EQ(wrapped("one two three", 7), (Lines{"one two", "three"}));
    EXPECT_EQ(wrapped("one two three", 6), (Lines{"one", "two", "three"}));
    EXPECT_EQ(wrapped("", 6), Lines{""});
}

TEST(Wrapped, BreaksLongWordsBetweenClusters) {
    EXPECT_EQ(wrapped("one threefour", 5), (Lines{"one", "three", "four"}));
    EXPECT_EQ(wrapped("海景台", 3), (Lines{"海", "景", "台"}));
    EXPECT_EQ(wrapped("海a", 1), (Lines{"?", "a"}));
}

} // namespace
} // namespace zarven::tool::utf8_test
