// Which limit a report advises to raise, and how much it tries for that.

#include "placement/sizing/advising.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "base/streams.h"
#include "headend/headend_json.h"
#include "placement/engine_by_hand.h"
#include "placement/result.h"

namespace zarven::tool::advising_test {
namespace {

/// Two modules of one input; each could carry two services of its stream, the second with PIDs that B lacks.
Headend lacking_pids() {
    Headend headend;
    headend.modules = {{"A", 3, true, 1, {38000}, 8, 0, 0, 0}, {"B", 3, false, 1, {38000}, 2, 0, 0, 0}};
    headend.services = {service(1, 10), service(2, 10), service(3, 20), with_pids(service(4, 20), 4)};
    return headend;
}

Result result_of(const Headend& headend) {
    EngineRun run = load_engine(headend, "f");
    run_engine(run, "f");
    return tool::result_of(run, headend.name);
}

class Advising : public testing::Test {
protected:
    Advice advice(std::uint32_t trials = automatic_trials) const {
        return advice_for(headend, "f", result_of(headend), trials);
    }

    const host::Log silence{""};
    Headend headend = lacking_pids();
};

TEST_F(Advising, TheLimitThatHelpsIsFound) {
    headend.modules[0].pids_max = 3; // now neither takes the last
    const Advice found = advice();
    EXPECT_EQ(found.limits, 5u) << "without those that no service has met";
    EXPECT_EQ(found.limits_tried, 5u);
    ASSERT_FALSE(found.raises.empty());
    const Raise& best = found.raises.front();
    EXPECT_EQ(best.kind, LimitKind::pids);
    EXPECT_EQ(best.placed, 4u);
    EXPECT_EQ(best.to, 4u);
    Headend raised = headend;
    (best.mac == "A" ? raised.modules[0] : raised.modules[1]).pids_max = 4;
    EXPECT_EQ(result_of(raised).counts.placed, best.placed);
}

TEST_F(Advising, OnASmallHeadendAllValuesAreTried) {
    const std::string path = RECALCULO_TOOL_TESTS "/placement/helped_by_a_bitrate_in_between.json";
    headend = read_headend(path, read_text(path));
    const Raise best = advice().raises.at(0);
    EXPECT_EQ(best.setting, "modules[1].pids_max=6") << "no module is sold with so many";
    EXPECT_EQ(best.placed, 9u);
    const Raise sold = advice(200).raises.at(0);
    EXPECT_EQ(sold.placed, 8u);
}

TEST_F(Advising, NothingIsTriedWhereEverythingIsPlaced) {
    headend.modules[1].pids_max = 4;
    const Advice none = advice();
    EXPECT_EQ(none.limits, 0u);
    EXPECT_EQ(none.limits_tried, 0u);
}

TEST_F(Advising, TrialsAreBounded) {
    headend.modules[0].pids_max = 3;
    EXPECT_EQ(advice(0).limits, 0u);
    // Half of them are for the limits, of a module all or none.
    EXPECT_EQ(advice(3).limits_tried, 0u);
    EXPECT_EQ(advice(3).limits, 5u);
    EXPECT_EQ(advice(4).limits_tried, 2u);
    EXPECT_EQ(advice(9).limits_tried, 2u);
    EXPECT_EQ(advice(10).limits_tried, 5u);
}

TEST_F(Advising, OfTheModulesTheOneNearestToMostServices) {
    headend.services[2].ca_pids = 2;
    headend.modules[0].pids_max = headend.modules[1].pids_max = 5;
    Result now = result_of(headend);
    const std::string nearest = now.left_out.at(0).services.at(0).nearest;
    ASSERT_FALSE(nearest.empty());
    EXPECT_EQ(advice(8).raises.at(0).mac, nearest);
    const auto is_nearest_raised = [&] {
        const std::vector<Raise> raises = advice_for(headend, "f", now, 8).raises;
        return std::any_of(raises.begin(), raises.end(),
                           [&nearest](const Raise& raise) { return raise.mac == nearest; });
    };
    now.left_out[0].services[0].nearest = nearest == "A" ? "B" : "A";
    EXPECT_FALSE(is_nearest_raised());
    // Two services to one.
    std::vector<ServiceResult>& left_out = now.left_out[0].services;
    left_out.resize(3, ServiceResult(left_out[0]));
    left_out[0].nearest = nearest;
    EXPECT_FALSE(is_nearest_raised());
    left_out[1].nearest = nearest;
    EXPECT_TRUE(is_nearest_raised());
}

TEST_F(Advising, NoneIsGivenWhereARunFails) {
    headend.modules[0].pids_max = 3;
    const Result now = result_of(headend);
    headend.modules[0].controller = false;
    const Advice none = advice_for(headend, "f", now, automatic_trials);
    EXPECT_EQ(none.limits, 5u);
    EXPECT_EQ(none.limits_tried, 0u);
    EXPECT_TRUE(none.raises.empty());
}

TEST(AutomaticTrials, AreFewerForManyServices) {
    EXPECT_EQ(automatic_trials_for(0), 200u);
    EXPECT_EQ(automatic_trials_for(1000), 200u);
    EXPECT_EQ(automatic_trials_for(2000), 100u);
    EXPECT_EQ(automatic_trials_for(200000), 1u);
    EXPECT_EQ(automatic_trials_for(200001), 0u);
}

} // namespace
} // namespace zarven::tool::advising_test
