// What is to be placed: all, the musts alone, and what is chosen to be asked for.

#include "placement/sizing/wanted.h"

#include <optional>

#include <gtest/gtest.h>

#include "placement/sizing/sizing_by_hand.h"

namespace zarven::tool::wanted_test {
namespace {

using sizing_by_hand::choosing;
using sizing_by_hand::light;
using sizing_by_hand::numbers_tried;
using sizing_by_hand::one_module;
using sizing_by_hand::plain;
using sizing_by_hand::size;

TEST(Sizing, MustsAloneAreWantedWhereThereAreAny) {
    Headend headend = one_module({light(1, 10), light(2, 20), light(3, 20), light(4, 30)});
    headend.services[3].must = true;
    const Addition addition = size(headend, plain).addition;
    EXPECT_EQ(addition.musts, 1u);
    EXPECT_EQ(addition.number, 2u) << "the engine places the other streams first";
    ASSERT_EQ(addition.attempts.size(), 3u) << "by the bound the module that is there could take it";
    EXPECT_EQ(addition.attempts[1].missing, 1u);
    EXPECT_EQ(addition.attempts[2].missing, 0u);
    headend.services[3].must = false;
    headend.services[2].must = true;
    EXPECT_EQ(size(headend, plain).addition.number, 0u) << "others are left out";
    headend.services[1].must = true;
    headend.services[1].ask = false;
    EXPECT_EQ(size(headend, plain).addition.musts, 1u) << "one that is not asked for is none";
    headend.services[3].must = true;
    headend.services[3].bitrate = 1000;
    EXPECT_EQ(size(headend, plain).addition.impossible.size(), 1u);
    EXPECT_EQ(size(headend, plain).addition.number, 1u) << "of the two the possible one is placed";
}

TEST(Sizing, AskedForWhatIsChosenFewerModulesPlaceTheMusts) {
    const host::Log no_log("");
    Headend headend = one_module({light(1, 10), light(2, 20), light(3, 20), light(4, 30)});
    headend.services[3].must = true;
    ASSERT_EQ(size(headend, plain).addition.number, 2u);
    const Sizing sizing = size_headend(headend, "f", {plain}, choosing());
    EXPECT_TRUE(sizing.are_chosen);
    EXPECT_EQ(sizing.addition.number, 0u);
    ASSERT_EQ(numbers_tried(sizing.addition), std::vector<std::size_t>{0});
    EXPECT_EQ(sizing.addition.attempts[0].missing, 0u);
    EXPECT_EQ(sizing.addition.attempts[0].placed, 1u);
    EXPECT_EQ(sizing.addition.attempts[0].withheld, 3u)
        << "of streams of one size the engine takes the first";
    ASSERT_TRUE(sizing.addition.one_more);
    EXPECT_EQ(sizing.addition.one_more->placed, 3u) << "with the larger of the others";
    EXPECT_EQ(sizing.addition.one_more->missing, 0u);
    EXPECT_TRUE(sizing.addition.remaining.empty());
    headend.services[0].must = true;
    EXPECT_EQ(size_headend(headend, "f", {plain}, choosing()).addition.number, 1u);
    headend.services[1].must = true;
    const Addition one = size_headend(headend, "f", {plain}, choosing(2, 1)).addition;
    EXPECT_EQ(one.number, std::nullopt) << "three streams, two inputs";
}

TEST(Sizing, WithEverythingWantedWhatIsWithheldIsMissing) {
    const host::Log no_log("");
    // The engine fills the only input with the one service of 1/20; the other has two that fit.
    Headend headend = one_module({light(1, 10, 60), light(2, 10, 60), light(3, 10, 60), light(4, 10, 1)});
    const Addition addition = size_headend(headend, "f", {plain}, choosing(2, 1)).addition;
    EXPECT_EQ(addition.number, std::nullopt);
    ASSERT_EQ(addition.attempts.size(), 1u);
    const Attempt& attempt = addition.attempts[0];
    EXPECT_EQ(attempt.placed, 3u);
    EXPECT_EQ(attempt.missing, 1u);
    EXPECT_EQ(attempt.left_out + attempt.withheld, 1u);
    EXPECT_EQ(addition.remaining.size(), 1u);
}

} // namespace
} // namespace zarven::tool::wanted_test
