// Wish lists of each form: short, long, damaged.

#include "wishes/wish_list.h"

#include <gtest/gtest.h>

#include "failure_message.h"

namespace zarven::tool::wish_list_test {
namespace {

WishList read(const std::string& text) {
    return read_wish_list("x", text);
}

TEST(Bouquet, HasIdsInOrder) {
    const WishList list = read("#NAME Favourites\n"
                               "#SERVICE 1:0:19:283D:3FB:1:C00000:0:0:0:\n"
                               "#SERVICE: 1:0:1:FFFF:0:FFFF:82000000:0:0:0::Radio Uno\n");
    EXPECT_EQ(list.format, WishFormat::bouquet);
    ASSERT_EQ(list.wishes.size(), 2u);
    EXPECT_EQ(list.wishes[0].line, 2u);
    EXPECT_EQ(list.wishes[0].place, 1u);
    EXPECT_EQ(list.wishes[0].ids->sid, 0x283D);
    EXPECT_EQ(list.wishes[0].ids->tsid, 0x3FB);
    EXPECT_EQ(list.wishes[0].ids->onid, 1);
    EXPECT_EQ(list.wishes[0].ids->satellite, "19.2E");
    EXPECT_EQ(list.wishes[0].name, "");
    EXPECT_EQ(list.wishes[0].group, "Favourites");
    EXPECT_EQ(list.wishes[1].ids->sid, 65535);
    EXPECT_EQ(list.wishes[1].name, "Radio Uno");
    EXPECT_EQ(list.wishes[1].ids->satellite, "");
    EXPECT_TRUE(list.unreadable.empty());
    EXPECT_TRUE(list.skipped.empty());
}

TEST(Bouquet, HeadingsAreGroups) {
    const WishList list = read("\xEF\xBB\xBF#NAME All\r\n"
                               "#SERVICE 1:0:1:1:1:1:0:0:0:0:\r\n"
                               "#DESCRIPTION Uno\r\n"
                               "#SERVICE 1:64:1:0:0:0:0:0:0:0:\r\n"
                               "#DESCRIPTION: Sport\r\n"
                               "#DESCRIPTION: not another\r\n"
                               "#SERVICE 1:0:1:2:1:1:0:0:0:0:\r\n"
                               "#SERVICE 1:64:2:0:0:0:0:0:0:0::News\r\n"
                               "#SERVICE 1:0:1:3:1:1:0:0:0:0:\r\n");
    ASSERT_EQ(list.wishes.size(), 3u);
    EXPECT_EQ(list.wishes[0].group, "All");
    EXPECT_EQ(list.wishes[0].name, "Uno");
    EXPECT_EQ(list.wishes[1].group, "Sport");
    EXPECT_EQ(list.wishes[1].place, 2u);
    EXPECT_EQ(list.wishes[2].group, "News");
    EXPECT_EQ(list.places, 3u);
}

TEST(Bouquet, WhatIsNoServiceIsCounted) {
    const WishList list =
        read("#SERVICE 4097:0:1:0:0:0:0:0:0:0:http%3a//host/a:A\n"
             "#SERVICE 1:0:1:1:0:0:0:0:0:0:http%3a//host/b:B\n"
             "#SERVICE 1:7:1:0:0:0:0:0:0:0:FROM BOUQUET \"userbouquet.x.tv\" ORDER BY bouquet\n"
             "#SERVICE 1:832:D:0:0:0:0:0:0:0:\n"
             "#SERVICE 1:0:1:1:1:1:0:0:0:0:\n"
             "#SORT 1\n");
    ASSERT_EQ(list.wishes.size(), 1u);
    EXPECT_EQ(list.wishes[0].place, 5u);
    EXPECT_EQ(list.skipped.size(), 3u);
    EXPECT_EQ(list.skipped.at("streams from the internet (IPTV)"), 2u);
    EXPECT_EQ(list.skipped.at("references to other bouquets"), 1u);
}

TEST(Bouquet, ADamagedLineCostsThatLine) {
    const WishList list = read("#SERVICE 1:0:1:1:1\n"
                               "#DESCRIPTION no name of it\n"
                               "#SERVICE 1:0:1:1G:1:1:0:0:0:0:\n"
                               "#SERVICE 1:0:1:10000:1:1:0:0:0:0:\n"
                               "#SERVICE 1:0:1:1:1:1:100000000:0:0:0:\n"
                               "stray\n"
                               "#SERVICE 1:0:1:1:1:1:0:0:0:0:\n");
    ASSERT_EQ(list.wishes.size(), 1u);
    EXPECT_EQ(list.wishes[0].place, 5u);
    ASSERT_EQ(list.unreadable.size(), 5u);
    EXPECT_EQ(list.unreadable[0],
              "x: line 1: #SERVICE: found \"1:0:1:1:1\", expected 1:0:TYPE:SID:TSID:ONID:NAMESPACE:0:0:0:");
    EXPECT_EQ(list.unreadable[1],
              "x: line 3: SID: found \"1G\", expected a hexadecimal number from 0 to FFFF");
    EXPECT_EQ(list.unreadable[4],
              "x: line 6: line: found \"stray\", expected #SERVICE, #DESCRIPTION or #NAME");
}

TEST(WishTable, HasWhatItsHeadingNames) {
    const WishList list = read("# ours\nONID;TSID;SID;LCN;Name;Value;Must;Output Name;Group;One of\n"
                               "1;1019;10301;1;Das Erste;1000;yes;\"ARD; first\";Public;ARD\n"
                               ";1019;10302;;;;;;;\n"
                               ";;;65535;;0;no;;;\n");
    EXPECT_EQ(list.format, WishFormat::csv);
    EXPECT_TRUE(list.unreadable.empty()) << list.unreadable.front();
    ASSERT_EQ(list.wishes.size(), 3u);
    const Wish& first = list.wishes[0];
    EXPECT_EQ(first.line, 3u);
    EXPECT_EQ(first.ids->onid, 1);
    EXPECT_EQ(first.ids->tsid, 1019);
    EXPECT_EQ(first.ids->sid, 10301);
    EXPECT_EQ(first.lcn, 1);
    EXPECT_EQ(first.name, "Das Erste");
    EXPECT_EQ(first.value, 1000);
    EXPECT_EQ(first.must, true);
    EXPECT_EQ(first.output_name, "ARD; first");
    EXPECT_EQ(first.group, "Public");
    EXPECT_EQ(first.one_of, "ARD");
    EXPECT_EQ(list.wishes[1].ids->onid, std::nullopt);
    EXPECT_EQ(list.wishes[1].value, std::nullopt);
    EXPECT_EQ(list.wishes[1].must, std::nullopt);
    EXPECT_EQ(list.wishes[2].lcn, 65535);
    EXPECT_EQ(list.wishes[2].value, 0);
    EXPECT_EQ(list.wishes[2].must, false);
}

TEST(WishTable, ADamagedRowCostsThatRow) {
    const WishList list = read("name,lcn,value,must,sid,tsid,colour\n"
                               "A,0,,,,,\nA,65536,,,,,\nA,,1001,,,,\nA,,-1,,,,\nA,,,perhaps,,,\nA,,,,1,,\n"
                               ",,5,,,,\n\"A,,,,,,\nA\n");
    ASSERT_EQ(list.wishes.size(), 1u);
    EXPECT_EQ(list.wishes[0].place, 9u);
    ASSERT_EQ(list.unreadable.size(), 8u);
    EXPECT_EQ(list.unreadable[0], "x: line 2: lcn: found \"0\", expected a whole number from 1 to 65535");
    EXPECT_EQ(list.unreadable[2], "x: line 4: value: found \"1001\", expected a whole number from 0 to 1000");
    EXPECT_EQ(list.unreadable[4],
              "x: line 6: must: found \"perhaps\", expected true, yes, 1 or x, or false, no or 0");
    EXPECT_EQ(list.unreadable[6],
              "x: line 8: service: found \",,5,,,,\", expected a sid with its tsid, a name or an lcn");
    EXPECT_EQ(list.skipped.at("column \"colour\""), 1u);
}

TEST(WishTable, NeedsTheTsidBesideTheSid) {
    EXPECT_EQ(failure_message([] { read("sid,name\n1,A\n"); }),
              "x: line 1: found the heading \"sid,name\", expected tsid beside sid; the columns are "
              "onid,tsid,sid,lcn,name,value,must,output_name,group,one_of");
}

TEST(WishedNames, AreNamesAndNumbersUnderHeadings) {
    const WishList list = read("\xEF\xBB\xBF# ours\r\nCanal Uno\r\n\r\n[ Sport ]\r\n 24 \r\nEspa\xF1"
                               "a\r\n70000\r\n[]\r\n");
    EXPECT_EQ(list.format, WishFormat::names);
    ASSERT_EQ(list.wishes.size(), 5u);
    EXPECT_EQ(list.wishes[0].name, "Canal Uno");
    EXPECT_EQ(list.wishes[0].line, 2u);
    EXPECT_EQ(list.wishes[0].group, "");
    EXPECT_EQ(list.wishes[1].lcn, 24);
    EXPECT_EQ(list.wishes[1].name, "24");
    EXPECT_EQ(list.wishes[1].group, "Sport");
    EXPECT_EQ(list.wishes[1].place, 2u);
    EXPECT_EQ(list.wishes[2].name, "España");
    EXPECT_EQ(list.wishes[3].lcn, std::nullopt);
    EXPECT_EQ(list.wishes[4].name, "[]");
}

TEST(WishList, AFileInWhichNothingIsAWishIsRefused) {
    const std::string expected =
        "expected a bouquet (#SERVICE 1:0:...), a table with a heading such as name,lcn or onid,tsid,sid, or a "
        "name or LCN on each line";
    EXPECT_EQ(failure_message([] { read(""); }), "x: found nothing that is a wish; " + expected);
    EXPECT_EQ(failure_message([] { read("#NAME only\n"); }), "x: found nothing that is a wish; " + expected);
    EXPECT_EQ(failure_message([] { read("name,lcn\n"); }), "x: found nothing that is a wish; " + expected);
    EXPECT_EQ(failure_message([] { read("name\n\"\n"); }),
              "x: found nothing that is a wish; 1 line cannot be read, the first: x: line 2: quotes: found "
              "\"\"\", expected a second quote where the field ends; " +
                  expected);
    EXPECT_EQ(failure_message([] { read("#SERVICE 1:7:1:0:0:0:0:0:0:0:x\n"); }),
              "x: found nothing that is a wish; 1 skipped: references to other bouquets; " + expected);
    EXPECT_EQ(failure_message([] { read(" {\"services\": []}"); }),
              "x: found JSON, expected a wish list: " + expected.substr(9));
    EXPECT_EQ(failure_message([] { read("eDVB services /4/\n"); }),
              "x: found a channel list (lamedb), expected a wish list: " + expected.substr(9));
}

TEST(WishList, ALongListIsRead) {
    std::string text = "name,lcn\n";
    for (int number = 1; number <= 5000; ++number)
        text += "Canal " + std::to_string(number) + "," + std::to_string(number) + "\n";
    const WishList list = read(text);
    ASSERT_EQ(list.wishes.size(), 5000u);
    EXPECT_EQ(list.wishes.back().lcn, 5000);
}

} // namespace
} // namespace zarven::tool::wish_list_test
