// What is concluded from the surroundings.

#include "report/terminal.h"

#include <gtest/gtest.h>

namespace zarven::tool::terminal_test {
namespace {

Surroundings terminal() {
    Surroundings surroundings;
    surroundings.is_terminal = true;
    surroundings.columns = 132;
    surroundings.term = "xterm";
    surroundings.is_utf8_locale = true;
    return surroundings;
}

bool has_colour(const Surroundings& surroundings, ColourChoice choice = ColourChoice::automatic) {
    return style_for(surroundings, choice).colour;
}

TEST(Terminal, ColourIsForTerminals) {
    EXPECT_TRUE(has_colour(terminal()));
    EXPECT_FALSE(has_colour(Surroundings()));
}

TEST(Terminal, NoColorAndDumbTerminalsHaveNone) {
    Surroundings surroundings = terminal();
    surroundings.no_color = "0";
    EXPECT_FALSE(has_colour(surroundings));
    surroundings = terminal();
    surroundings.term = "dumb";
    EXPECT_FALSE(has_colour(surroundings));
}

TEST(Terminal, TheOptionDecidesOverTheTerminalAndNoColorOverAll) {
    Surroundings surroundings;
    surroundings.term = "dumb";
    EXPECT_TRUE(has_colour(surroundings, ColourChoice::always));
    EXPECT_FALSE(has_colour(terminal(), ColourChoice::never));
    surroundings.no_color = "1";
    EXPECT_FALSE(has_colour(surroundings, ColourChoice::always));
}

TEST(Terminal, TheWordsOfTheOption) {
    EXPECT_EQ(colour_choices(), (std::vector<std::string>{"auto", "always", "never"}));
    EXPECT_EQ(colour_choice("auto"), ColourChoice::automatic);
    EXPECT_EQ(colour_choice("always"), ColourChoice::always);
    EXPECT_EQ(colour_choice("never"), ColourChoice::never);
}

int width(int columns, const std::string& variable, bool is_terminal = true) {
    Surroundings surroundings = terminal();
    surroundings.is_terminal = is_terminal;
    surroundings.columns = columns;
    surroundings.columns_variable = variable;
    return style_for(surroundings, ColourChoice::automatic).width;
}

TEST(Terminal, TheWidthIsTheTerminalsElseTheVariablesElse80) {
    EXPECT_EQ(width(132, "60"), 132);
    EXPECT_EQ(width(0, "60"), 60);
    for (const std::string variable : {"", "0", "-5", "wide", "60x", "99999999999"})
        EXPECT_EQ(width(0, variable), 80) << variable;
}

TEST(Terminal, AFileHasNoWidth) {
    EXPECT_EQ(width(132, "60", false), 0);
}

TEST(Terminal, OnlyATerminalThatObeysIsDrawnOver) {
    EXPECT_TRUE(can_redraw(terminal()));
    EXPECT_FALSE(can_redraw(Surroundings()));
    Surroundings dumb = terminal();
    dumb.term = "dumb";
    EXPECT_FALSE(can_redraw(dumb));
}

TEST(Terminal, TheLocaleDecidesOnTheCharacters) {
    Surroundings surroundings = terminal();
    EXPECT_EQ(shown("Música 海\n", style_for(surroundings, ColourChoice::never)), "Música 海\uFFFD");
    surroundings.is_utf8_locale = false;
    const TextStyle ascii = style_for(surroundings, ColourChoice::never);
    EXPECT_EQ(shown("Música 海\n", ascii), "Musica ???");
    EXPECT_EQ(symbols_of(ascii).full_cell, "#");
}

TEST(Terminal, PaintsWithColoursOnly) {
    EXPECT_EQ(painted("x", Paint::red, TextStyle()), "x");
    TextStyle style;
    style.colour = true;
    EXPECT_EQ(painted("x", Paint::bold, style), "\x1B[1mx\x1B[0m");
    EXPECT_EQ(painted("x", Paint::red, style), "\x1B[31mx\x1B[0m");
    EXPECT_EQ(painted("x", Paint::yellow, style), "\x1B[33mx\x1B[0m");
    EXPECT_EQ(painted("x", Paint::none, style), "x");
    EXPECT_EQ(painted("", Paint::red, style), "");
}

std::string paragraph(int width, int indent, bool colour = false) {
    TextStyle style;
    style.width = width;
    style.colour = colour;
    return paragraph_text("one two three four five six", indent, Paint::bold, style);
}

TEST(Paragraph, IsOneLineWhereItFits) {
    EXPECT_EQ(paragraph(0, 4), "    one two three four five six\n");
    EXPECT_EQ(paragraph(31, 4), "    one two three four five six\n");
}

TEST(Paragraph, IsSetBackFromTheSecondLineOn) {
    EXPECT_EQ(paragraph(30, 4), "    one two three four five\n      six\n");
    EXPECT_EQ(paragraph(24, 4, true), "    \x1B[1mone two three four\x1B[0m\n      \x1B[1mfive six\x1B[0m\n");
}

TEST(Paragraph, BeginsAtTheEdgeOfANarrowTerminal) {
    EXPECT_EQ(paragraph(23, 4), "one two three four five\nsix\n");
}

TEST(Heading, OfPartsAndOfAHeadend) {
    EXPECT_EQ(joined({"a", "b", "c"}, {}), "a · b · c");
    EXPECT_EQ(joined({"a", "b"}, {false, false, 0}), "a - b");
    EXPECT_EQ(title_text("", {}), "");
    EXPECT_EQ(title_text("Casa\x1B", {}), "Casa\uFFFD\n\n");
    EXPECT_EQ(title_text("Casa", {true, true, 0}), "\x1B[1mCasa\x1B[0m\n\n");
}

} // namespace
} // namespace zarven::tool::terminal_test
