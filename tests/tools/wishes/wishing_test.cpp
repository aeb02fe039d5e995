// What wishes mean, and what follows for the services.

#include "wishes/wishing.h"

#include <gtest/gtest.h>

#include "report/wishing_text.h"
#include "wishes/made_wishes.h"

namespace zarven::tool::wishing_test {
namespace {

using Lines = std::vector<std::string>;

const std::vector<Service> four = {made_service("Uno HD", 5, 1001, 101), made_service("Dos", 2, 1001, 102),
                                   made_service("Tres", 3, 1002, 103), made_service("Dos", 4, 1002, 104)};

std::vector<std::size_t> met(const Wishing& wishing) {
    std::vector<std::size_t> places;
    for (const MetWish& one : wishing.met)
        places.push_back(one.service);
    return places;
}

using Places = std::vector<std::size_t>;

Wishing find(const Lines& texts, const std::vector<Service>& services = four,
             const std::vector<Reception>& streams = {}) {
    return find_wishes(made_lists(texts), services, streams);
}

Lines messages(const Lines& texts, const std::vector<Service>& services = four,
               MessageDigest::Extent extent = MessageDigest::Extent::all) {
    const std::vector<WishList> lists = made_lists(texts);
    return wishing_messages(lists, services, find_wishes(lists, services, {}), extent);
}

TEST(Wishing, NamesAreFoundInTheOrderOfTheLists) {
    EXPECT_EQ(met(find({"tres\nUNO HD\n", "Dos\ntres\n"})), (Places{2, 0, 1}));
}

TEST(Wishing, ANumberIsANameOrAnLcn) {
    EXPECT_EQ(met(find({"3\n5\n"})), (Places{2, 0}));
    std::vector<Service> services = four;
    services[1].name = "3";
    EXPECT_EQ(met(find({"3\n"}, services)), Places{1});
    EXPECT_TRUE(find({"6\n"}).met.empty());
}

TEST(Wishing, OfOneNameTheLcnDecidesElseTheFirst) {
    EXPECT_EQ(met(find({"name,lcn\nDos,4\n"})), Places{3});
    EXPECT_EQ(met(find({"name,lcn\nDos,9\n"})), Places{1});
    EXPECT_EQ(
        messages({"Dos\n"}),
        (Lines{"list1: line 1: \"Dos\" may be \"Dos\" (LCN 2 of stream 1/1001), which is taken, or \"Dos\" "
               "(LCN 4 of stream 1/1002)",
               "list1: read as names: 1 wish, of which 1 found"}));
}

TEST(Wishing, IdsComeBeforeNames) {
    EXPECT_EQ(
        met(find({"onid,tsid,sid,name\n1,1002,104,Uno HD\n1,1002,105,Tres\n,1001,101,\n2,1001,102,\n"})),
        (Places{3, 2, 0}));
    EXPECT_EQ(met(find({"lcn\n3\n"})), Places{2});
    EXPECT_TRUE(find({"name,lcn\nNadie,3\n"}).met.empty()) << "the LCN is the one that is wished for";
}

TEST(Wishing, AStreamWithoutOnidHasTheIdsOfAny) {
    std::vector<Service> services = four;
    services[2].onid = 0;
    EXPECT_EQ(met(find({"onid,tsid,sid\n7,1002,103\n"}, services)), Places{2});
}

TEST(Wishing, ATsidThatWasMadeUpIsPassedOver) {
    std::vector<Service> services = four;
    services[3].tsid = 11362;
    const std::vector<Reception> streams = {{1, 1002, 12000000, "", "19.2E"},
                                            {1, 11362, 11362000, "", "19.2E"}};
    const std::string bouquet = "#SERVICE 1:0:1:68:44D:1:C00000:0:0:0:\n"; // 1/1101, SID 104, 19.2E
    const Wishing wishing = find({bouquet}, services, streams);
    ASSERT_EQ(met(wishing), Places{3});
    EXPECT_EQ(wishing.met[0].likeness, Likeness::other_tsid);
    EXPECT_TRUE(find({bouquet}, four, streams).met.empty()) << "a TSID of its own";
    EXPECT_TRUE(find({"#SERVICE 1:0:1:68:44D:1:820000:0:0:0:\n"}, services, streams).met.empty()) << "13.0E";
    EXPECT_TRUE(find({"#SERVICE 1:0:1:68:44D:2:C00000:0:0:0:\n"}, services, streams).met.empty()) << "ONID 2";
}

TEST(Wishing, TheSameIdsOnAnotherSatelliteAreAnothers) {
    const std::vector<Reception> streams = {{1, 1002, 12000000, "", "13.0E"}};
    EXPECT_TRUE(find({"#SERVICE 1:0:1:67:3EA:1:C00000:0:0:0:\n"}, four, streams).met.empty());
    EXPECT_EQ(met(find({"#SERVICE 1:0:1:67:3EA:1:820000:0:0:0:\n"}, four, streams)), Places{2});
}

TEST(Wishing, WhatIsNotFoundIsToldWithTheNearestName) {
    EXPECT_EQ(
        messages({"Trse\nuno\nonid,x\n", "#SERVICE 1:0:1:1:2:3:0:0:0:0:\n", "lcn,name\n9,\n,tres\n,TRES\n"}),
        (Lines{
            "list1: line 1: no service is called \"Trse\"; did you mean \"Tres\" (LCN 3 of stream 1/1002)?",
            "list1: line 3: no service is called \"onid,x\"",
            "list2: line 1: no service has SID 1 of stream 3/2", "list3: line 2: no service has the LCN 9",
            "list1: line 2: \"uno\" is taken for \"Uno HD\" (LCN 5 of stream 1/1001)",
            "list3: line 4: \"Tres\" is wished for before: passed over",
            "list1: read as names: 3 wishes, of which 1 found, 2 not found",
            "list2: read as bouquet: 1 wish, of which 0 found, 1 not found",
            "list3: read as table: 3 wishes, of which 1 found, 1 wished for before, 1 not found"}));
}

TEST(Wishing, OfManyNotFoundThreeAreTold) {
    const Lines told =
        messages({"Trse 1\nTrse 2\nTrse 3\nTrse 4\nTrse 5\n"}, four, MessageDigest::Extent::few_of_each);
    ASSERT_EQ(told.size(), 5u);
    EXPECT_NE(told[2].find("\"Trse 3\"; did you mean"), std::string::npos);
    EXPECT_EQ(told[3], "list1: 2 more, which --verbose tells: wishes that no service meets");
    EXPECT_EQ(messages({"Trse 1\nTrse 2\nTrse 3\nTrse 4\n"})[3].find("list1: line 4: no service is called"),
              0u);
}

TEST(Wishing, WithheldServicesAreTold) {
    std::vector<Service> services = four;
    services[2].ask = false;
    EXPECT_EQ(messages({"Tres\n"}, services)[0],
              "list1: line 1: \"Tres\" (LCN 3 of stream 1/1002) has \"ask\": false: not asked for");
}

std::vector<std::uint16_t> values(const Lines& texts, std::vector<Service> services = four) {
    const std::vector<WishList> lists = made_lists(texts);
    value_wishes(lists, find_wishes(lists, services, {}), services);
    std::vector<std::uint16_t> made;
    for (const Service& service : services)
        made.push_back(service.value);
    return made;
}

using Values = std::vector<std::uint16_t>;

TEST(WishValues, TheFirstOfManyIsWorthTheirNumber) {
    EXPECT_EQ(values({"Tres\nNadie\nUno HD\n", "Dos\n"}), (Values{2, 1, 3, 1}));
    EXPECT_EQ(values({"Tres\n"}), (Values{1, 1, 1, 1}));
}

TEST(WishValues, AValueOfItsOwnWins) {
    EXPECT_EQ(values({"name,value\nTres,\nUno HD,700\nDos,0\n"}), (Values{700, 0, 3, 1}));
}

TEST(WishValues, VariantsOfOneHaveOnePlace) {
    EXPECT_EQ(values({"name,one_of\nTres,T\nUno HD,D\nDos,D\n"}), (Values{1, 1, 2, 1}));
    std::vector<Service> services = four;
    services[0].one_of = services[2].one_of = "x";
    EXPECT_EQ(values({"Dos\nTres\nUno HD\n"}, services), (Values{1, 2, 1, 1}));
}

TEST(WishValues, MoreThanTheMostValueAreSpread) {
    std::vector<Service> services;
    std::string text;
    for (std::uint16_t number = 1; number <= 1001; ++number) {
        services.push_back(made_service("Canal " + std::to_string(number), number, 1, number));
        text += services.back().name + "\n";
    }
    const Values made = values({text}, services);
    EXPECT_EQ(made.front(), 1000);
    EXPECT_EQ(made[1], 1000);
    EXPECT_EQ(made[2], 999);
    EXPECT_EQ(made.back(), 1);
    services.pop_back();
    text.resize(text.rfind("Canal"));
    EXPECT_EQ(values({text}, services)[1], 999);
}

TEST(WishValues, TheRestOfALineIsTakenOver) {
    std::vector<Service> services = four;
    services[1].must = true;
    services[2].group = "Old";
    const auto lists =
        made_lists({"name,must,output_name,group,one_of\nUno HD,yes,First,Best,U\nDos,no,,,\nTres,,,,\n"});
    value_wishes(lists, find_wishes(lists, services, {}), services);
    EXPECT_TRUE(services[0].must);
    EXPECT_EQ(services[0].output_name, "First");
    EXPECT_EQ(services[0].group, "Best");
    EXPECT_EQ(services[0].one_of, "U");
    EXPECT_FALSE(services[1].must);
    EXPECT_EQ(services[1].output_name, "Dos");
    EXPECT_EQ(services[2].group, "Old");
}

} // namespace
} // namespace zarven::tool::wishing_test
