// Tables as text.

#include "lineup/csv.h"

#include <gtest/gtest.h>

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

TEST(Csv, BlankLinesAndRemarksArePassedOver) {
    EXPECT_TRUE(is_passed_over_in_csv(" \t"));
    EXPECT_TRUE(is_passed_over_in_csv(" # a"));
    EXPECT_FALSE(is_passed_over_in_csv("a # b"));
}

} // namespace
} // namespace zarven::tool::csv_test
