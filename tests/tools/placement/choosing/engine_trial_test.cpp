// Which services a choice asks for where one of several is wanted, and how many it withholds.

#include "placement/choosing/engine_trial.h"

#include <gtest/gtest.h>

#include "placement/engine_by_hand.h"

namespace zarven::tool::engine_trial_test {
namespace {

using Flags = std::vector<bool>;

/// A service, two groups with three and two variants, the best of the first in the middle, and two services
/// that are never asked for.
class TrialOfGroups : public testing::Test {
protected:
    static Headend groups() {
        Headend headend = two_modules();
        headend.services = {service(1, 10),      variant(2, 10, "X"), variant(3, 10, "X"),
                            variant(4, 20, "X"), variant(5, 20, "Y"), variant(6, 20, "Y"),
                            service(7, 20),      variant(8, 20, "X")};
        headend.services[2].value = 3;
        headend.services[6].ask = false;
        headend.services[7].value = 0;
        return headend;
    }

    const StaysPut none{};
    const EngineTrial trial{groups(), none};
    const Flags nothing = Flags(8, false);
};

TEST_F(TrialOfGroups, WhatIsNeverAskedForIsNeverWithheld) {
    EXPECT_EQ(trial.askable(), (Flags{true, true, true, true, true, true, false, false}));
    EXPECT_FALSE(trial.is_withheld(6, nothing));
    EXPECT_FALSE(trial.is_withheld(7, nothing));
}

TEST_F(TrialOfGroups, OfAGroupThatIsWithheldOneCounts) {
    EXPECT_EQ(trial.withheld_of(nothing), 3U);
    EXPECT_TRUE(trial.is_withheld(1, nothing));
    EXPECT_TRUE(trial.is_withheld(3, nothing));
    // Whichever of its variants is asked for, none of the group is withheld.
    for (const std::size_t variant : {1U, 2U, 3U}) {
        Flags asked = nothing;
        asked[variant] = true;
        EXPECT_EQ(trial.withheld_of(asked), 2U) << variant;
        EXPECT_FALSE(trial.is_withheld(1, asked)) << variant;
        EXPECT_TRUE(trial.is_withheld(4, asked)) << variant;
    }
    Flags asked = nothing;
    asked[0] = true;
    EXPECT_EQ(trial.withheld_of(asked), 2U);
    EXPECT_EQ(trial.withheld_of(trial.askable()), 0U);
}

TEST_F(TrialOfGroups, OfSeveralTheBestStays) {
    Flags asked = trial.askable();
    trial.keep_one_of_each(asked);
    EXPECT_EQ(asked, (Flags{true, false, true, false, true, false, false, false}));
    asked = {false, true, false, true, false, true, false, false};
    trial.keep_one_of_each(asked);
    EXPECT_EQ(asked, (Flags{false, true, false, false, false, true, false, false}));
}

TEST_F(TrialOfGroups, AskedForInsteadIsOneOfItsGroupAlone) {
    Flags asked = trial.askable();
    trial.keep_one_of_each(asked);
    trial.ask_instead(3, asked);
    EXPECT_EQ(asked, (Flags{true, false, false, true, true, false, false, false}));
    trial.ask_instead(5, asked);
    EXPECT_EQ(asked, (Flags{true, false, false, true, false, true, false, false}));
    asked = nothing;
    trial.ask_instead(0, asked);
    EXPECT_EQ(asked, (Flags{true, false, false, false, false, false, false, false}));
}

} // namespace
} // namespace zarven::tool::engine_trial_test
