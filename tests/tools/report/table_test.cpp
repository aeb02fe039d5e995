// Tables that fit, to the character.

#include "report/table.h"

#include <sstream>

#include <gtest/gtest.h>

#include "base/utf8.h"

namespace zarven::tool::table_test {
namespace {

std::vector<Column> columns() {
    Column number;
    number.heading = "No";
    number.align = Align::right;
    Column name;
    name.heading = "Name";
    name.narrowest = 6;
    name.readable = 10;
    Column rate;
    rate.heading = "Rate";
    rate.align = Align::right;
    rate.dispensable = 1;
    Column notes;
    notes.heading = "Notes";
    notes.wrapped_at = 8;
    return {number, name, rate, notes};
}

const std::vector<Row> rows = {{"7", "海景 Música", "4200", "HD, scrambled"},
                               {"12", "e\u0301te\u0301", "200", ""}};

std::string table(int width) {
    TextStyle style;
    style.width = width;
    return table_text(columns(), rows, 1, style);
}

TEST(Table, ColumnsAreAsWideAsTheirWidestCell) {
    EXPECT_EQ(table(0), " No  Name         Rate  Notes\n"
                        "  7  海景 Música  4200  HD, scrambled\n"
                        " 12  e\u0301te\u0301           200\n");
}

TEST(Table, StaysAsItIsWhereItFits) {
    EXPECT_EQ(table(37), table(0));
}

TEST(Table, ShortensNamesFirstAsLongAsTheyAreReadable) {
    EXPECT_EQ(table(36), " No  Name        Rate  Notes\n"
                         "  7  海景 Músi…  4200  HD, scrambled\n"
                         " 12  e\u0301te\u0301          200\n");
}

TEST(Table, ThenWrapsTheLastColumn) {
    EXPECT_EQ(table(34), " No  Name        Rate  Notes\n"
                         "  7  海景 Músi…  4200  HD,\n"
                         "                       scrambled\n"
                         " 12  e\u0301te\u0301          200\n");
}

TEST(Table, ThenPutsItBeneathWhereItDoesNotFitBeside) {
    EXPECT_EQ(table(30), " No  Name         Rate  Notes\n"
                         "  7  海景 Música  4200\n"
                         "     HD, scrambled\n"
                         " 12  e\u0301te\u0301           200\n");
}

TEST(Table, ThenShortensNamesFurther) {
    EXPECT_EQ(table(19), " No  Name      Rate\n"
                         "     Notes\n"
                         "  7  海景 Mú…  4200\n"
                         "     HD, scrambled\n"
                         " 12  e\u0301te\u0301        200\n");
}

TEST(Table, ThenLeavesColumnsAway) {
    EXPECT_EQ(table(16), " No  Name\n"
                         "Notes\n"
                         "  7  海景 Música\n"
                         "HD, scrambled\n"
                         " 12  e\u0301te\u0301\n");
}

TEST(Table, NoLineIsEverLongerThanTheTerminal) {
    for (int width = 1; width < 45; ++width) {
        std::istringstream lines(table(width));
        for (std::string line; std::getline(lines, line);)
            EXPECT_LE(display_width(line), width) << line;
    }
}

TEST(Table, GivesUpSpareRoomBeforeAnythingElse) {
    Column number;
    number.least = 5;
    TextStyle style;
    style.width = 9;
    Table table({number, Column()}, 0, style);
    const Row row = {"1", "abcdef"};
    table.measure(row);
    table.fit();
    EXPECT_EQ(table.lines(row), "1  abcdef\n");
}

TEST(Table, AWideCellPushesItsOwnLineWhereTheWidthHasNoLimit) {
    const TextStyle style;
    Column name;
    name.least = 3;
    name.most = 5;
    Table table({name, Column()}, 0, style);
    const Row wide = {"1234567", "x"};
    const Row narrow = {"12", "y"};
    table.measure(wide);
    table.measure(narrow);
    table.fit();
    EXPECT_EQ(table.lines(wide) + table.lines(narrow), "1234567  x\n12     y\n");
}

TEST(Table, ColourTakesNoColumns) {
    TextStyle style;
    style.colour = true;
    style.width = 9;
    Column name;
    name.narrowest = 2;
    Table table({name, Column()}, 0, style);
    const Row row = {Cell("123456", Paint::red), "abc"};
    table.measure(row);
    table.fit();
    EXPECT_EQ(table.width(0), 4);
    EXPECT_EQ(table.begin(1), 6);
    EXPECT_EQ(table.lines(row), "\x1B[31m123…\x1B[0m  abc\n");
}

TEST(Table, WithoutHeadingsHasNoLineForThem) {
    EXPECT_EQ(table_text({Column(), Column()}, {{"a", "b"}, {"cd", "e"}}, 2, {}), "  a   b\n  cd  e\n");
}

} // namespace
} // namespace zarven::tool::table_test
