// The bound against the best of all arrangements, found by trying them all on tiny head-ends, and against the
// engine on roomy ones.

#include "placement/bound.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "headend/headend_json.h"
#include "placement/made_services.h"
#include "placement/random_headend.h"
#include "placement/running/capacity.h"
#include "placement/running/host.h"

namespace zarven::tool::bound_test {
namespace {

Bound bound_of(const Headend& headend) {
    const EngineRun run = load_engine(headend, "f");
    return bound_of(run, capacities_of(run));
}

/// Bounds the sum of the values.
Bound bound_of_value(const Headend& headend) {
    const EngineRun run = load_engine(headend, "f");
    std::vector<std::uint64_t> values;
    for (const Service& service : headend.services)
        values.push_back(service.value);
    return bound_of(run, capacities_of(run), values);
}

/// The arrangement with the greatest value. Each service in turn goes nowhere or to any output; a module then
/// needs an input for each stream that it carries.
class BestArrangement {
public:
    explicit BestArrangement(const Headend& headend) : headend_(headend) {
        for (const Module& module : headend.modules)
            loads_.emplace_back(module.outputs.size());
    }

    std::size_t value() {
        place(0, 0);
        return best_;
    }

private:
    using Services = std::vector<const Service*>;

    bool keeps_limits(std::size_t index) const {
        const Module& module = headend_.modules[index];
        std::vector<std::uint16_t> streams;
        std::uint32_t pids = 0;
        std::uint16_t sd = 0;
        std::uint16_t hd = 0;
        for (std::size_t output = 0; output < loads_[index].size(); ++output) {
            std::uint64_t bitrate = 0;
            for (const Service* one : loads_[index][output]) {
                bitrate += one->bitrate;
                pids += one->ca_pids;
                (one->video_format == tRec_Servicio::VIDEO_HD ? hd : sd) += one->transcoding;
                if (std::find(streams.begin(), streams.end(), one->tsid) == streams.end())
                    streams.push_back(one->tsid);
            }
            if (!loads_[index][output].empty() && bitrate >= module.outputs[output])
                return false;
        }
        // The first HD service still finds the SD ceiling, the later ones that of HD.
        const int ceiling = hd == 0 ? module.sd_transcoders
                            : module.sd_transcoders == 0
                                ? 0
                                : std::max(module.sd_transcoders, module.hd_transcoders);
        return streams.size() <= module.inputs && pids <= module.pids_max && sd + hd <= ceiling;
    }

    void place(std::size_t service, std::size_t placed) {
        best_ = std::max(best_, placed);
        if (service == headend_.services.size())
            return;
        place(service + 1, placed);
        for (std::size_t module = 0; module < loads_.size(); ++module)
            for (Services& output : loads_[module]) {
                output.push_back(&headend_.services[service]);
                if (keeps_limits(module))
                    place(service + 1, placed + headend_.services[service].value);
                output.pop_back();
            }
    }

    const Headend& headend_;
    std::vector<std::vector<Services>> loads_;
    std::size_t best_ = 0;
};

Headend tiny_headend(Dice& dice) {
    const ModuleSizes sizes{{0, 3}, {1, 2}, {0, 12}, {0, 6}, {0, 3}, {0, 0}};
    Headend headend;
    const unsigned modules = dice.one_of({1, 2});
    for (unsigned module = 0; module < modules; ++module)
        headend.modules.push_back(random_module(dice, letter(module), true, sizes));
    const unsigned services = dice.one_of({1, 6});
    for (std::uint16_t lcn = 1; lcn <= services; ++lcn) {
        headend.services.push_back(
            service(lcn, dice.one_of({1, 4}), dice.up_to(7), dice.up_to(3), dice.once_in(4) ? 1 : 0));
        headend.services.back().video_format = dice.once_in(2) ? 0 : 4;
    }
    return headend;
}

TEST(Bound, IsNeverUnderTheBestArrangement) {
    Dice dice(7);
    int reached = 0;
    const int rounds = 3000;
    for (int round = 0; round < rounds; ++round) {
        const Headend headend = tiny_headend(dice);
        const std::size_t best = BestArrangement(headend).value();
        const Bound bound = bound_of(headend);
        ASSERT_GE(bound.most, best) << write_headend(headend);
        reached += bound.most == best ? 1 : 0;
    }
    // It would be of no use if it were far off.
    EXPECT_GT(reached, rounds * 3 / 4);
}

TEST(Bound, OfTheValueIsNeverUnderTheBestArrangement) {
    Dice dice(9);
    int reached = 0;
    const int rounds = 2000;
    for (int round = 0; round < rounds; ++round) {
        Headend headend = tiny_headend(dice);
        for (Service& service : headend.services)
            service.value = dice.once_in(3) ? dice.up_to(1000) : dice.up_to(3);
        const std::size_t best = BestArrangement(headend).value();
        const Bound bound = bound_of_value(headend);
        ASSERT_GE(bound.most, best) << write_headend(headend);
        reached += bound.most == best ? 1 : 0;
    }
    EXPECT_GT(reached, rounds / 2);
}

TEST(Bound, IsNotUnderTheEngineWhereThereIsRoom) {
    Dice dice(8);
    const host::Log no_log("");
    for (int round = 0; round < 30; ++round) {
        Headend headend;
        for (char mac = 'A'; mac <= 'D'; ++mac)
            headend.modules.push_back({std::string(1, mac), 3, true, 2, {38000, 38000}, 40, 0, 0, 0});
        for (std::uint16_t lcn = 1; lcn <= 30; ++lcn)
            headend.services.push_back(
                service(lcn, dice.one_of({1, 8}), dice.one_of({3000, 5999}), dice.up_to(3)));
        EngineRun run = load_engine(headend, "f");
        const Bound bound = bound_of(run, capacities_of(run));
        run_engine(run, "f");
        EXPECT_GE(bound.most, result_of(run, "").counts.placed);
        EXPECT_GT(bound.most, 0u);
    }
}

/// One module, its limits far from everything but what a test sets.
Headend roomy(std::vector<Service> services) {
    Headend headend;
    headend.modules.push_back({"A", 3, true, 9, {1000}, 100, 9, 9, 0});
    headend.services = std::move(services);
    return headend;
}

TEST(Bound, AnInputReceivesOneStream) {
    Headend headend = roomy({service(1, 10, 1), service(2, 10, 1), service(3, 20, 1), service(4, 30, 1)});
    headend.modules[0].inputs = 3;
    EXPECT_EQ(bound_of(headend).most, 4u);
    headend.modules[0].inputs = 2;
    const Bound bound = bound_of(headend);
    EXPECT_EQ(bound.most, 3u);
    EXPECT_EQ(bound.inputs.capacity, 2u);
    EXPECT_EQ(bound.inputs.wanted, 3u);
    EXPECT_EQ(bound.inputs.allows, 3u);
}

TEST(Bound, AnOutputStaysUnderItsBitrate) {
    Headend headend = roomy({service(1, 10, 10), service(2, 10, 10), service(3, 10, 5)});
    headend.modules[0].outputs = {26};
    EXPECT_EQ(bound_of(headend).most, 3u);
    headend.modules[0].outputs = {25};
    const Bound bound = bound_of(headend);
    EXPECT_EQ(bound.most, 2u);
    EXPECT_EQ(bound.bitrate.capacity, 20u) << "24, rounded down to what fives can reach";
    EXPECT_EQ(bound.bitrate.wanted, 25u);
}

TEST(Bound, AModuleStaysWithinItsPids) {
    Headend headend = roomy({service(1, 10, 1, 4), service(2, 10, 1, 4), service(3, 10, 1, 0)});
    headend.modules[0].pids_max = 8;
    EXPECT_EQ(bound_of(headend).most, 3u);
    headend.modules[0].pids_max = 7;
    const Bound bound = bound_of(headend);
    EXPECT_EQ(bound.most, 2u);
    EXPECT_EQ(bound.pids.capacity, 4u);
    EXPECT_EQ(bound.pids.wanted, 8u);
    EXPECT_EQ(bound.pids.allows, 2u);
}

/// Both modules together would do, but the stream needs an input of each, and none is left for the other.
TEST(Bound, AnInputBringsNoMoreThanItsModuleTakes) {
    Headend headend;
    for (const char* mac : {"A", "B"})
        headend.modules.push_back({mac, 3, mac[0] == 'A', 1, {1000}, 4, 2, 2, 0});
    headend.services = {service(1, 10, 1, 2), service(2, 10, 1, 2), service(3, 10, 1, 2),
                        service(4, 10, 1, 2), service(5, 20, 1, 0)};
    EXPECT_EQ(bound_of(headend).inputs.allows, 5u);
    EXPECT_EQ(bound_of(headend).pids.allows, 5u);
    EXPECT_EQ(bound_of(headend).most, 4u);
    headend.modules[0].pids_max = 7;
    EXPECT_EQ(bound_of(headend).most, 4u);
    headend.modules[0].pids_max = 8;
    EXPECT_EQ(bound_of(headend).most, 5u);
    headend.modules[0].pids_max = 4;
    headend.modules[0].inputs = 2;
    EXPECT_EQ(bound_of(headend).most, 5u) << "an input is left";
    headend.modules[0].inputs = 1;
    for (Service& one : headend.services) {
        one.ca_pids = one.ca_pids_max = 0;
        one.transcoding = one.tsid == 10 ? 1 : 0;
    }
    EXPECT_EQ(bound_of(headend).most, 4u) << "two transcoders each";
    headend.modules[1].sd_transcoders = 4;
    EXPECT_EQ(bound_of(headend).most, 5u);
    for (Service& one : headend.services) {
        one.transcoding = 0;
        one.bitrate = one.tsid == 10 ? 333 : 1;
    }
    EXPECT_EQ(bound_of(headend).most, 4u) << "999 kbit/s on each";
    headend.modules[1].outputs = {1000, 1000};
    EXPECT_EQ(bound_of(headend).most, 5u);
}

TEST(Bound, OfTheValueIsASumOfValues) {
    Headend headend = roomy({service(1, 10, 1, 3), service(2, 10, 1, 3), service(3, 10, 1, 3)});
    headend.modules[0].pids_max = 8;
    headend.modules[0].inputs = 1;
    EngineRun loaded = load_engine(headend, "f");
    EXPECT_EQ(bound_of(loaded, capacities_of(loaded), {10, 10, 5}).most, 20u);
    EXPECT_EQ(bound_of(loaded, capacities_of(loaded), {7, 7, 7}).most, 14u);
}

TEST(Bound, PidsAreThoseThatTheEngineCounts) {
    Headend headend = roomy({service(1, 10, 1, 2), service(2, 10, 1, 2)});
    headend.services[0].ca_pids_max = 5;
    // The same stream and LCN: a clone, whose PIDs are charged to its parent.
    headend.services.push_back(service(1, 10, 1, 3));
    headend.modules[0].pids_max = 6;
    const Bound bound = bound_of(headend);
    EXPECT_EQ(bound.loaded, 2u);
    EXPECT_EQ(bound.pids.wanted, 7u);
    EXPECT_EQ(bound.most, 1u);
}

TEST(Bound, TheTranscodersOfAModule) {
    Headend headend = roomy({service(1, 10, 1, 0, 1), service(2, 10, 1, 0, 1), service(3, 10, 1, 0, 1)});
    const auto most = [&headend](std::uint16_t sd, std::uint16_t hd) {
        headend.modules[0].sd_transcoders = sd;
        headend.modules[0].hd_transcoders = hd;
        return bound_of(headend).most;
    };
    EXPECT_EQ(most(3, 0), 3u);
    EXPECT_EQ(most(2, 0), 2u);
    EXPECT_EQ(most(1, 2), 2u);
    EXPECT_EQ(most(0, 9), 0u) << "nothing begins without the SD ceiling";
}

TEST(Bound, AnOutputCarries512Services) {
    std::vector<Service> services;
    for (std::uint16_t lcn = 1; lcn <= 512; ++lcn)
        services.push_back(service(lcn, 10, 0));
    EXPECT_EQ(bound_of(roomy(services)).most, 512u);
    services.push_back(service(513, 10, 0));
    const Bound bound = bound_of(roomy(services));
    EXPECT_EQ(bound.most, 512u);
    EXPECT_EQ(bound.places.wanted, 513u);
}

TEST(Bound, TheLimitsTogetherSayMoreThanEach) {
    // By inputs 3 of the large stream, by bitrate 3 of the small ones; in the large stream only 2 fit.
    Headend headend = roomy(
        {service(1, 10, 10), service(2, 10, 10), service(3, 10, 10), service(4, 20, 1), service(5, 30, 1)});
    headend.modules[0].inputs = 1;
    headend.modules[0].outputs = {25};
    const Bound bound = bound_of(headend);
    EXPECT_EQ(bound.inputs.allows, 3u);
    EXPECT_EQ(bound.bitrate.allows, 4u);
    EXPECT_EQ(bound.most, 2u);
}

/// A module with much bitrate for its one input, and one with many inputs for little bitrate.
Headend unlike_modules() {
    Headend headend;
    headend.modules.push_back({"A", 3, true, 1, {1001}, 100, 0, 0, 0});
    headend.modules.push_back({"B", 3, false, 9, {41}, 100, 0, 0, 0});
    for (std::uint16_t lcn = 1; lcn <= 16; ++lcn)
        headend.services.push_back(service(lcn, static_cast<std::uint16_t>((lcn + 3) / 4), 10));
    return headend;
}

TEST(Bound, WhatOneModuleHasTooMuchOfHelpsNoOther) {
    Headend headend = unlike_modules();
    const Bound bound = bound_of(headend);
    EXPECT_EQ(bound.inputs.allows, 16u);
    EXPECT_EQ(bound.bitrate.allows, 16u);
    EXPECT_EQ(bound.most, 8u) << "one stream on A, four services on B";
    headend.modules[0].inputs = 2;
    EXPECT_EQ(bound_of(headend).most, 12u);
    headend.modules[1].outputs = {61};
    EXPECT_EQ(bound_of(headend).most, 14u);
    headend.modules[0].inputs = 4;
    EXPECT_EQ(bound_of(headend).most, 16u);
}

TEST(Bound, OfTheValueKnowsUnlikeModules) {
    Headend headend = unlike_modules();
    for (Service& service : headend.services)
        service.value = service.tsid == 1 ? 100 : 1;
    EXPECT_EQ(bound_of_value(headend).most, 404u);
}

/// More kinds of modules than have prices of their own.
TEST(Bound, OfManyKindsCountsAllOfThem) {
    Headend headend;
    for (std::uint32_t module = 0; module < 20; ++module)
        headend.modules.push_back({letter(module), 3, module == 0, 1, {11 + 10 * module}, 100, 0, 0, 0});
    for (std::uint16_t lcn = 1; lcn <= 30; ++lcn)
        headend.services.push_back(service(lcn, lcn, 10));
    EXPECT_EQ(bound_of(headend).most, 20u);
    headend.modules[19].inputs = 3;
    EXPECT_EQ(bound_of(headend).most, 22u);
}

TEST(Bound, WhatNoModuleCanTakeIsOut) {
    Headend headend = roomy({service(1, 10, 999), service(2, 20, 1000), service(3, 20, 1, 101),
                             service(4, 20, 1, 100), service(5, 20, 1, 0, 1)});
    headend.modules[0].outputs = {1000, 1000};
    headend.modules[0].sd_transcoders = 0;
    const Bound bound = bound_of(headend);
    EXPECT_EQ(bound.loaded, 5u);
    EXPECT_EQ(bound.most, 2u);
    ASSERT_EQ(bound.impossible.size(), 3u);
    EXPECT_EQ(bound.impossible[0].lcn, 2);
    EXPECT_EQ(bound.impossible[0].reason,
              "its 1000 kbit/s must stay below the maximum of an output, and the largest is 1000");
    EXPECT_EQ(bound.impossible[1].reason, "it needs 101 PIDs and the largest budget is 100");
    EXPECT_EQ(bound.impossible[2].reason,
              "it needs a transcoder, and the limit for the first one, that for SD, is 0 everywhere");
}

TEST(Bound, NoOneModuleHasAllThatAServiceNeeds) {
    Headend headend = roomy({service(1, 10, 500, 50)});
    headend.modules[0].pids_max = 10;
    headend.modules.push_back({"B", 3, false, 1, {400}, 100, 0, 0, 0});
    EXPECT_EQ(bound_of(headend).impossible.at(0).reason,
              "not even when empty does one offer the 500 kbit/s and 50 PIDs that it needs");
    headend.modules[0].inputs = 0;
    headend.modules[1].inputs = 0;
    EXPECT_EQ(bound_of(headend).impossible.at(0).reason, "none has an input and an output");
}

TEST(Bound, OfNothing) {
    const Bound bound = bound_of(Headend());
    EXPECT_EQ(bound.most, 0u);
    EXPECT_EQ(bound.loaded, 0u);
}

TEST(Bound, OfTheValueEachLimitTellsInValues) {
    Headend headend = roomy({service(1, 10, 10, 4), service(2, 10, 5, 4), service(3, 20, 10, 2)});
    headend.services[0].value = 2;
    headend.services[1].value = 3;
    headend.services[2].value = 100;
    EXPECT_EQ(bound_of_value(headend).most, 105u);
    headend.modules[0].inputs = 1;
    EXPECT_EQ(bound_of_value(headend).inputs.allows, 100u);
    headend.modules[0].inputs = 9;
    // The third and the second, which are worth most for each kbit/s, and 1 of 2 for half of the first.
    headend.modules[0].outputs = {21};
    EXPECT_EQ(bound_of_value(headend).bitrate.allows, 104u);
    headend.modules[0].pids_max = 6;
    EXPECT_EQ(bound_of_value(headend).pids.allows, 103u);
    EXPECT_EQ(bound_of_value(headend).most, 103u);
}

TEST(Bound, OfTheValuePassesOverWhatIsWorthNothing) {
    Headend headend = roomy({service(1, 10, 10), service(2, 20, 2000)});
    headend.services[0].value = 7;
    headend.services[1].value = 0;
    const Bound bound = bound_of_value(headend);
    EXPECT_EQ(bound.most, 7u);
    EXPECT_EQ(bound.inputs.wanted, 1u);
    EXPECT_TRUE(bound.impossible.empty());
    headend.services[0].value = 0;
    EXPECT_EQ(bound_of_value(headend).most, 0u);
}

} // namespace
} // namespace zarven::tool::bound_test
