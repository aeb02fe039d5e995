// Which limit to raise, and how far.

#include "placement/sizing/raising.h"

#include <gtest/gtest.h>

#include "placement/sizing/sizing_by_hand.h"

namespace zarven::tool::raising_test {
namespace {

using sizing_by_hand::from_file;
using sizing_by_hand::light;
using sizing_by_hand::one_module;
using sizing_by_hand::plain;
using sizing_by_hand::size;

/// The only limit that helps, as --set takes it.
std::string only_raise(const Sizing& sizing) {
    return sizing.raises.size() == 1 ? sizing.raises[0].setting
                                     : std::to_string(sizing.raises.size()) + " raises";
}

TEST(Sizing, TheSmallestValueThatPlacesAsMany) {
    const Sizing pids = size(one_module({light(1, 10, 1, 4), light(2, 10, 1, 4), light(3, 10, 1, 3)}), plain);
    EXPECT_EQ(only_raise(pids), "modules[0].pids_max=12") << "which modules are sold with";
    EXPECT_EQ(pids.raises[0].kind, LimitKind::pids);
    EXPECT_EQ(pids.raises[0].mac, "M");
    EXPECT_EQ(pids.raises[0].from, 4u);
    EXPECT_EQ(pids.raises[0].to, 12u);
    EXPECT_EQ(pids.raises[0].enough, 11u);
    EXPECT_EQ(pids.raises[0].placed, 3u);
    EXPECT_EQ(pids.raises[0].label, "");
    Headend labelled = one_module({light(1, 10, 1, 4), light(2, 10, 1, 4)});
    labelled.modules[0].label = "Rack 1";
    EXPECT_EQ(size(labelled, plain).raises.at(0).label, "Rack 1");
    EXPECT_EQ(only_raise(size(one_module({light(1, 10), light(2, 20), light(3, 30)}), plain)),
              "modules[0].inputs=4");
    EXPECT_EQ(only_raise(size(one_module({light(1, 10, 200)}), plain)), "modules[0].outputs[0]=201")
        << "no module is sold with so little";
    const Sizing large = size(one_module({light(1, 10, 230000)}), plain);
    EXPECT_EQ(only_raise(large), "modules[0].outputs[0]=230001") << "no module is sold with so much";
    EXPECT_EQ(large.raises[0].enough, 230001u);
}

TEST(Sizing, AFurtherOutput) {
    const Sizing sizing = size(one_module({light(1, 10, 60), light(2, 10, 60)}), plain);
    ASSERT_EQ(sizing.raises.size(), 2u);
    EXPECT_EQ(sizing.raises[0].setting, "modules[0].outputs[0]=121");
    EXPECT_EQ(sizing.raises[0].output, 1u);
    EXPECT_EQ(sizing.raises[1].setting, "modules[0].outputs=[100, 100]");
    EXPECT_EQ(sizing.raises[1].output, 2u);
    EXPECT_EQ(sizing.raises[1].from, 0u);
    EXPECT_EQ(sizing.raises[1].to, 100u);
}

TEST(Sizing, Transcoders) {
    Headend headend = one_module({light(1, 10), light(2, 10, 1, 0, 1), light(3, 10, 1, 0, 1)});
    EXPECT_EQ(only_raise(size(headend, plain)), "modules[0].sd_transcoders=2");
    headend.services[1].video_format = headend.services[2].video_format = 4;
    headend.modules[0].sd_transcoders = 1;
    EXPECT_EQ(only_raise(size(headend, plain)), "modules[0].hd_transcoders=2");
}

TEST(Sizing, WhatBreaksALimitIsNoAnswer) {
    // The first HD transcoding is let in under the limit for SD.
    Headend headend = one_module({light(1, 10), light(2, 10, 1, 0, 1)});
    headend.services[1].video_format = 4;
    const Sizing sizing = size(headend, plain);
    EXPECT_TRUE(sizing.findings.empty());
    EXPECT_TRUE(sizing.raises.empty()) << "one SD transcoder places it beyond the limit for HD";
    headend.modules[0].hd_transcoders = 1;
    EXPECT_EQ(only_raise(size(headend, plain)), "modules[0].sd_transcoders=1") << "and here within it";
}

TEST(Sizing, AValueInBetweenMayHelpWhereALargeOneDoesNot) {
    const Headend headend = from_file("helped_in_between.json");
    const Sizing sizing = size(headend, plain, 0);
    EXPECT_EQ(only_raise(sizing), "modules[1].pids_max=12");
    EXPECT_EQ(sizing.raises[0].enough, 11u);
    EXPECT_EQ(sizing.now.placed, 10u);
    EXPECT_EQ(sizing.raises[0].placed, 11u);
    const auto placed_with = [&headend](std::uint16_t pids) {
        Headend changed = headend;
        changed.modules[1].pids_max = pids;
        return size(changed, plain, 0).now.placed;
    };
    EXPECT_EQ(placed_with(10), 10u);
    EXPECT_EQ(placed_with(11), 11u);
    EXPECT_EQ(placed_with(1000), 10u);
}

TEST(Sizing, ABitrateInBetweenMayHelpMore) {
    const Headend headend = from_file("helped_by_a_bitrate_in_between.json");
    const Sizing sizing = size(headend, plain, 0);
    EXPECT_EQ(sizing.now.placed, 7u);
    ASSERT_GE(sizing.raises.size(), 2u);
    EXPECT_EQ(sizing.raises[1].setting, "modules[1].outputs[0]=20501");
    EXPECT_EQ(sizing.raises[1].placed, 9u) << "one that modules are sold with places 8";
}

TEST(Sizing, TheModuleOnWhichItHelpsMost) {
    Headend headend = one_module(
        {light(1, 10, 1, 4), light(2, 10, 1, 4), light(3, 20, 1, 4), light(4, 20, 1, 4), light(5, 20, 1, 4)});
    headend.modules.push_back(plain);
    headend.modules[1].mac = "N";
    headend.modules[1].controller = false;
    const Sizing sizing = size(headend, plain);
    ASSERT_FALSE(sizing.raises.empty());
    const Raise& best = sizing.raises.front();
    EXPECT_EQ(best.kind, LimitKind::pids);
    EXPECT_EQ(best.placed, 4u);
    EXPECT_EQ(best.to, 12u);
}

} // namespace
} // namespace zarven::tool::raising_test
