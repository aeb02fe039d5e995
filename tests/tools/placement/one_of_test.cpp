// One-of groups: which variant is the best, and which is asked for where that one does not fit.

#include "placement/one_of.h"

#include <gtest/gtest.h>

#include "placement/audit/audit.h"
#include "placement/bound.h"
#include "placement/exploding.h"
#include "placement/failing/drill_parts.h"
#include "placement/made_services.h"
#include "placement/result.h"
#include "placement/running/asked_for.h"
#include "placement/running/engine_run.h"
#include "placement/running/host.h"
#include "placement/service_query.h"
#include "placement/services.h"

#include "failure_message.h"

namespace zarven::tool::one_of_test {
namespace {

using Places = std::vector<std::size_t>;
using Flags = std::vector<bool>;

Places order_of(const std::vector<Service>& services) {
    return one_of_groups(services).at(0).variants;
}

TEST(OneOf, MustThenValueThenHdThenPlace) {
    std::vector<Service> services(3, variant(1, 10, "X"));
    EXPECT_EQ(order_of(services), (Places{0, 1, 2}));
    services[2].wished_as = 2;
    services[1].wished_as = 3;
    EXPECT_EQ(order_of(services), (Places{2, 1, 0}));
    services[1].video_format = 4;
    EXPECT_EQ(order_of(services), (Places{1, 2, 0}));
    services[0].value = 2;
    EXPECT_EQ(order_of(services), (Places{0, 1, 2}));
    services[2].must = true;
    EXPECT_EQ(order_of(services), (Places{2, 0, 1}));
}

TEST(OneOf, WhatMayNotBeAskedForIsNoVariant) {
    std::vector<Service> services(4, variant(1, 10, "X"));
    services[0].ask = false;
    services[1].value = 0;
    services[2].value = 0;
    services[2].must = true;
    EXPECT_EQ(order_of(services), (Places{2, 3}));
    services[2].must = false;
    services[3].ask = false;
    EXPECT_TRUE(one_of_groups(services).empty());
    EXPECT_EQ(services_asked_for(services), (Flags{false, false, false, false}));
}

TEST(OneOf, GroupsStandInTheOrderOfTheirBest) {
    std::vector<Service> services = {variant(1, 10, "A"), variant(2, 10, "B"), variant(3, 10, "A"),
                                     service(4, 10)};
    EXPECT_EQ(one_of_groups(services).at(0).name, "A");
    services[1].value = 2;
    EXPECT_EQ(one_of_groups(services).at(0).name, "B");
    EXPECT_EQ(one_of_groups(services).size(), 2u);
}

TEST(OneOf, EqualOnesStandInTheOrderOfTheHeadend) {
    std::vector<Service> services;
    Places places;
    for (std::uint16_t place = 0; place < 40; ++place) {
        services.push_back(variant(static_cast<std::uint16_t>(100 - place), 10, "Z"));
        places.push_back(place);
    }
    services.push_back(variant(1, 10, "A"));
    EXPECT_EQ(order_of(services), places);
    EXPECT_EQ(one_of_groups(services).at(0).name, "Z");
    EXPECT_EQ(one_of_groups(services).at(1).name, "A");
}

TEST(OneOf, TheBestThatDoesNotYieldIsAskedFor) {
    Headend headend;
    headend.services = {variant(1, 10, "X"), variant(2, 20, "X"), service(3, 10)};
    headend.clones = {clone_of(headend.services[0]), clone_of(headend.services[1])};
    headend.pids.resize(2);
    headend.pids[0].sid = 101;
    headend.pids[1].sid = 102;
    AskedFor asked = asked_for(headend);
    EXPECT_EQ(asked.services, (Flags{true, false, true}));
    EXPECT_EQ(asked.clones, (Flags{true, false}));
    EXPECT_EQ(asked.pids, (Flags{true, false}));
    headend.services[0].yields = true;
    asked = asked_for(headend);
    EXPECT_EQ(asked.services, (Flags{false, true, true}));
    EXPECT_EQ(asked.clones, (Flags{false, true}));
    headend.services[1].yields = true;
    EXPECT_EQ(asked_for(headend).services, (Flags{false, false, true}));
}

class Settling : public testing::Test {
protected:
    Settling() { headend.modules.push_back({"A", 3, true, 2, {10000}, 8, 0, 0, 0}); }

    /// The LCNs that are asked for.
    std::vector<int> asked(std::size_t most_runs = 100) {
        Headend settled = headend;
        settle_variants(settled, "f", most_runs);
        std::vector<int> lcns;
        const Flags flags = services_asked_for(settled.services);
        for (std::size_t index = 0; index < flags.size(); ++index)
            if (flags[index])
                lcns.push_back(settled.services[index].lcn);
        return lcns;
    }

    using Lcns = std::vector<int>;

    host::Log no_log{""};
    Headend headend;
};

TEST_F(Settling, TheBestThatFitsIsAskedFor) {
    // The load of an output stays under its ceiling of 10000.
    headend.services = {variant(1, 10, "X", 9999), variant(2, 10, "X", 4000)};
    EXPECT_EQ(asked(), Lcns{1});
    headend.services[0].bitrate = 10000;
    EXPECT_EQ(asked(), Lcns{2});
    headend.services[1].bitrate = 10000;
    EXPECT_EQ(asked(), Lcns{1}) << "where none fits, the best";
}

TEST_F(Settling, TheThirdIsTakenWhereTwoDoNotFit) {
    headend.services = {variant(1, 10, "X", 12000), variant(2, 10, "X", 11000), variant(3, 10, "X", 9000)};
    EXPECT_EQ(asked(), Lcns{3});
    EXPECT_EQ(asked(2), Lcns{1}) << "as it is, and with the second";
    EXPECT_EQ(asked(3), Lcns{3});
    EXPECT_EQ(asked(0), Lcns{1});
}

TEST_F(Settling, TheBestStaysWhereItIsPlaced) {
    // With the smaller one LCN 9 would have room, too: that is for a choice to find.
    headend.services = {variant(1, 10, "X", 9000), variant(2, 10, "X", 4000), service(9, 10, 5000)};
    EXPECT_EQ(asked(), (Lcns{1, 9}));
    headend.services[0].lcn = 10;
    headend.services[0].sid = headend.services[0].osid = 110;
    EXPECT_EQ(asked(), (Lcns{2, 9})) << "LCN 9 comes first now, and leaves no room for the best";
}

TEST_F(Settling, AVariantThatBringsLessIsNotTaken) {
    headend.modules[0].inputs = 1;
    headend.services = {variant(1, 20, "X", 4000), variant(2, 10, "X", 9000), service(8, 10, 3000),
                        service(9, 10, 3000)};
    // The engine takes stream 10 with LCN 8 and 9; with LCN 2 there, one of them would be lost.
    EXPECT_EQ(asked(), (Lcns{1, 8, 9}));
    headend.services[1].bitrate = 3000;
    EXPECT_EQ(asked(), (Lcns{2, 8, 9}));
    headend.services[1].bitrate = 9000;
    headend.services[1].value = headend.services[0].value = 9;
    EXPECT_EQ(asked(), (Lcns{2, 8, 9})) << "it is worth more than they are";
    headend.services[3].must = true;
    EXPECT_EQ(asked(), (Lcns{1, 8, 9})) << "no value makes up for a must";
}

TEST_F(Settling, OfTheSameValueMoreServicesAreBetter) {
    headend.modules[0].inputs = 1;
    headend.services = {variant(1, 30, "X", 12000), variant(2, 20, "X", 3000), service(3, 20, 3000),
                        service(8, 10, 3000)};
    headend.services[3].value = 2;
    EXPECT_EQ(asked(), (Lcns{2, 3, 8})) << "stream 20 with two instead of stream 10 with LCN 8";
    headend.services[3].value = 3;
    EXPECT_EQ(asked(), (Lcns{1, 3, 8}));
}

TEST_F(Settling, OfTheSameValueAndNumberTheBetterVariantsStay) {
    headend.modules[0].inputs = 1;
    // With LCN 2 and 4 the engine would take stream 10, and the other group had nothing.
    headend.services = {variant(1, 30, "X", 12000), variant(2, 20, "X", 3000), variant(3, 30, "Y", 12000),
                        variant(4, 10, "Y", 3000)};
    EXPECT_EQ(asked(), (Lcns{2, 3}));
}

TEST_F(Settling, AVariantThatIsNotPlacedIsNotTaken) {
    headend.modules[0].inputs = 1;
    // With LCN 2 the engine would take stream 10, which is worth more.
    headend.services = {variant(1, 20, "X", 12000), variant(2, 30, "X", 12000), service(3, 10, 3000),
                        service(9, 20, 3000)};
    headend.services[2].value = 5;
    EXPECT_EQ(asked(), (Lcns{1, 3, 9}));
    headend.services[1].bitrate = 3000;
    headend.services[1].tsid = 10;
    EXPECT_EQ(asked(), (Lcns{2, 3, 9}));
}

TEST_F(Settling, ABetterVariantIsTakenOnceItFits) {
    headend.modules = {{"A", 3, true, 3, {15000}, 1, 0, 2, 1}, {"B", 3, false, 1, {9000}, 5, 0, 0, 0}};
    headend.services = {variant(2, 60, "X", 6000), variant(3, 10, "X", 6000), variant(7, 10, "Y", 6500),
                        variant(8, 10, "Y", 7500)};
    const std::uint16_t pids[] = {4, 3, 3, 0};
    for (std::size_t index = 0; index < 4; ++index)
        headend.services[index].ca_pids = headend.services[index].ca_pids_max = pids[index];
    headend.services[0].must = headend.services[1].must = true;
    EXPECT_EQ(asked(3), (Lcns{3, 8})) << "LCN 7 has no room, and while it is asked for, LCN 2 has none";
    EXPECT_EQ(asked(), (Lcns{2, 8}));
}

TEST_F(Settling, GroupsAreSettledAgainUntilNothingChanges) {
    headend.modules[0].inputs = 1;
    // LCN 3 does not fit, but draws the input to its stream: LCN 2 fits once LCN 4 is asked for.
    headend.services = {variant(1, 10, "X", 12000), variant(2, 10, "X", 3000), variant(3, 20, "Y", 12000),
                        variant(4, 10, "Y", 3000), service(9, 20, 3000)};
    for (std::size_t index = 0; index < 4; ++index)
        headend.services[index].value = 2;
    EXPECT_EQ(asked(), (Lcns{2, 4, 9}));
    headend.services.push_back(variant(12, 30, "Z", 12000));
    EXPECT_EQ(asked(), (Lcns{2, 4, 9, 12})) << "the last group does not change";
}

TEST_F(Settling, AVariantWithWhichSomethingBreaksIsNotTaken) {
    headend.modules = {{"A", 3, true, 2, {14000}, 2, 1, 2, 2}, {"B", 3, false, 2, {5000}, 3, 2, 1, 0}};
    headend.services = {service(1, 10, 4500, 1), variant(3, 10, "X", 6000), service(9, 10, 1000, 2),
                        service(10, 30, 1000, 2), variant(12, 10, "X", 3000)};
    headend.services[1].ca_pids = headend.services[1].ca_pids_max = 3;
    Headend with_second = headend;
    with_second.services[1].yields = true;
    for (const auto& [tried, is_broken] : {std::make_pair(&headend, false), {&with_second, true}}) {
        EngineRun run = load_engine(*tried, "f");
        run_engine(run, "f");
        EXPECT_EQ(has_broken(run), is_broken);
        EXPECT_EQ(placed_of(run).count(run.services[is_broken ? 4 : 1]), is_broken ? 1u : 0u);
    }
    EXPECT_EQ(asked(), (Lcns{1, 3, 9, 10}));
    headend.services[1].must = headend.services[4].must = true;
    EXPECT_EQ(asked(), (Lcns{1, 3, 9, 10})) << "not for a must, either";
}

/// Counts what the engine logs.
struct Lines : host::Watcher {
    void hear(std::string_view) override { ++number; }
    void wait() override {}

    int number = 0;
};

TEST_F(Settling, WithoutAChoiceNothingIsRun) {
    Lines lines;
    const host::Watching watching(&lines);
    headend.services = {variant(1, 10, "X", 12000), variant(2, 10, "Y", 12000), service(9, 10)};
    EXPECT_EQ(asked(), (Lcns{1, 2, 9}));
    EXPECT_EQ(lines.number, 0);
    headend.services.push_back(variant(3, 10, "X"));
    EXPECT_EQ(asked(), (Lcns{2, 9, 3}));
    EXPECT_GT(lines.number, 0);
}

/// As long as the object lives a run may take no time.
struct NoTime {
    NoTime() {
        host::RunLimits limits;
        limits.time = std::chrono::milliseconds(0);
        host::limit_runs(limits);
    }
    ~NoTime() { host::limit_runs({}); }
};

TEST_F(Settling, AllRunsTogetherHaveTheTimeOfOne) {
    const Headend small = headend;
    headend = exploding(60, 40, 10);
    for (Service& service : headend.services)
        service.one_of = "X" + std::to_string(service.lcn % 10);
    Lines lines;
    const host::Watching watching(&lines);
    {
        const NoTime no_time;
        EXPECT_EQ(asked(), (Lcns{1, 2, 3, 4, 5, 6, 7, 8, 9, 10})) << "as long as nothing is known, the best";
    }
    const int of_one_run = lines.number;
    EXPECT_GT(of_one_run, 0);
    {
        const NoTime no_time;
        EXPECT_EQ(asked(1), (Lcns{1, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
    }
    EXPECT_EQ(lines.number, 2 * of_one_run) << "the second run would end at once, and a third";
    headend = small;
    headend.services = {variant(1, 10, "X", 10000), variant(2, 10, "X", 4000)};
    host::RunLimits hours;
    hours.time = std::chrono::hours(1);
    host::limit_runs(hours);
    EXPECT_EQ(asked(), Lcns{2}) << "what is over is so for that settling alone";
    host::limit_runs({});
}

TEST_F(Settling, GroupsAreSettledOneAfterAnother) {
    headend.services = {variant(1, 10, "X", 6000), variant(2, 10, "X", 3000), variant(3, 20, "Y", 6000),
                        variant(4, 20, "Y", 3000)};
    // One of them in HD has room beside the other in SD.
    EXPECT_EQ(asked().size(), 2u);
    EXPECT_EQ(asked(), (Lcns{1, 4}));
}

TEST_F(Settling, ResultsTellWhatIsAskedFor) {
    headend.services = {variant(1, 10, "X", 10000), variant(2, 10, "X", 4000), service(9, 10)};
    headend.services[1].group = headend.services[2].group = "G";
    settle_variants(headend, "f", 9);
    EngineRun run = load_engine(headend, "f");
    run_engine(run, "f");
    const Result result = result_of(run, "", Reasons::omitted);
    ASSERT_EQ(result.variants.size(), 1u);
    EXPECT_EQ(result.variants[0].one_of, "X");
    EXPECT_EQ(result.variants[0].service.lcn, 2);
    EXPECT_EQ(result.variants[0].place, 2u);
    EXPECT_EQ(result.variants[0].variants, 2u);
    EXPECT_TRUE(result.variants[0].is_placed);
    ASSERT_EQ(result.groups.size(), 1u);
    EXPECT_EQ(result.groups[0].loaded, 2u);
    EXPECT_EQ(result.groups[0].placed, 2u);
    EXPECT_EQ(result.counts.not_asked_for, 1u);
    EXPECT_EQ(
        failure_message([&] { services_with(parse_service_query("1"), run, "f", headend); }),
        "f: --service 1: \"S1\" (LCN 1, stream 1/10) is not asked for: another of its group \"X\" is asked "
        "for, \"S2\" (LCN 2, stream 1/10)");
}

TEST_F(Settling, AGroupIsAMustIfAnyOfItIs) {
    headend.services = {variant(1, 10, "X", 10000), variant(2, 10, "X", 4000), variant(3, 10, "Y", 100),
                        service(9, 10), service(10, 10, 100)};
    headend.services[0].must = headend.services[4].must = true;
    const auto counts = [this] {
        Headend settled = headend;
        settle_variants(settled, "f", 9);
        EngineRun run = load_engine(settled, "f");
        run_engine(run, "f");
        return result_of(run, "", Reasons::omitted).counts;
    };
    EXPECT_EQ(counts().musts, 2u);
    EXPECT_EQ(counts().musts_placed, 1u) << "in its place stands LCN 2, which is none";
    headend.services[1].must = true;
    EXPECT_EQ(counts().musts, 2u) << "one of the group counts";
    EXPECT_EQ(counts().musts_placed, 2u);
    headend.services[4].ask = false;
    headend.services[2].must = true;
    EXPECT_EQ(counts().musts, 2u) << "LCN 10 is not asked for";
    EXPECT_EQ(counts().musts_placed, 2u);
}

TEST_F(Settling, OfAGroupWithoutValueNoneIsAskedFor) {
    headend.services = {variant(1, 10, "X"), service(9, 10)};
    headend.services[0].value = 0;
    const EngineRun run = load_engine(headend, "f");
    EXPECT_EQ(run.not_asked_for, 1u);
    EXPECT_EQ(
        failure_message([&] { services_with(parse_service_query("1"), run, "f", headend); }),
        "f: --service 1: \"S1\" (LCN 1, stream 1/10) is not asked for: none of its group \"X\" is worth "
        "anything or a must");
}

TEST_F(Settling, WhereAStreamFailsTheNextVariantStandsIn) {
    headend.services = {variant(1, 10, "X"), variant(2, 20, "X")};
    settle_variants(headend, "f", 9);
    FailedPart part{PartKind::stream};
    part.stream = {1, 10};
    EXPECT_EQ(services_asked_for(without(headend, part).services), (Flags{false, true}));
}

TEST_F(Settling, OneOfAGroupCountsInTheBound) {
    headend.services = {variant(1, 10, "X"), variant(2, 20, "X"), service(3, 30), service(4, 30)};
    EXPECT_EQ(bound_of(headend, "f").loaded, 3u);
    EXPECT_EQ(bound_of(headend, "f").most, 2u) << "4000 each of 9999";
    headend.modules[0].outputs = {20000};
    headend.modules[0].inputs = 1;
    EXPECT_EQ(bound_of(headend, "f").most, 3u) << "a variant could be in any stream";
    headend.services[1].tsid = 10;
    EXPECT_EQ(bound_of(headend, "f").most, 2u) << "all variants are in stream 10";
    headend.services[1].one_of = "Y";
    headend.modules[0].inputs = 2;
    EXPECT_EQ(bound_of(headend, "f").most, 4u);
}

} // namespace
} // namespace zarven::tool::one_of_test
