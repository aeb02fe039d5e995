// Every term, its limits, and how terms and lists go together.

#include "headend/service_filter.h"

#include <gtest/gtest.h>

#include "failure_message.h"

namespace zarven::tool::service_filter_test {
namespace {

Service service(const std::string& name = "Canal", std::uint16_t lcn = 12) {
    Service made;
    made.name = name;
    made.lcn = lcn;
    made.onid = 1;
    made.tsid = 1002;
    return made;
}

bool holds(const std::string& terms, const Service& service) {
    return ServiceTerms("--only", terms).hold_for(service);
}

TEST(ServiceTerms, Kinds) {
    const Service sd = service();
    Service hd = service();
    hd.video_format = tRec_Servicio::VIDEO_HD;
    Service radio = service();
    radio.type = type_radio;
    Service unknown = service();
    unknown.kind_unknown = true;
    const std::pair<std::string, std::vector<bool>> expected[] = {{"tv", {true, true, false, false}},
                                                                  {"sd", {true, false, false, false}},
                                                                  {"hd", {false, true, false, false}},
                                                                  {"radio", {false, false, true, false}},
                                                                  {"unknown", {false, false, false, true}}};
    for (const auto& [term, answers] : expected)
        EXPECT_EQ(
            (std::vector<bool>{holds(term, sd), holds(term, hd), holds(term, radio), holds(term, unknown)}),
            answers)
            << term;
}

TEST(ServiceTerms, Scrambling) {
    Service scrambled = service();
    scrambled.descramble = 1;
    EXPECT_TRUE(holds("scrambled", scrambled));
    EXPECT_FALSE(holds("scrambled", service()));
    EXPECT_TRUE(holds("free", service()));
    EXPECT_FALSE(holds("free", scrambled));
}

TEST(ServiceTerms, StreamsAndNumbers) {
    EXPECT_TRUE(holds("1/1002", service()));
    EXPECT_FALSE(holds("1/1003", service()));
    EXPECT_FALSE(holds("2/1002", service()));
    EXPECT_TRUE(holds("12", service()));
    EXPECT_FALSE(holds("13", service()));
    EXPECT_TRUE(holds("12-12", service()));
    EXPECT_TRUE(holds("0-12", service()));
    EXPECT_FALSE(holds("0-11", service()));
    EXPECT_FALSE(holds("13-65535", service()));
}

TEST(ServiceTerms, Names) {
    for (const std::string pattern : {"Canal", "canal", "*", "C*", "*l", "*a*a*", "C?nal", "?????", "Canal*"})
        EXPECT_TRUE(holds("name=" + pattern, service())) << pattern;
    for (const std::string pattern : {"Cana", "anal", "????", "??????", "*x*", "Canal?"})
        EXPECT_FALSE(holds("name=" + pattern, service())) << pattern;
    EXPECT_TRUE(holds("name=Espa?a", service("España")));
    EXPECT_FALSE(holds("name=" + std::string(2000, '*') + "x", service(std::string(2000, 'a'))));
}

TEST(ServiceTerms, Groups) {
    Service sport = service();
    sport.group = "Sport and more";
    EXPECT_TRUE(holds("group=sport*", sport));
    EXPECT_FALSE(holds("group=Sport", sport));
    EXPECT_FALSE(holds("group=?*", service()));
}

TEST(ServiceTerms, OneOfSeveralMustHold) {
    EXPECT_TRUE(holds("hd, 12", service()));
    EXPECT_FALSE(holds("hd,13", service()));
}

TEST(ServiceTerms, WhatIsNoneIsRefused) {
    for (const std::string bad :
         {"", "HD", "hdd", "1/", "1/x", "1/65536", "65536", "13-12", "1-", "-1", "name=", "group=", "*x*"})
        EXPECT_EQ(
            failure_message([&bad] { ServiceTerms("--only", bad); }),
            "--only: found \"" + bad +
                "\", expected tv, radio, hd, sd, scrambled, free, unknown, a stream as 1/1002, LCNs as 12 or "
                "100-199, name=PATTERN or group=PATTERN with * and ?");
    EXPECT_ANY_THROW(ServiceTerms("--only", "hd,"));
}

TEST(ServiceSelection, NamesAndNumbers) {
    const ServiceSelection selection({{2, "Canal UNO"}, {4, "7"}, {5, "24"}});
    EXPECT_TRUE(selection.has(service("Canal Uno")));
    EXPECT_TRUE(selection.has(service("x", 7)));
    EXPECT_TRUE(selection.has(service("24")));
    EXPECT_FALSE(selection.has(service("Canal", 8)));
    const auto missing = selection.without_service({service("Canal Uno"), service("x", 24)});
    ASSERT_EQ(missing.size(), 1u);
    EXPECT_EQ(missing[0].number, 4u);
    EXPECT_EQ(missing[0].text, "7");
}

TEST(ServiceFilter, AllWishesMustBeMet) {
    ServiceFilter filter;
    EXPECT_TRUE(filter.wants_all());
    EXPECT_TRUE(filter.wants(service()));
    filter.only = {{"--only", "free"}, {"--only", "tv"}};
    EXPECT_TRUE(filter.wants(service()));
    Service radio = service();
    radio.type = type_radio;
    EXPECT_FALSE(filter.wants(radio));
    filter.exclude = {{"--exclude", "hd"}, {"--exclude", "13"}};
    EXPECT_TRUE(filter.wants(service()));
    EXPECT_FALSE(filter.wants(service("Canal", 13)));
    filter.selections = {ServiceSelection({{1, "Canal"}})};
    EXPECT_TRUE(filter.wants(service()));
    EXPECT_FALSE(filter.wants(service("Otro")));
    EXPECT_FALSE(filter.wants_all());
}

} // namespace
} // namespace zarven::tool::service_filter_test
