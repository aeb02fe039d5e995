// Bounds for every choice of variants: what shares a key, and what makes no difference.

#include <gtest/gtest.h>

#include "placement/bound.h"
#include "placement/choosing/choice.h"
#include "placement/made_services.h"
#include "placement/one_of.h"
#include "placement/running/host.h"

namespace zarven::tool::one_of_bound_test {
namespace {

class OneOfBound : public testing::Test {
protected:
    OneOfBound() { headend.modules.push_back({"A", 3, true, 2, {10000}, 4, 0, 0, 0}); }

    std::uint64_t most_value() const { return reach_of_value(headend, "f").most; }
    std::size_t most() const { return bound_of(headend, "f").most; }

    /// LCN 1 and 7 are of one key, so that the variant is a clone wherever the other is asked for.
    void share_a_key() {
        headend.services = {variant(5, 20, "X", 9000), service(1, 10, 9000), variant(7, 10, "X", 9000)};
        headend.services[2].lcn = 1;
    }

    /// The sum of the values that are placed with these asked for.
    std::uint64_t placed_with(const std::vector<bool>& asked) const {
        Choice choice;
        choice.asked = asked;
        return report_of(headend, choice, nullptr, "f").chosen.value;
    }

    host::Log no_log{""};
    Headend headend;
};

TEST_F(OneOfBound, AVariantThatMayNotBeAskedForDoesNotCount) {
    headend.services = {variant(1, 10, "X", 1000), service(9, 10, 1000)};
    EXPECT_EQ(bound_of(headend, "f").loaded, 2u);
    headend.services[0].value = 0;
    EXPECT_EQ(bound_of(headend, "f").loaded, 1u);
    EXPECT_EQ(most(), 1u);
}

TEST_F(OneOfBound, AVariantThatMayBeACloneTakesNothing) {
    share_a_key();
    EXPECT_EQ(placed_with({false, true, true}), 2u) << "one of them is a clone of the other";
    EXPECT_EQ(most_value(), 2u);
    headend.services[0].bitrate = headend.services[1].bitrate = headend.services[2].bitrate = 1000;
    for (Service& service : headend.services)
        service.ca_pids = service.ca_pids_max = 3;
    EXPECT_EQ(placed_with({false, true, true}), 2u) << "nor PIDs";
    EXPECT_EQ(most_value(), 2u);
}

TEST_F(OneOfBound, WithoutVariantsTheServicesOfAKeyTakeTheLeastOfThem) {
    headend.services = {service(1, 10, 9000), service(1, 10, 8000), service(3, 10, 2000)};
    EXPECT_EQ(most_value(), 2u) << "8000 and 2000 are not below 10000";
    headend.services[2].bitrate = 1999;
    EXPECT_EQ(most_value(), 3u);
}

TEST_F(OneOfBound, ACloneBringsTheCeilingOfItsParent) {
    headend.services = {service(1, 10, 1000, 3), service(2, 10, 1000, 2)};
    headend.services[0].ca_pids_max = 1;
    EXPECT_EQ(most_value(), 1u) << "5 PIDs of 4";
    headend.clones = {clone_of(headend.services[0])};
    EXPECT_EQ(most_value(), 2u) << "3 PIDs of 4";
    headend.clones.clear();
    headend.services.push_back(headend.services[0]);
    EXPECT_EQ(most_value(), 3u) << "as a second service of its key does";
}

TEST_F(OneOfBound, VariantsOfTwoNetworksAreOfAnyStream) {
    headend.modules[0].inputs = 1;
    headend.services = {variant(1, 10, "X", 1000), variant(2, 10, "X", 1000), service(3, 30, 1000)};
    EXPECT_EQ(most(), 1u);
    headend.services[1].onid = 2;
    EXPECT_EQ(most(), 2u);
}

TEST_F(OneOfBound, IsTheSameWhateverIsSettled) {
    headend.services = {variant(1, 10, "X", 20000), variant(2, 10, "X", 4000), service(3, 10, 4000)};
    EXPECT_EQ(most(), 2u);
    settle_variants(headend, "f", 9);
    EXPECT_TRUE(headend.services[0].yields);
    EXPECT_EQ(most(), 2u);
    EXPECT_EQ(most_value(), 2u);
}

TEST_F(OneOfBound, TheSecondOfAKeyIsWorthItsValueAndIsNoFurtherService) {
    headend.services = {variant(1, 10, "X", 1000), variant(2, 10, "X", 1000), service(3, 30, 1000),
                        service(3, 30, 1000)};
    EXPECT_EQ(bound_of(headend, "f").loaded, 2u);
    EXPECT_EQ(most(), 2u);
    EXPECT_EQ(reach_of_value(headend, "f").wanted, 3u);
    EXPECT_EQ(most_value(), 3u);
}

} // namespace
} // namespace zarven::tool::one_of_bound_test
