// Tables of rates.

#include "measured/rates_csv.h"

#include <gtest/gtest.h>

#include "failure_message.h"

namespace zarven::tool::rates_csv_test {
namespace {

MeasuredService only_row(const std::string& text) {
    const MeasuredFile read = read_rates_csv("x", text);
    EXPECT_TRUE(read.unreadable.empty());
    return read.measurements.at(0).services.at(0);
}

TEST(RatesCsv, ReadsARow) {
    const MeasuredService service = only_row("onid,tsid,sid,kbit_s\n1,1002,201,4200.25\n");
    EXPECT_EQ(service.onid, 1);
    EXPECT_EQ(service.tsid, 1002);
    EXPECT_EQ(service.sid, 201);
    EXPECT_EQ(service.rate, 4200250);
    EXPECT_FALSE(service.tells_scrambling);
}

TEST(RatesCsv, TakesColumnsByTheirNames) {
    const MeasuredService service =
        only_row("\xEF\xBB\xBF# a remark\r\n\r\nName;KBIT_S; sid;\"tsid\"\r\nUno, dos;4200;201;\"1002\"\r\n");
    EXPECT_EQ(service.onid, std::nullopt);
    EXPECT_EQ(service.tsid, 1002);
    EXPECT_EQ(service.sid, 201);
    EXPECT_EQ(service.rate, 4200000);
    EXPECT_EQ(only_row("onid\ttsid\tsid\tkbit_s\n\t1\t2\t3\n").onid, std::nullopt);
}

TEST(RatesCsv, TheFirstSeparatorOfCommaSemicolonAndTabIsTheOne) {
    EXPECT_EQ(only_row("tsid,sid,kbit_s,\"a;b\"\n1,2,3\n").rate, 3000);
    EXPECT_EQ(only_row("tsid;sid;kbit_s;a\tb\n1;2;3\n").rate, 3000);
}

TEST(RatesCsv, AQuoteThatIsNotClosedIsPartOfTheField) {
    EXPECT_EQ(read_rates_csv("x", "tsid,sid,kbit_s\n1,2,\"30\n").unreadable.size(), 1u);
    EXPECT_EQ(read_rates_csv("x", "tsid,sid,kbit_s\n1,2,\"\n").unreadable.size(), 1u);
    EXPECT_EQ(only_row("tsid,sid,kbit_s\n1,2,\"3\"\n").rate, 3000);
}

TEST(RatesCsv, TheCaseOfAHeadingDoesNotMatter) {
    EXPECT_EQ(only_row("ABCDEFGHIJKLMNOPQRSTUVWXYZ,TSID,SID,KBIT_S\n,1,2,3\n").rate, 3000);
}

TEST(RatesCsv, TellsRowsThatCannotBeReadAndGoesOn) {
    const MeasuredFile read =
        read_rates_csv("x", "onid,tsid,sid,kbit_s\n"
                            "1,65536,1,4\n1,1,1\n1,1,1,fast\n1,1,1,4.\n1,1,1,-4\n"
                            "1,1,1,4.0000000001\n1,1,1,4294967296\n1,65535,1,4294967295\n");
    EXPECT_EQ(read.measurements.at(0).services.size(), 1u);
    ASSERT_EQ(read.unreadable.size(), 7u);
    EXPECT_EQ(read.unreadable[0].rfind("x: line 2: tsid: found \"65536\", expected ", 0), 0u);
    EXPECT_EQ(read.unreadable[1],
              "x: line 3: kbit_s: found \"\", expected a number of kbit/s such as 4200 or 4200.5");
}

TEST(RatesCsv, NeedsItsHeading) {
    EXPECT_EQ(failure_message([] { read_rates_csv("x", "\nonid,tsid,sid\n1,1,1\n"); }),
              "x: line 2: found the heading \"onid,tsid,sid\", expected onid,tsid,sid,kbit_s");
    EXPECT_TRUE(is_rates_csv("\n# rates\ntsid;sid;kbit_s\n"));
    for (const char* one_column : {"tsid", "sid", "kbit_s"})
        EXPECT_TRUE(is_rates_csv(one_column)) << "its reader then tells what is missing";
    EXPECT_FALSE(is_rates_csv("1,1,1,4200\n"));
    EXPECT_FALSE(is_rates_csv(""));
}

} // namespace
} // namespace zarven::tool::rates_csv_test
