// How many modules of a kind are needed, and which limits no number of them raises.

#include "placement/sizing/adding.h"

#include <gtest/gtest.h>

#include "placement/sizing/sizing_by_hand.h"

namespace zarven::tool::adding_test {
namespace {

using sizing_by_hand::from_file;
using sizing_by_hand::light;
using sizing_by_hand::numbers_tried;
using sizing_by_hand::one_module;
using sizing_by_hand::plain;
using sizing_by_hand::size;

TEST(Sizing, NothingIsNeededWhereAllIsPlaced) {
    const Sizing sizing = size(one_module({light(1, 10), light(2, 10)}), plain);
    EXPECT_EQ(sizing.now.placed, 2u);
    EXPECT_EQ(sizing.addition.number, 0u);
    EXPECT_EQ(sizing.addition.at_least, 0u);
    EXPECT_EQ(numbers_tried(sizing.addition), std::vector<std::size_t>{0});
    EXPECT_TRUE(sizing.raises.empty());
}

TEST(Sizing, AModuleForEachStreamWithoutInput) {
    const Headend headend = one_module({light(1, 10), light(2, 20), light(3, 30), light(4, 40)});
    const Sizing sizing = size(headend, plain);
    EXPECT_EQ(sizing.now.placed, 1u);
    EXPECT_EQ(sizing.addition.number, 3u);
    EXPECT_EQ(sizing.addition.at_least, 3u);
    EXPECT_EQ(numbers_tried(sizing.addition), std::vector<std::size_t>{3});
    Module two_inputs = plain;
    two_inputs.inputs = 2;
    EXPECT_EQ(size(headend, two_inputs).addition.number, 2u);
}

TEST(Sizing, TheSearchGoesUpwardsFromWhatTheBoundAllows) {
    // By the total of bitrate two modules could do: 4 x 49 is under 2 x 99. But each takes only one of 60.
    Headend headend = one_module({light(1, 10, 60), light(2, 10, 60), light(3, 10, 60), light(4, 10, 1)});
    const Sizing sizing = size(headend, plain);
    EXPECT_EQ(sizing.addition.at_least, 1u);
    EXPECT_EQ(sizing.addition.number, 2u);
    ASSERT_EQ(numbers_tried(sizing.addition), (std::vector<std::size_t>{1, 2}));
    EXPECT_EQ(sizing.addition.attempts[0].placed, 3u);
    EXPECT_EQ(sizing.addition.attempts[0].left_out, 1u);
    EXPECT_EQ(sizing.addition.attempts[1].placed, 4u);
    EXPECT_TRUE(sizing.addition.remaining.empty());
}

TEST(Sizing, UpToTheMost) {
    const Headend headend = one_module({light(1, 10), light(2, 20), light(3, 30), light(4, 40)});
    EXPECT_EQ(size(headend, plain, 3).addition.number, 3u);
    const Addition addition = size(headend, plain, 2).addition;
    EXPECT_FALSE(addition.number);
    EXPECT_EQ(addition.at_least, 3u);
    EXPECT_TRUE(addition.attempts.empty());
    const Addition none = size(headend, plain, 0).addition;
    EXPECT_FALSE(none.number);
    EXPECT_EQ(none.at_least, 3u) << "also far above the most";
    ASSERT_EQ(none.remaining.size(), 3u) << "what is left out, where nothing is tried";
    EXPECT_NE(none.remaining[0].reason, "");
}

TEST(Sizing, WhatRemainsIsToldWhereNoNumberSuffices) {
    // Two services that need the same input at different loads: the second module cannot be reached.
    Headend headend = one_module({light(1, 10, 60), light(2, 10, 60), light(3, 10, 60), light(4, 10, 1)});
    const Addition addition = size(headend, plain, 1).addition;
    EXPECT_FALSE(addition.number);
    EXPECT_EQ(numbers_tried(addition), std::vector<std::size_t>{1});
    ASSERT_EQ(addition.remaining.size(), 1u);
    EXPECT_EQ(addition.remaining[0].bitrate, 60u);
}

/// The limits that further modules of the kind do not raise, with what there is and what is wanted.
std::string shortages(const Sizing& sizing) {
    const auto name = [](BoundLimit Bound::*which) {
        return which == &Bound::inputs        ? "inputs"
               : which == &Bound::bitrate     ? "bitrate"
               : which == &Bound::pids        ? "pids"
               : which == &Bound::transcoders ? "transcoders"
                                              : "places";
    };
    std::string text;
    for (const Shortage& shortage : sizing.addition.shortages)
        text += std::string(text.empty() ? "" : ", ") + name(shortage.which) + " " +
                std::to_string(shortage.limit.capacity) + " of " + std::to_string(shortage.limit.wanted);
    return text;
}

TEST(Sizing, NoNumberHelpsWhereTheKindAddsNoTranscoder) {
    std::vector<Service> services = {light(1, 10)};
    for (std::uint16_t lcn = 2; lcn <= 4; ++lcn)
        services.push_back(light(lcn, 10, 10, 0, 1));
    Headend headend = one_module(services);
    headend.modules[0].sd_transcoders = 3;
    EXPECT_EQ(size(headend, plain).addition.number, 0u) << "three of three";
    headend.services.push_back(light(5, 10, 10, 0, 1));
    const Sizing sizing = size(headend, plain);
    EXPECT_EQ(shortages(sizing), "transcoders 3 of 4");
    EXPECT_FALSE(sizing.addition.number);
    EXPECT_EQ(sizing.addition.at_least, 9u) << "one above the most";
    EXPECT_TRUE(sizing.addition.attempts.empty());
    ASSERT_EQ(sizing.addition.remaining.size(), 1u);
    EXPECT_TRUE(sizing.addition.remaining[0].is_transcoded);
    EXPECT_NE(sizing.addition.remaining[0].reason, "");
    headend.services.push_back(light(6, 60, 1, 0, 1));
    EXPECT_EQ(shortages(size(headend, plain)), "transcoders 3 of 4") << "the impossible does not count";
    Module with_transcoder = plain;
    with_transcoder.sd_transcoders = 1;
    EXPECT_EQ(shortages(size(headend, with_transcoder)), "");
    EXPECT_EQ(size(headend, with_transcoder).addition.at_least, 1u);
}

TEST(Sizing, NoNumberHelpsWhereTheKindAddsNoPid) {
    const Headend headend = one_module({light(1, 10, 1, 2), light(2, 10, 1, 2), light(3, 10, 1, 2)});
    Module kind = plain;
    kind.pids_max = 0;
    EXPECT_EQ(shortages(size(headend, kind)), "pids 4 of 6") << "and it can take none of the services";
    kind.pids_max = 1;
    EXPECT_EQ(shortages(size(headend, kind)), "pids 4 of 6") << "too few for any";
    kind.pids_max = 2;
    EXPECT_EQ(shortages(size(headend, kind)), "");
}

TEST(Sizing, NoNumberHelpsWhereTheKindHasNoInput) {
    const Headend headend = one_module({light(1, 10, 60), light(2, 20, 60)});
    Module kind = plain;
    kind.inputs = 0;
    EXPECT_EQ(shortages(size(headend, kind)), "inputs 1 of 2, bitrate 60 of 120");
    EXPECT_EQ(shortages(size(headend, plain)), "");
    EXPECT_EQ(shortages(size(headend, plain, 0)), "") << "more would do, only that none may be added";
}

TEST(Sizing, TheImpossibleIsNamedAndTheAnswerIsForTheOthers) {
    const Headend headend = one_module({light(1, 10), light(2, 20), light(3, 20, 100), light(4, 20, 1, 5),
                                        light(5, 20, 1, 0, 1), light(6, 60, 1, 0, 1)});
    Module with_transcoder = plain;
    with_transcoder.sd_transcoders = 1;
    const Addition addition = size(headend, with_transcoder).addition;
    EXPECT_EQ(addition.number, 1u);
    ASSERT_EQ(addition.impossible.size(), 3u);
    EXPECT_EQ(addition.impossible[0].lcn, 3);
    EXPECT_EQ(addition.impossible[0].reason,
              "its 100 kbit/s must stay below the maximum of an output, and the largest is 100");
    EXPECT_EQ(addition.impossible[1].lcn, 4);
    EXPECT_EQ(addition.impossible[1].reason, "it needs 5 PIDs and the largest budget is 4");
    EXPECT_EQ(addition.impossible[2].lcn, 6);
    EXPECT_EQ(addition.impossible[2].reason,
              "all services of its stream need transcoding, and for such the engine tunes no input");
    ASSERT_EQ(size(headend, plain).addition.impossible.size(), 4u);
    EXPECT_EQ(size(headend, plain).addition.impossible[2].reason, "it needs a transcoder and none has one");
}

TEST(Sizing, TheAuditOfEachRun) {
    const std::string path = RECALCULO_TOOL_TESTS "/placement/left_out_elsewhere.json";
    const Sizing sizing = size(read_headend(path, read_text(path)), plain, 1);
    EXPECT_EQ(sizing.findings.size(), 1u);
    ASSERT_EQ(sizing.addition.attempts.size(), 2u);
    EXPECT_EQ(sizing.addition.attempts[0].findings, 1u);
    EXPECT_EQ(sizing.addition.attempts[0].broken, 0u);
}

TEST(Sizing, ANumberWhoseRunBreaksALimitIsNoAnswer) {
    const Addition addition = size(from_file("broken_with_one_more.json"),
                                   {"", 3, false, 1, {38000, 38000, 38000}, 40, 2, 0, 0}, 32)
                                  .addition;
    EXPECT_EQ(addition.number, 2u);
    ASSERT_EQ(numbers_tried(addition), (std::vector<std::size_t>{0, 1, 2}));
    EXPECT_EQ(addition.attempts[1].broken, 1u);
    EXPECT_EQ(addition.attempts[1].left_out, 0u);
    EXPECT_EQ(addition.attempts[1].missing, 0u);
    EXPECT_EQ(addition.attempts[2].broken, 0u);
}

TEST(Sizing, WithOneModuleMoreItMayPlaceLess) {
    const Addition addition =
        size(from_file("less_with_more.json"), {"", 3, false, 2, {38000, 38000}, 40, 2, 0, 0}, 32).addition;
    EXPECT_EQ(addition.number, 1u);
    ASSERT_TRUE(addition.one_more);
    EXPECT_LT(addition.one_more->placed, addition.attempts.back().placed);
}

TEST(Sizing, OneModuleMoreThanIsNeededIsRunToo) {
    const Headend headend = one_module({light(1, 10), light(2, 20)});
    const Addition addition = size(headend, plain, 1).addition;
    EXPECT_EQ(addition.number, 1u);
    ASSERT_TRUE(addition.one_more);
    EXPECT_EQ(addition.one_more->number, 2u) << "also above the most";
    EXPECT_EQ(addition.one_more->placed, 2u);
    EXPECT_FALSE(size(one_module({light(1, 10)}), plain).addition.one_more) << "where none is needed";
}

} // namespace
} // namespace zarven::tool::adding_test
