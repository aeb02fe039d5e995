// What all answers have in common: threads, runs that are counted or stopped, head-ends that cannot run.

#include "placement/sizing/sizing.h"

#include <algorithm>
#include <chrono>
#include <random>

#include <gtest/gtest.h>

#include "failure_message.h"
#include "placement/exploding.h"
#include "placement/sizing/sizing_by_hand.h"

namespace zarven::tool::sizing_test {
namespace {

using sizing_by_hand::choosing;
using sizing_by_hand::light;
using sizing_by_hand::numbers_tried;
using sizing_by_hand::one_module;
using sizing_by_hand::plain;
using sizing_by_hand::size;

TEST(Sizing, TheAnswerDoesNotDependOnTheThreads) {
    std::mt19937 random(5);
    std::vector<Service> services;
    for (std::uint16_t lcn = 1; lcn <= 25; ++lcn)
        services.push_back(light(lcn, static_cast<std::uint16_t>(random() % 5 + 1),
                                 static_cast<std::uint32_t>(random() % 40 + 10)));
    const Headend headend = one_module(services);
    const Sizing alone = size(headend, plain, 30, 1);
    ASSERT_TRUE(alone.addition.number);
    for (const unsigned jobs : {2u, 3u, 16u}) {
        const Sizing together = size(headend, plain, 30, jobs);
        EXPECT_EQ(together.addition.number, alone.addition.number);
        EXPECT_EQ(numbers_tried(together.addition), numbers_tried(alone.addition));
        ASSERT_EQ(together.raises.size(), alone.raises.size());
        for (std::size_t raise = 0; raise < alone.raises.size(); ++raise)
            EXPECT_EQ(together.raises[raise].setting, alone.raises[raise].setting);
    }
}

TEST(Sizing, WhatIsChosenDoesNotDependOnTheThreads) {
    const host::Log no_log("");
    std::mt19937 random(7);
    std::vector<Service> services;
    for (std::uint16_t lcn = 1; lcn <= 25; ++lcn)
        services.push_back(light(lcn, static_cast<std::uint16_t>(random() % 9 + 1),
                                 static_cast<std::uint32_t>(random() % 40 + 10)));
    services.back().must = services[3].must = services[12].must = true;
    const Headend headend = one_module(services);
    const Addition alone = size_headend(headend, "f", {plain}, choosing(1)).addition;
    const Addition together = size_headend(headend, "f", {plain}, choosing(3)).addition;
    ASSERT_TRUE(alone.number);
    EXPECT_EQ(together.number, alone.number);
    ASSERT_EQ(together.attempts.size(), alone.attempts.size());
    EXPECT_EQ(together.attempts.back().placed, alone.attempts.back().placed);
    EXPECT_EQ(together.attempts.back().withheld, alone.attempts.back().withheld);
}

TEST(Sizing, ARunThatIsStoppedIsNoAnswerAndEndsNothing) {
    const host::Log no_log("");
    const Headend headend = exploding(60, 40, 10);
    for (const bool are_chosen : {false, true}) {
        host::limit_runs({});
        SizingOptions options = choosing(1, 2);
        options.are_chosen = are_chosen;
        // The first run is that of the head-end as it is.
        options.progress = [](std::size_t, std::size_t) {
            host::RunLimits limits;
            limits.time = std::chrono::milliseconds(0);
            host::limit_runs(limits);
        };
        Module with_transcoder = headend.modules[0];
        with_transcoder.sd_transcoders = 16;
        const Sizing sizing = size_headend(headend, "f", {with_transcoder}, options);
        EXPECT_EQ(sizing.addition.number, std::nullopt);
        EXPECT_FALSE(sizing.addition.attempts.empty());
        for (const Attempt& attempt : sizing.addition.attempts) {
            EXPECT_TRUE(attempt.is_stopped);
            EXPECT_EQ(attempt.placed, 0u);
            EXPECT_EQ(attempt.missing, 90u);
        }
        EXPECT_TRUE(sizing.raises.empty());
        host::limit_runs({});
    }
}

TEST(Sizing, StoppedItTellsWhatItHas) {
    const host::Log no_log("");
    const Headend headend =
        one_module({light(1, 10, 60), light(2, 10, 60), light(3, 10, 60), light(4, 10, 1)});
    for (const std::size_t runs : {1U, 2U, 3U, 5U, 1000U}) {
        std::size_t done = 0;
        SizingOptions options;
        options.progress = [&done](std::size_t now, std::size_t) { done = now; };
        options.is_stopped = [&done, runs] { return done >= runs; };
        const Sizing sizing = size_headend(headend, "f", {plain}, options);
        EXPECT_EQ(sizing.is_partial, runs != 1000) << runs;
        EXPECT_EQ(sizing.now.placed, 2u);
        EXPECT_EQ(sizing.addition.attempts.size(), std::min<std::size_t>(runs - 1, 2)) << runs;
        EXPECT_EQ(sizing.addition.number.has_value(), runs > 2) << runs;
    }
}

TEST(Sizing, RunsAreCounted) {
    const host::Log no_log("");
    SizingOptions options;
    std::size_t calls = 0;
    options.jobs = 3;
    options.progress = [&calls](std::size_t done, std::size_t planned) {
        EXPECT_EQ(done, ++calls);
        EXPECT_LE(done, planned);
    };
    size_headend(one_module({light(1, 10), light(2, 20)}), "f", {plain}, options);
    EXPECT_GT(calls, 3u);
}

TEST(Sizing, AHeadendThatCannotRun) {
    Headend headend = one_module({light(1, 10)});
    headend.modules[0].controller = false;
    EXPECT_NE(failure_message([&] { size(headend, plain); }).find("f: the engine could not run"),
              std::string::npos);
}

} // namespace
} // namespace zarven::tool::sizing_test
