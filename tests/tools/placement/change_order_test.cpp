// Placements that become others: who has to wait for whom, what is too much meanwhile, and the figures of
// random changes, each counted once more from the two results.

#include "placement/change/change_order.h"

#include <algorithm>
#include <map>
#include <random>
#include <set>

#include <gtest/gtest.h>

namespace zarven::tool::change_order_test {
namespace {

ServiceResult service(std::uint16_t lcn, std::uint16_t tsid, std::vector<std::uint32_t> outputs = {},
                      std::uint32_t bitrate = 100, std::uint16_t ca_pids = 0) {
    ServiceResult made;
    made.stream = {1, tsid};
    made.lcn = lcn;
    made.sid = lcn;
    made.name = "S" + std::to_string(lcn);
    made.bitrate = bitrate;
    made.ca_pids = ca_pids;
    made.outputs = std::move(outputs);
    return made;
}

/// A module whose inputs are tuned to the streams of their services; its outputs stay under 1000 kbit/s and
/// it has 10 PIDs.
ModuleResult module(const std::string& mac, const std::vector<std::vector<ServiceResult>>& inputs,
                    std::uint32_t outputs = 1) {
    ModuleResult made;
    made.mac = mac;
    made.pids_max = 10;
    for (std::uint32_t number = 1; number <= outputs; ++number)
        made.outputs.push_back({number, 0, 1000, 0, 512, {}});
    for (const std::vector<ServiceResult>& services : inputs) {
        const bool is_tuned = !services.empty();
        made.inputs.push_back({static_cast<std::uint16_t>(made.inputs.size() + 1), is_tuned,
                               is_tuned ? services.front().stream : Stream(), services});
        for (const ServiceResult& service : services) {
            made.pids += service.ca_pids;
            for (const std::uint32_t output : service.outputs)
                made.outputs[output - 1].bitrate += service.bitrate;
        }
    }
    return made;
}

Result result(std::vector<ModuleResult> modules) {
    Result made;
    made.modules = std::move(modules);
    return made;
}

ChangeOrder order_of(const Result& before, const Result& after) {
    return compare(before, after).order;
}

std::vector<std::string> inputs_of(const ChangeOrder& order) {
    std::vector<std::string> inputs;
    for (const ChangeStep& step : order.steps)
        inputs.push_back(step.input.mac + std::to_string(step.input.number));
    return inputs;
}

std::vector<std::uint16_t> lcns_of(const std::vector<ServiceResult>& services) {
    std::vector<std::uint16_t> lcns;
    for (const ServiceResult& service : services)
        lcns.push_back(service.lcn);
    return lcns;
}

TEST(ChangeOrder, NothingChanges) {
    const Result same = result({module("A", {{service(1, 10, {1})}})});
    const ChangeOrder order = order_of(same, same);
    EXPECT_TRUE(order.steps.empty());
    EXPECT_EQ(order.most_off_air, 0u);
    EXPECT_TRUE(order.is_least);
}

TEST(ChangeOrder, AFreeInputIsTakenFirstAndAnotherGivenUpLast) {
    const Result before = result({module("A", {{service(1, 10, {1})}, {}})});
    const Result after = result({module("A", {{}, {service(1, 10, {1})}})});
    const ChangeOrder order = order_of(before, after);
    EXPECT_EQ(inputs_of(order), (std::vector<std::string>{"A2", "A1"}));
    EXPECT_EQ(order.most_off_air, 0u);
}

TEST(ChangeOrder, WhereAServiceComesIsTunedBeforeWhatItLeaves) {
    const Result before =
        result({module("A", {{service(1, 10, {1})}}), module("B", {{service(2, 20, {1})}})});
    const Result after = result({module("A", {{service(3, 30, {1})}}), module("B", {{service(1, 10, {1})}})});
    const ChangeOrder order = order_of(before, after);
    EXPECT_EQ(inputs_of(order), (std::vector<std::string>{"B1", "A1"}));
    EXPECT_EQ(order.most_off_air, 0u);
}

TEST(ChangeOrder, OfTwoStreamsThatChangePlacesTheSmallerGoesOffTheAir) {
    const std::vector<ServiceResult> two{service(1, 10, {1}), service(2, 10, {1})};
    const std::vector<ServiceResult> one{service(3, 20, {1})};
    const ChangeOrder order = order_of(result({module("A", {two}), module("B", {one})}),
                                       result({module("A", {one}), module("B", {two})}));
    ASSERT_EQ(inputs_of(order), (std::vector<std::string>{"B1", "A1"}));
    EXPECT_EQ(lcns_of(order.steps[0].goes_off), (std::vector<std::uint16_t>{3}));
    EXPECT_TRUE(order.steps[0].comes_back.empty());
    EXPECT_EQ(order.steps[0].off_air, 1u);
    EXPECT_TRUE(order.steps[1].goes_off.empty());
    EXPECT_EQ(lcns_of(order.steps[1].comes_back), (std::vector<std::uint16_t>{3}));
    EXPECT_EQ(order.steps[1].off_air, 0u);
    EXPECT_EQ(order.most_off_air, 1u);
}

TEST(ChangeOrder, AnInputThatKeepsItsStreamTakesServicesOverBefore) {
    const ServiceResult stays = service(1, 10, {1});
    const ServiceResult moves = service(2, 10, {1});
    const ServiceResult other = service(3, 20, {1});
    const ChangeOrder order = order_of(result({module("A", {{stays}}), module("B", {{moves}})}),
                                       result({module("A", {{stays, moves}}), module("B", {{other}})}));
    EXPECT_EQ(inputs_of(order), (std::vector<std::string>{"B1"}));
    EXPECT_EQ(order.most_off_air, 0u);
}

TEST(ChangeOrder, AServiceThatIsLostOrGainedIsNoInterruption) {
    const ChangeOrder order = order_of(result({module("A", {{service(1, 10, {1})}})}),
                                       result({module("A", {{service(2, 20, {1})}})}));
    ASSERT_EQ(order.steps.size(), 1u);
    EXPECT_TRUE(order.steps[0].goes_off.empty() && order.steps[0].comes_back.empty());
}

/// A service of this bitrate and these PIDs goes to module B, which another of 500 kbit/s and 5 PIDs leaves
/// for an input of module C that a third must leave first; that goes where the first was.
ChangeOrder crowded(std::uint32_t bitrate, std::uint16_t ca_pids) {
    const ServiceResult one = service(1, 10, {1}, bitrate, ca_pids);
    const ServiceResult other = service(2, 20, {1}, 500, 5);
    const ServiceResult third = service(3, 30, {1});
    return order_of(result({module("A", {{one}}), module("B", {{other}, {}}), module("C", {{third}})}),
                    result({module("A", {{third}}), module("B", {{}, {one}}), module("C", {{other}})}));
}

TEST(ChangeOrder, AServiceWaitsUntilItsOutputStaysBelowItsCeiling) {
    const ChangeOrder fits = crowded(499, 0);
    EXPECT_EQ(inputs_of(fits), (std::vector<std::string>{"B2", "A1", "C1", "B1"}));
    EXPECT_EQ(fits.most_off_air, 0u);
    EXPECT_TRUE(fits.is_least);
    const ChangeOrder waits = crowded(500, 0);
    EXPECT_EQ(waits.steps.size(), 4u);
    EXPECT_EQ(waits.most_off_air, 1u);
    EXPECT_FALSE(waits.is_least);
}

TEST(ChangeOrder, AServiceWaitsUntilItsPIDsDoNotExceedTheBudget) {
    EXPECT_EQ(crowded(100, 5).most_off_air, 0u);
    EXPECT_EQ(crowded(100, 6).most_off_air, 1u);
}

TEST(ChangeOrder, WhatIsLostMakesRoomFirst) {
    const ServiceResult moves = service(1, 10, {1}, 600);
    const ServiceResult lost = service(2, 20, {1}, 600);
    const ServiceResult gained = service(3, 30, {1}, 600);
    const ChangeOrder order = order_of(result({module("A", {{moves}}), module("B", {{lost}, {}})}),
                                       result({module("A", {{gained}}), module("B", {{}, {moves}})}));
    EXPECT_EQ(order.most_off_air, 0u);
}

TEST(ChangeOrder, ServicesThatWaitForEachOthersRoomGoOverWithTheLastStep) {
    // The two change places between modules that both keep their streams.
    const ServiceResult one = service(1, 10, {1}, 900);
    const ServiceResult other = service(2, 10, {1}, 900);
    const ServiceResult third = service(3, 20, {2}, 100);
    const ServiceResult fourth = service(4, 30, {2}, 100);
    const ChangeOrder order =
        order_of(result({module("A", {{one}, {third}}, 2), module("B", {{other}}, 2)}),
                 result({module("A", {{other}, {fourth}}, 2), module("B", {{one}}, 2)}));
    ASSERT_EQ(order.steps.size(), 1u);
    EXPECT_TRUE(order.steps[0].goes_off.empty());
    EXPECT_EQ(order.most_off_air, 0u);
}

TEST(ChangeOrder, APlacementBeyondItsLimitsIsReachedAllTheSame) {
    const ServiceResult one = service(1, 10, {1}, 700);
    const ServiceResult other = service(2, 20, {1}, 700);
    const ChangeOrder order = order_of(result({module("A", {{one}}), module("B", {{other}, {}})}),
                                       result({module("A", {{}}), module("B", {{other}, {one}})}));
    EXPECT_EQ(inputs_of(order), (std::vector<std::string>{"B2", "A1"}));
    EXPECT_EQ(order.most_off_air, 0u);
}

TEST(ChangeOrder, WhatIsBeyondItsLimitInTheEndIsGoneOverToAtOnce) {
    const ServiceResult moves = service(1, 10, {1}, 700);
    const ServiceResult stays = service(2, 20, {1}, 700);
    const ServiceResult follows = service(3, 30, {1});
    const ChangeOrder order =
        order_of(result({module("A", {{moves}}), module("B", {{stays}, {}}), module("C", {{follows}})}),
                 result({module("A", {{follows}}), module("B", {{stays}, {moves}}), module("C", {{}})}));
    EXPECT_EQ(inputs_of(order), (std::vector<std::string>{"B2", "A1", "C1"}));
    EXPECT_EQ(order.most_off_air, 0u);
}

TEST(ChangeOrder, AServiceOnTwoInputsOfAModuleNeedsItsPIDsOnce) {
    const ServiceResult moves = service(1, 10, {1}, 100, 6);
    const ServiceResult follows = service(3, 30, {1});
    ModuleResult twice = module("B", {{moves}, {moves}});
    twice.pids = 6;
    const ChangeOrder order =
        order_of(result({module("A", {{moves}}), module("B", {{}, {}}), module("C", {{follows}})}),
                 result({module("A", {{follows}}), twice, module("C", {{}})}));
    EXPECT_EQ(order.steps.size(), 4u);
    EXPECT_EQ(order.most_off_air, 0u);
}

TEST(ChangeOrder, AServiceThatHasToWaitTakesItsRoomMeanwhile) {
    // The first two change places and go over with the last step, so that the third finds no room before.
    const ServiceResult one = service(1, 10, {1}, 900);
    const ServiceResult other = service(2, 10, {1}, 300);
    const ServiceResult third = service(3, 20, {1}, 600);
    const ServiceResult follows = service(4, 30, {1});
    const ChangeOrder order = order_of(result({module("A", {{one}, {}}), module("B", {{other}}),
                                               module("C", {{third}}), module("D", {{follows}})}),
                                       result({module("A", {{other}, {third}}), module("B", {{one}}),
                                               module("C", {{follows}}), module("D", {{}})}));
    EXPECT_EQ(order.most_off_air, 1u);
    EXPECT_FALSE(order.is_least);
}

// ---- Random placements --------------------------------------------------------------------------------

/// Puts streams of one to three services on the inputs of three modules at random; a stream stands once.
Result random_placement(std::mt19937& random) {
    std::vector<std::uint16_t> streams{0, 0, 10, 20, 30, 40, 50, 60};
    std::shuffle(streams.begin(), streams.end(), random);
    std::vector<ModuleResult> modules;
    for (const char* mac : {"A", "B", "C"}) {
        std::vector<std::vector<ServiceResult>> inputs;
        for (int input = 0; input < 2; ++input) {
            const std::uint16_t stream = streams.back();
            streams.pop_back();
            inputs.emplace_back();
            if (stream == 0)
                continue;
            for (std::uint16_t number = 1; number <= 1 + stream / 10 % 3; ++number)
                inputs.back().push_back(service(static_cast<std::uint16_t>(stream + number), stream,
                                                {static_cast<std::uint32_t>(1 + random() % 2)}));
        }
        modules.push_back(module(mac, inputs, 2));
    }
    return result(std::move(modules));
}

/// LCNs by module and input, of the services that are on an output.
std::map<std::pair<std::string, std::uint16_t>, std::set<std::uint16_t>> received(const Result& result) {
    std::map<std::pair<std::string, std::uint16_t>, std::set<std::uint16_t>> lcns;
    for (const ModuleResult& module : result.modules)
        for (const InputResult& input : module.inputs)
            for (const ServiceResult& service : input.services)
                lcns[{module.mac, input.number}].insert(service.lcn);
    return lcns;
}

std::set<std::uint16_t>
all_of(const std::map<std::pair<std::string, std::uint16_t>, std::set<std::uint16_t>>& by) {
    std::set<std::uint16_t> all;
    for (const auto& [input, lcns] : by)
        all.insert(lcns.begin(), lcns.end());
    return all;
}

TEST(ChangeOrder, TheFiguresOfRandomChangesAreThoseThatAWalkGives) {
    std::mt19937 random(5);
    std::size_t interrupted = 0;
    for (int round = 0; round < 200; ++round) {
        const Result before = random_placement(random);
        const Result after = random_placement(random);
        const Comparison comparison = compare(before, after);
        auto on_air = received(before);
        auto wanted = received(after);
        std::set<std::uint16_t> both;
        const std::set<std::uint16_t> there_before = all_of(on_air);
        const std::set<std::uint16_t> there_after = all_of(wanted);
        std::set_intersection(there_before.begin(), there_before.end(), there_after.begin(),
                              there_after.end(), std::inserter(both, both.end()));
        std::size_t most = 0;
        for (const ChangeStep& step : comparison.order.steps) {
            const std::pair<std::string, std::uint16_t> input(step.input.mac, step.input.number);
            on_air[input] = wanted[input];
            const std::set<std::uint16_t> now = all_of(on_air);
            const auto off = static_cast<std::size_t>(std::count_if(
                both.begin(), both.end(), [&now](std::uint16_t lcn) { return now.count(lcn) == 0; }));
            ASSERT_EQ(step.off_air, off) << "round " << round;
            most = std::max(most, off);
        }
        ASSERT_EQ(on_air, wanted) << "every changed input has its step";
        ASSERT_EQ(comparison.order.most_off_air, most);
        interrupted += most > 0 ? 1 : 0;
    }
    EXPECT_GT(interrupted, 20u);
}

TEST(Compare, AServiceThatStaysUnderAnotherNameIsRenamed) {
    const auto with = [](auto change) {
        ServiceResult changed = service(1, 10, {1});
        change(changed);
        return compare(result({module("A", {{service(1, 10, {1})}})}), result({module("A", {{changed}})}));
    };
    EXPECT_TRUE(with([](ServiceResult&) {}).renamed.empty());
    const Comparison named = with([](ServiceResult& service) { service.name = "New"; });
    ASSERT_EQ(named.renamed.size(), 1u);
    EXPECT_EQ(named.renamed[0].before.name, "S1");
    EXPECT_EQ(named.renamed[0].after.name, "New");
    EXPECT_EQ(named.unmoved, 1u);
    EXPECT_EQ(with([](ServiceResult& service) { service.output_name = "New"; }).renamed.size(), 1u);
    // LCN and SID are found again by the name.
    EXPECT_EQ(with([](ServiceResult& service) { service.lcn = 7; }).renamed.size(), 1u);
    EXPECT_EQ(with([](ServiceResult& service) { service.sid = 7; }).renamed.size(), 1u);
    EXPECT_TRUE(with([](ServiceResult& service) { service.bitrate = 7; }).renamed.empty());
}

} // namespace
} // namespace zarven::tool::change_order_test
