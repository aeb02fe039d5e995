// The whole table: where each service stands, and fields that must be quoted.

#include "report/result_csv.h"

#include <gtest/gtest.h>

#include "report/result_fixture.h"

namespace zarven::tool::result_csv_test {
namespace {

const std::string header =
    "placed,module,input,output,lcn,name,output_name,onid,tsid,sid,osid,bitrate,hd,radio,"
    "scrambled,ca_pids,transcoded,clone,reason,label,position,frequency,polarization,symbol_rate,"
    "measured,mean_bitrate,group\r\n";

TEST(ResultCsv, AnEmptyResult) {
    EXPECT_EQ(result_csv(Result()), header);
}

TEST(ResultCsv, OneOfEverything) {
    const std::string long_name = "A name that is longer than the column is wide";
    EXPECT_EQ(
        result_csv(result_with_everything()),
        header +
            "no,M1,1,,8,Canal Uno,Canal Uno,1,1001,105,105,4200,no,no,no,0,no,no,,,,,,,no,,\r\n"
            "yes,M1,1,1,5,Canal Uno,Canal Uno,1,1001,105,105,4200,no,no,no,0,no,no,,,,,,,no,,\r\n"
            "yes,M1,1,1,5,Canal Uno,Canal Uno,1,1001,105,105,0,no,no,no,0,no,yes,,,,,,,no,,\r\n"
            "yes,M1,1,1,12,海景 Música\uFFFD,Mar,1,1001,112,212,8000,yes,no,yes,3,yes,no,,,,,,,no,,\r\n"
            "yes,M1,1,10,12,海景 Música\uFFFD,Mar,1,1001,112,212,8000,yes,no,yes,3,yes,no,,,,,,,no,,\r\n"
            "no,,,,700," +
            long_name + "," + long_name +
            ",1,1002,105,105,4200,no,no,yes,1,no,no,No input is free for stream 1/1002.,,,,,,no,,\r\n"
            "no,,,,700,Canal Uno,Canal Uno,1,1002,105,105,0,no,no,no,0,no,yes,\"Its parent, \uFFFD, is left out.\",,,,,,no,,\r\n"
            "no,,,,11,Canal Uno,Canal Uno,1,1001,105,105,4200,no,no,no,0,no,no,It is neither placed nor left out.,,,,,,no,,\r\n");
}

TEST(ResultCsv, AServiceOnAnInputThatIsNeitherPlacedNorLeftOutHasOneLine) {
    Result result = result_with_everything();
    ServiceResult lost = result.modules.at(0).inputs.at(0).services.at(2);
    lost.reason = "Lost.";
    result.neither = {lost};
    const std::string table = result_csv(result);
    EXPECT_NE(
        table.find("no,M1,1,,8,Canal Uno,Canal Uno,1,1001,105,105,4200,no,no,no,0,no,no,Lost.,,,,,,no,,\r\n"),
        std::string::npos)
        << table;
    EXPECT_EQ(table.find("no,,,,8,"), std::string::npos);
}

TEST(ResultCsv, TheLabelOfAModule) {
    Result result = result_with_everything();
    result.modules.at(0).label = "=Rack 1, slot 3";
    const std::string table = result_csv(result);
    EXPECT_NE(
        table.find(
            "yes,M1,1,1,5,Canal Uno,Canal Uno,1,1001,105,105,4200,no,no,no,0,no,no,,\"'=Rack 1, slot 3\",,,,,no,,\r\n"),
        std::string::npos)
        << table;
    EXPECT_NE(
        table.find(
            "no,M1,1,,8,Canal Uno,Canal Uno,1,1001,105,105,4200,no,no,no,0,no,no,,\"'=Rack 1, slot 3\",,,,,no,,\r\n"),
        std::string::npos);
    EXPECT_NE(table.find("No input is free for stream 1/1002.,,,,,,no,,\r\n"), std::string::npos);
}

TEST(ResultCsv, WhatAReceiverIsTunedBy) {
    Result result = result_with_everything();
    result.streams = {{1, 1001, 12187500, "H", "19,2E", 22'000'000},
                      {1, 1002, 514000, "", ""},
                      {1, 1001, 1, "V", "of two the first counts", 1}};
    const std::string table = result_csv(result);
    EXPECT_NE(table.find("yes,M1,1,1,5,Canal Uno,Canal Uno,1,1001,105,105,4200,no,no,no,0,no,no,,,"
                         "\"19,2E\",12187500,H,22000000,no,,\r\n"),
              std::string::npos)
        << table;
    EXPECT_NE(table.find("No input is free for stream 1/1002.,,,514000,,,no,,\r\n"), std::string::npos);
}

TEST(ResultCsv, AServiceWithoutInput) {
    Result result = result_with_everything();
    result.modules.at(0).outputs = {{3, 0, 0, 0, 512, result.modules.at(0).without_input}};
    EXPECT_NE(result_csv(result).find("yes,M1,,3,9,Canal Uno,"), std::string::npos);
}

TEST(ResultCsv, FieldsAreQuotedWhereTheyMustBe) {
    const auto name_field = [](const std::string& name) {
        Result result;
        ServiceResult service;
        service.name = name;
        result.left_out = {{{1, 1}, {service}}};
        const std::string table = result_csv(result).substr(header.size());
        const std::string before = "no,,,,0,";
        EXPECT_EQ(table.substr(0, before.size()), before);
        return table.substr(before.size(), table.find(",,0,0,") - before.size());
    };
    EXPECT_EQ(name_field(""), "");
    EXPECT_EQ(name_field("a;b 'c'"), "a;b 'c'");
    EXPECT_EQ(name_field("a,b"), "\"a,b\"");
    EXPECT_EQ(name_field("\"a\" b"), "\"\"\"a\"\" b\"");
    EXPECT_EQ(name_field("a\nb"), "a\uFFFDb");
    EXPECT_EQ(name_field("a\r\x1B\u009Bb"), "a\uFFFD\uFFFD\uFFFDb");
    for (const std::string beginning : {"=", "+", "-", "@", "＝", "＋", "－", "＠"})
        EXPECT_EQ(name_field(beginning + "1+1"), "'" + beginning + "1+1");
    EXPECT_EQ(name_field("=1,2"), "\"'=1,2\"");
    EXPECT_EQ(name_field("\t=1"), "\uFFFD=1");
    EXPECT_EQ(name_field("\r=1"), "\uFFFD=1");
    EXPECT_EQ(name_field("1+1=2"), "1+1=2");
}

TEST(ResultCsv, WhetherTheRateWasMeasuredAndTheGroup) {
    Result result;
    ServiceResult service;
    service.is_measured = true;
    service.group = "=News, and more";
    ServiceResult known = service;
    known.mean_bitrate = 2890;
    known.group.clear();
    result.clones_waiting = {service, known};
    const std::string table = result_csv(result);
    EXPECT_NE(table.find(",,,,,yes,,\"'=News, and more\"\r\n"), std::string::npos) << table;
    EXPECT_NE(table.find(",,,,,yes,2890,\r\n"), std::string::npos) << table;
}

TEST(ResultCsv, Radio) {
    Result result;
    ServiceResult service;
    service.is_radio = true;
    service.is_hd = true; // of which a radio has nothing
    result.clones_waiting = {service};
    EXPECT_NE(result_csv(result).find(",no,yes,no,0,no,no,,,,,,,no,,\r\n"), std::string::npos);
}

} // namespace
} // namespace zarven::tool::result_csv_test
