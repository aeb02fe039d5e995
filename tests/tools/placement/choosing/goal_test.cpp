// The rivals among the parts of a model: of each group of variants one is asked for.

#include "placement/choosing/goal.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "placement/choosing/engine_trial.h"
#include "placement/engine_by_hand.h"

namespace zarven::tool::goal_test {
namespace {

class GoalWithRivals : public testing::Test {
protected:
    /// The second and the third service share a key, and are one part.
    static Headend groups() {
        Headend headend = two_modules();
        headend.services = {variant(1, 10, "X"), variant(2, 10, "X"), variant(2, 10, "X"),
                            service(4, 10),      variant(5, 10, "Y"), variant(6, 20, "Y")};
        headend.services[5].value = 2;
        return headend;
    }

    PartIndex part_with(std::size_t service) const {
        PartIndex part = 0;
        while (std::count(goal.services_of(part).begin(), goal.services_of(part).end(), service) == 0)
            ++part;
        return part;
    }

    std::vector<PartIndex> parts_with(const std::vector<std::size_t>& services) const {
        std::vector<PartIndex> parts;
        for (const std::size_t service : services)
            parts.push_back(part_with(service));
        return parts;
    }

    /// The parts with these services.
    std::vector<std::uint8_t> flags(const std::vector<std::size_t>& services) const {
        std::vector<std::uint8_t> flags(model.parts.size(), 0);
        for (const std::size_t service : services)
            flags[part_with(service)] = 1;
        return flags;
    }

    const host::Log silence{""};
    const StaysPut none{};
    const EngineTrial trial{groups(), none};
    const EngineRun loaded = trial.load(trial.askable());
    const RehearsedHeadend model{loaded};
    const Goal goal{trial.headend(), none, model, trial.numbers_of(model.services, loaded), trial.groups()};
};

TEST_F(GoalWithRivals, TheOthersOfItsGroupAreRivalsOfAPart) {
    ASSERT_EQ(model.parts.size(), 5U);
    EXPECT_EQ(part_with(1), part_with(2));
    EXPECT_EQ(goal.rivals_of(part_with(0)), parts_with({1}));
    EXPECT_EQ(goal.rivals_of(part_with(1)), parts_with({0}));
    EXPECT_EQ(goal.rivals_of(part_with(4)), parts_with({5}));
    EXPECT_EQ(goal.rivals_of(part_with(5)), parts_with({4}));
    EXPECT_TRUE(goal.rivals_of(part_with(3)).empty());
}

TEST_F(GoalWithRivals, TheBestAloneIsLeft) {
    EXPECT_EQ(goal.one_of_each(flags({0, 1, 3, 4, 5})), flags({0, 3, 5}));
    EXPECT_EQ(goal.one_of_each(flags({0, 3, 4})), flags({0, 3, 4}));
    EXPECT_EQ(goal.one_of_each(flags({1, 4})), flags({1, 4})) << "two of a key are one part";
    EXPECT_EQ(goal.one_of_each(flags({3})), flags({3}));
}

} // namespace
} // namespace zarven::tool::goal_test
