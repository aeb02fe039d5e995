// Small circles and chains, and random ones against all orders there are.

#include "placement/change/step_order.h"

#include <algorithm>
#include <numeric>
#include <random>

#include <gtest/gtest.h>

namespace zarven::tool::step_order_test {
namespace {

using Steps = std::vector<std::size_t>;

Steps ascending(std::size_t steps) {
    Steps order(steps);
    std::iota(order.begin(), order.end(), std::size_t{0});
    return order;
}

/// The same once more, word by word: off the air while all that it leaves is done and nothing on which it
/// comes.
Steps off_air_step_by_step(const Steps& order, const std::vector<StepMove>& moves) {
    Steps off;
    std::vector<bool> done(order.size());
    for (const std::size_t step : order) {
        done[step] = true;
        const auto is_done = [&done](std::size_t other) { return done[other]; };
        std::size_t now = 0;
        for (const StepMove& move : moves)
            if (!move.leaves.empty() && !move.comes.empty() &&
                std::all_of(move.leaves.begin(), move.leaves.end(), is_done) &&
                std::none_of(move.comes.begin(), move.comes.end(), is_done))
                ++now;
        off.push_back(now);
    }
    return off;
}

std::pair<std::size_t, std::size_t> peak_and_sum(const Steps& off) {
    return {off.empty() ? 0 : *std::max_element(off.begin(), off.end()),
            std::accumulate(off.begin(), off.end(), std::size_t{0})};
}

TEST(StepOrder, NothingToDo) {
    EXPECT_TRUE(step_order(0, {}).steps.empty());
    EXPECT_TRUE(step_order(0, {}).is_least);
}

TEST(StepOrder, WhatDoesNotDependStaysInOrder) {
    EXPECT_EQ(step_order(3, {}).steps, ascending(3));
}

TEST(StepOrder, InAChainNothingGoesOffTheAir) {
    // A service goes from 0 to 1, another from 1 to 2: 2 must be there first.
    const std::vector<StepMove> moves{{{0}, {1}}, {{1}, {2}}};
    const StepOrder order = step_order(3, moves);
    EXPECT_EQ(order.steps, (Steps{2, 1, 0}));
    EXPECT_EQ(off_air_after(order.steps, moves), (Steps{0, 0, 0}));
}

TEST(StepOrder, InACircleTheFewestGoOffTheAir) {
    // Two services go one way, one the other.
    const std::vector<StepMove> moves{{{0}, {1}}, {{0}, {1}}, {{1}, {0}}};
    const StepOrder order = step_order(2, moves);
    EXPECT_EQ(order.steps, (Steps{1, 0}));
    EXPECT_EQ(off_air_after(order.steps, moves), (Steps{1, 0}));
}

TEST(StepOrder, AServiceOnTwoInputsIsOnTheAirUntilItHasLeftBoth) {
    const std::vector<StepMove> moves{{{0, 1}, {2}}, {{2}, {0}}};
    EXPECT_EQ(off_air_after({0, 2, 1}, moves), (Steps{0, 0, 0}));
    EXPECT_EQ(off_air_after({1, 0, 2}, moves), (Steps{0, 1, 0}));
    const StepOrder order = step_order(3, moves);
    EXPECT_EQ(peak_and_sum(off_air_after(order.steps, moves)).first, 0u);
}

TEST(StepOrder, NoOrderOfAFewStepsIsBetter) {
    std::mt19937 random(7);
    const auto below = [&random](std::size_t limit) { return random() % limit; };
    std::size_t with_interruption = 0;
    for (int round = 0; round < 300; ++round) {
        const std::size_t steps = 2 + below(5);
        std::vector<StepMove> moves(below(9));
        for (StepMove& move : moves) {
            for (std::size_t count = 1 + below(6) / 5; count-- > 0;)
                move.leaves.push_back(below(steps));
            for (std::size_t count = 1 + below(6) / 5; count-- > 0;)
                move.comes.push_back(below(steps));
        }
        const StepOrder order = step_order(steps, moves);
        ASSERT_TRUE(order.is_least);
        const Steps off = off_air_step_by_step(order.steps, moves);
        ASSERT_EQ(off_air_after(order.steps, moves), off);
        auto least = peak_and_sum(off_air_step_by_step(ascending(steps), moves));
        for (Steps other = ascending(steps); std::next_permutation(other.begin(), other.end());)
            least = std::min(least, peak_and_sum(off_air_step_by_step(other, moves)));
        ASSERT_EQ(peak_and_sum(off), least) << "round " << round;
        with_interruption += least.first > 0 ? 1 : 0;
    }
    EXPECT_GT(with_interruption, 50u);
}

TEST(StepOrder, ALargeCircleIsFoundAndNotProven) {
    std::vector<StepMove> moves;
    constexpr std::size_t steps = 40;
    // Three services go round one way; the shortcut back makes no circle smaller.
    for (std::size_t step = 0; step < steps; ++step)
        for (int service = 0; service < 3; ++service)
            moves.push_back({{step}, {(step + 1) % steps}});
    const StepOrder order = step_order(steps, moves);
    EXPECT_FALSE(order.is_least);
    Steps sorted = order.steps;
    std::sort(sorted.begin(), sorted.end());
    EXPECT_EQ(sorted, ascending(steps));
    // Only what leaves the first step has to wait.
    EXPECT_EQ(peak_and_sum(off_air_after(order.steps, moves)).first, 3u);
}

TEST(StepOrder, ALongChainIsWalked) {
    constexpr std::size_t steps = 100000;
    std::vector<StepMove> moves;
    for (std::size_t step = 0; step + 1 < steps; ++step)
        moves.push_back({{step}, {step + 1}});
    const StepOrder order = step_order(steps, moves);
    ASSERT_EQ(order.steps.size(), steps);
    EXPECT_EQ(order.steps.front(), steps - 1);
}

} // namespace
} // namespace zarven::tool::step_order_test
