// Tables as text.

#include "lineup/csv.h"

#include <gtest/gtest.h>

#include "failure_message.h"
#include "lineup/text_lines.h"

namespace zarven::tool::csv_test {
namespace {

using Fields = std::vector<std::string>;

TEST(Csv, HasTheSeparatorOfItsHeading) {
    EXPECT_EQ(CsvHeading("a,b;c").columns(), (Fields{"a", "b;c"}));
    EXPECT_EQ(CsvHeading("a;b\tc").columns(), (Fields{"a", "b\tc"}));
    EXPECT_EQ(CsvHeading("a\tb").columns(), (Fields{"a", "b"}));
    EXPECT_EQ(CsvHeading("a").columns(), Fields{"a"});
}

TEST(Csv, ColumnsAreKnownWhateverTheirCase) {
    const CsvHeading heading(" Output Name ;\"LCN\";one-of");
    EXPECT_EQ(heading.columns(), (Fields{"output_name", "lcn", "one_of"}));
    EXPECT_TRUE(heading.has("lcn"));
    EXPECT_FALSE(heading.has("LCN"));
    EXPECT_EQ(CsvHeading("\"open,b").columns(), Fields{});
}

TEST(Csv, FieldsMayStandInQuotes) {
    const CsvHeading heading("a,b,c");
    EXPECT_EQ(heading.fields_of(" \"x, y\" ,\"say \"\"no\"\"\",z\"z"),
              (Fields{"x, y", "say \"no\"", "z\"z"}));
    EXPECT_EQ(heading.fields_of("\"\",,"), (Fields{"", "", ""}));
    EXPECT_THROW(heading.fields_of("\"x"), BadLine);
    EXPECT_THROW(heading.fields_of("\"x\"\""), BadLine);
    EXPECT_THROW(heading.fields_of("\"x\"y,z"), BadLine);
    EXPECT_EQ(CsvHeading("a\tb").fields_of("\t\"x\ty\""), (Fields{"", "x\ty"}));
}

TEST(Csv, FieldsAreFoundByTheirColumn) {
    const CsvHeading heading("a,b");
    EXPECT_EQ(heading.field({"1", "2", "3"}, "b"), "2");
    EXPECT_EQ(heading.field({"1"}, "b"), "");
    EXPECT_EQ(heading.field({"1", "2", "3"}, "c"), "");
}

TEST(Csv, ATableHasItsHeadingAndARecordOnEachFurtherLine) {
    const CsvTable table("x", "# a remark\n\nname;lcn\nUno;1\n \nDos;2\n");
    EXPECT_EQ(table.heading()->columns(), (Fields{"name", "lcn"}));
    EXPECT_EQ(table.records(), 2u);
    std::vector<std::string> read;
    EXPECT_EQ(table.read([&read](const CsvRecord& record) {
        read.push_back(std::to_string(record.place()) + " on " + std::to_string(record.line().number) + ": " +
                       std::string(record.field("name")) + std::string(record.field("lcn")) +
                       std::string(record.field("sid")));
    }),
              Fields{});
    EXPECT_EQ(read, (Fields{"1 on 4: Uno1", "2 on 6: Dos2"}));
}

TEST(Csv, ATableTellsTheRecordsThatCannotBeReadAndGoesOn) {
    const CsvTable table("x", "name,lcn\nUno,one\n\"Dos,2\nTres,3\n");
    std::vector<std::size_t> places;
    const std::vector<std::string> unreadable = table.read([&places](const CsvRecord& record) {
        read_id("lcn", record.field("lcn"));
        places.push_back(record.place());
    });
    EXPECT_EQ(unreadable, (Fields{"x: line 2: lcn: found \"one\", expected a whole number from 0 to 65535",
                                  "x: line 3: quotes: found \"\"Dos,2\", expected a second quote where the "
                                  "field ends"}));
    EXPECT_EQ(places, std::vector<std::size_t>{3}) << "the others have their places, too";
}

TEST(Csv, ATableMayRejectItsHeading) {
    EXPECT_EQ(failure_message([] { CsvTable("x", "#\nname,lcn\n").reject_heading("name,sid"); }),
              "x: line 2: found the heading \"name,lcn\", expected name,sid");
}

TEST(Csv, ATextWithoutLinesIsATableWithoutAnything) {
    for (const char* text : {"", "\n \n", "# a remark"}) {
        const CsvTable table("x", text);
        EXPECT_FALSE(table.heading()) << text;
        EXPECT_EQ(table.records(), 0u) << text;
        EXPECT_EQ(table.read([](const CsvRecord&) { FAIL(); }), Fields{}) << text;
    }
    EXPECT_EQ(CsvTable("x", "name").records(), 0u);
}

} // namespace
} // namespace zarven::tool::csv_test
