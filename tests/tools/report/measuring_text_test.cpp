// What is told of measurements that were brought to a head-end, one message of each kind.

#include "report/measuring_text.h"

#include <gtest/gtest.h>

namespace zarven::tool::measuring_text_test {
namespace {

using Lines = std::vector<std::string>;

Service service(std::uint16_t sid) {
    Service made;
    made.name = "Canal";
    made.onid = 1;
    made.tsid = 7;
    made.osid = sid;
    return made;
}

Lines told(const Measuring& measuring, const std::vector<MeasuredFile>& files = {{"x", {}, {}}}) {
    return measuring_messages(files, {service(5), service(6)}, measuring, MessageDigest::Extent::all);
}

TEST(MeasuringText, WhatDoesNotMatch) {
    Measuring measuring;
    measuring.unknown_streams = {{1, 8, 0, "", 2}};
    measuring.unknown_services = {{1, 7, 9, "Otro", 0}};
    measuring.ambiguous_services = {{std::nullopt, 7, 5, "", 0}};
    EXPECT_EQ(
        told(measuring),
        (Lines{"x: stream 1/8: the head-end does not have it: 2 services passed over",
               "x: SID 9 \"Otro\" of stream 1/7: the head-end does not have it: passed over",
               "x: SID 5 of stream with TSID 7: several networks have it, and no ONID is told: passed over",
               "x: 0 services measured; of 2 in the head-end, 2 estimated"}));
}

TEST(MeasuringText, Streams) {
    Measuring measuring;
    measuring.short_looks = {{{1, 7}, 9.5}};
    measuring.held = {{{1, 7}, 9000, 8000}};
    const Lines lines = told(measuring);
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[0],
              "x: stream 1/7: looked at for 9.5 s in all, which is too short for a peak: measure for 10 s "
              "at least");
    EXPECT_EQ(lines[1], "x: stream 1/7: its services take 9000 kbit/s, it has 8000 for them: shared out");
}

TEST(MeasuringText, Services) {
    const std::pair<ServicePlaces Measuring::*, const char*> kinds[] = {
        {&Measuring::without_rate, "the rate is 0: what stood there is kept"},
        {&Measuring::without_name, "the name is \"(unknown)\": what stood there is kept"},
        {&Measuring::of_other_kind, "it is of another kind than was told: changed"},
        {&Measuring::clear_at_the_moment,
         "it has ECMs and was clear at that moment: still to be descrambled"},
        {&Measuring::clear, "it was clear and has no ECMs: still to be descrambled"},
        {&Measuring::not_descrambled, "it was scrambled: still not to be descrambled"},
        {&Measuring::without_pids,
         "it was scrambled, without a number of scrambled PIDs: the CA PIDs are kept"}};
    for (const auto& [member, text] : kinds) {
        Measuring measuring;
        measuring.*member = {1};
        EXPECT_EQ(told(measuring).front(), std::string("x: \"Canal\" (SID 6 of stream 1/7): ") + text);
    }
}

TEST(MeasuringText, TheLastLineHasTheNumbers) {
    Measuring measuring;
    measuring.measured = {0, 1};
    EXPECT_EQ(told(measuring).back(), "x: 2 services measured; of 2 in the head-end, 2 estimated");
    measuring.measured_once = 1;
    const Lines lines = told(measuring, {{"x", {}, {"x: line 1: bad"}}, {"y", {}, {}}});
    EXPECT_EQ(lines, (Lines{"x: line 1: bad",
                            "2 files: 2 services measured, 1 of them once, so that the mean stands for the "
                            "peak; of 2 in the head-end, 2 estimated"}));
}

} // namespace
} // namespace zarven::tool::measuring_text_test
