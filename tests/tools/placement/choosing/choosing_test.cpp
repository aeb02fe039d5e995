// Choices on head-ends small enough to be looked through, and what is promised of any.

#include "placement/choosing/choosing.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "placement/choosing/engine_trial.h"
#include "placement/engine_by_hand.h"
#include "placement/exploding.h"
#include "placement/running/host.h"

namespace zarven::tool::choosing_test {
namespace {

bool go_on(const ChoosingProgress&) {
    return true;
}

ChoosingLimits runs(std::uint64_t number, std::uint64_t seed = 1, unsigned jobs = 1) {
    return {std::chrono::hours(1), number, seed, jobs};
}

Choice choose(const Headend& headend, const ChoosingLimits& limits, const StaysPut& stays = {}) {
    const host::Log silence("");
    return choose_services(headend, limits, stays, go_on);
}

/// One module, one input: stream 1 has three services of 3,000 kbit/s, stream 2 two of 1,000.
Headend one_input() {
    Headend headend;
    headend.modules.push_back({"A", 3, true, 1, {6500}, 8});
    headend.services = {service(1, 1, 3000), service(2, 1, 3000), service(3, 1, 3000), service(4, 2, 1000),
                        service(5, 2, 1000)};
    return headend;
}

/// Some streams that do not go together well on modules with two inputs.
Headend three_modules() {
    Headend headend;
    for (const char* mac : {"A", "B", "C"})
        headend.modules.push_back({mac, 3, mac[0] == 'A', 2, {8000, 6000}, 4});
    std::uint16_t lcn = 1;
    for (std::uint16_t tsid = 1; tsid <= 8; ++tsid)
        for (unsigned number = 0; number < 2U + tsid % 5; ++number, ++lcn)
            headend.services.push_back(
                service(lcn, tsid, 1500U + 700U * (lcn % 4U), static_cast<std::uint16_t>(lcn % 3 == 0)));
    return headend;
}

std::size_t withheld_of(const Choice& choice) {
    return static_cast<std::size_t>(std::count(choice.asked.begin(), choice.asked.end(), false));
}

TEST(Choosing, IsWhatTheEngineMakesOfIt) {
    const Headend headend = three_modules();
    const Choice choice = choose(headend, runs(3000));
    ASSERT_EQ(choice.asked.size(), headend.services.size());
    const host::Log silence("");
    const StaysPut none;
    const TrialOutcome again = EngineTrial(headend, none).run(choice.asked);
    EXPECT_TRUE(choice.is_sound);
    EXPECT_TRUE(again.is_sound);
    EXPECT_EQ(again.worth.value, choice.worth.value);
    EXPECT_EQ(again.worth.placed, choice.worth.placed);
    EXPECT_EQ(again.worth.withheld, choice.worth.withheld);
    EXPECT_EQ(choice.worth.withheld, withheld_of(choice));
    EXPECT_GT(choice.worth.value, choice.asked_for_all.value);
    EXPECT_EQ(choice.states, 3000U);
    EXPECT_GT(choice.engine_runs, 1U);
}

TEST(Choosing, NoServiceThatIsWithheldCanBeGivenBackByItself) {
    const Headend headend = three_modules();
    const Choice choice = choose(headend, runs(3000));
    const host::Log silence("");
    const StaysPut none;
    const EngineTrial trial(headend, none);
    ASSERT_GT(choice.worth.withheld, 0U);
    for (std::size_t service = 0; service < choice.asked.size(); ++service) {
        std::vector<bool> asked = choice.asked;
        asked[service] = true;
        if (choice.asked[service])
            continue;
        const TrialOutcome more = trial.run(asked);
        EXPECT_FALSE(more.is_sound && is_better(more.worth, choice.worth)) << "service " << service;
    }
}

TEST(Choosing, TheSameSeedRunsAndJobsGiveTheSame) {
    const Headend headend = three_modules();
    for (const unsigned jobs : {1U, 2U, 3U}) {
        const Choice one = choose(headend, runs(1500, 7, jobs));
        const Choice other = choose(headend, runs(1500, 7, jobs));
        EXPECT_EQ(one.asked, other.asked);
        EXPECT_EQ(one.states, other.states);
        EXPECT_EQ(one.engine_runs, other.engine_runs);
        EXPECT_EQ(one.states, 1500U * jobs);
    }
}

TEST(Choosing, WhatFitsIsAskedForAsItIs) {
    Headend headend = one_input();
    headend.modules.front().inputs = 2;
    headend.modules.front().outputs = {38000};
    const Choice choice = choose(headend, runs(100));
    EXPECT_EQ(choice.worth.value, 5U);
    EXPECT_EQ(withheld_of(choice), 0U);
}

/// One input. Of two streams with as many services the engine takes the first; so the other is placed only
/// where the first is withheld, and all that is asked for is placed then.
TEST(Choosing, TheSearchGoesOnWhileSomethingIsWithheld) {
    Headend headend;
    headend.modules.push_back({"A", 3, true, 1, {38000}, 8});
    headend.services = {service(1, 1), service(2, 2)};
    EXPECT_EQ(choose(headend, runs(100)).worth.withheld, 0U) << "the first as well as the second";
    headend.services[1].value = 2;
    const Choice choice = choose(headend, runs(20001));
    EXPECT_EQ(choice.asked, (std::vector<bool>{false, true}));
    EXPECT_EQ(choice.worth.placed, 1U);
    EXPECT_EQ(choice.states, 20001U);
    headend.modules.front().inputs = 2;
    EXPECT_EQ(choose(headend, runs(20001)).states, 0U);
}

/// The engine alone takes the larger stream.
TEST(Choosing, TheValueDecidesAndNotTheNumber) {
    Headend headend = one_input();
    EXPECT_EQ(choose(headend, runs(500)).worth.value, 2U);
    headend.services[3].value = 4;
    const Choice choice = choose(headend, runs(500));
    EXPECT_EQ(choice.worth.value, 5U);
    EXPECT_EQ(choice.asked_for_all.value, 2U);
    EXPECT_TRUE(choice.asked[3] && choice.asked[4]);
    // Of two streams of one count it takes the first.
    EXPECT_EQ(choice.worth.withheld, 2U);
}

TEST(Choosing, AMustComesBeforeAnyValue) {
    Headend headend = one_input();
    for (std::size_t service = 0; service < 3; ++service)
        headend.services[service].value = 1000;
    EXPECT_EQ(choose(headend, runs(500)).worth.value, 2000U);
    headend.services[4].must = true;
    const Choice choice = choose(headend, runs(500));
    EXPECT_EQ(choice.worth.musts, 1U);
    EXPECT_EQ(choice.worth.value, 2U);
    EXPECT_EQ(choice.asked_for_all.musts, 0U);
}

TEST(Choosing, NotAskedForIsWhatHasNoValueOrIsWithheldAlready) {
    Headend headend = one_input();
    headend.modules.front().inputs = 2;
    headend.modules.front().outputs = {38000};
    headend.services[0].value = 0;
    headend.services[1].ask = false;
    headend.services[2].value = 0;
    headend.services[2].must = true;
    const Choice choice = choose(headend, runs(100));
    EXPECT_EQ(choice.asked, (std::vector<bool>{false, false, true, true, true}));
    EXPECT_EQ(choice.worth.musts, 1U);
    EXPECT_EQ(choice.worth.value, 2U);
    EXPECT_EQ(choice.worth.withheld, 0U);
}

/// A service that stands elsewhere than today counts as moved; of two placements of one value the one with
/// fewer is better.
TEST(Choosing, StaysWhereItIsIfThatCostsNothing) {
    Headend headend;
    headend.modules.push_back({"A", 3, true, 1, {38000}, 8});
    headend.modules.push_back({"B", 3, false, 1, {38000}, 8});
    // The last one fits nowhere. The stream of which more is asked for goes to the first module.
    headend.services = {service(1, 1), service(2, 1), service(3, 2), service(4, 2), service(5, 2, 90000)};
    const Choice first = choose(headend, runs(500), {{"B", "B", "A", "A", ""}, {1, 0, 1, 1, 0}});
    EXPECT_EQ(first.worth.value, 4U);
    EXPECT_EQ(first.worth.moved, 0U);
    EXPECT_EQ(first.worth.withheld, 0U);
    const Choice second = choose(headend, runs(500), {{"A", "A", "B", "B", ""}, {1, 1, 1, 0, 0}});
    EXPECT_EQ(second.asked_for_all.moved, 4U);
    EXPECT_EQ(second.worth.value, 4U);
    EXPECT_EQ(second.worth.moved, 0U);
    EXPECT_EQ(second.worth.withheld, 1U);
    EXPECT_EQ(choose(headend, runs(500), {{"A", "", "", "", ""}, {2, 1, 1, 1, 1}}).worth.moved, 1U);
    EXPECT_EQ(choose(headend, runs(1), {{"", "", "", "", "A"}, {0, 0, 0, 0, 1}}).worth.moved, 1U) << "gone";
    headend.services[4].value = 0;
    EXPECT_EQ(choose(headend, runs(1), {{"", "", "", "", "A"}, {0, 0, 0, 0, 1}}).worth.moved, 0U)
        << "never asked for";
}

TEST(Choosing, BeginsWithWhatIsAskedForToday) {
    const host::Log silence("");
    Headend headend;
    headend.modules.push_back({"A", 3, true, 1, {38000}, 8});
    headend.modules.push_back({"B", 3, false, 1, {38000}, 8});
    headend.services = {service(1, 1), service(2, 1), service(3, 2), service(4, 2), service(5, 2, 90000)};
    const StaysPut stays{{"A", "A", "B", "B", ""}, {1, 1, 1, 1, 0}, {}, {true, true, true, true, false}};
    // Nothing else is tried.
    const Choice choice = choose_services(headend, runs(1), stays, [](const auto&) { return false; });
    EXPECT_EQ(choice.asked_for_all.moved, 4U);
    EXPECT_EQ(choice.worth.value, 4U);
    EXPECT_EQ(choice.worth.moved, 0U);
    // What may not be asked for any more is not, and what is worse than everything is not begun with.
    headend.services[0].ask = false;
    EXPECT_EQ(choose(headend, runs(1), stays).worth.value, 3U);
    EXPECT_EQ(choose(headend, runs(1), {{}, {}, {}, {false, false, true, false, false}}).worth.value, 3U);
}

/// The best is found while chains run; from then on nothing may be tried any more.
TEST(Choosing, TellsWhetherAllIsGivenBack) {
    const host::Log silence("");
    Headend headend;
    headend.modules.push_back({"A", 3, true, 1, {10000}, 8});
    headend.services = {service(1, 10, 9000), service(2, 10, 3000), service(3, 10, 3000),
                        service(4, 10, 3000)};
    const auto chosen = [&headend](auto go_on) { return choose_services(headend, runs(3000), {}, go_on); };
    const Choice whole = chosen([](const ChoosingProgress&) { return true; });
    EXPECT_EQ(whole.worth.value, 3U);
    EXPECT_TRUE(whole.is_given_back);
    const Choice cut = chosen([](const ChoosingProgress& progress) { return progress.best.value < 3; });
    EXPECT_EQ(cut.worth.value, 3U);
    EXPECT_FALSE(cut.is_given_back);
    EXPECT_TRUE(chosen([](const ChoosingProgress&) { return false; }).is_given_back) << "nothing is withheld";
}

TEST(Choosing, AnotherInputIsAMove) {
    Headend headend;
    headend.modules.push_back({"A", 3, true, 2, {38000}, 8});
    headend.services = {service(1, 1), service(2, 1), service(3, 2)};
    const auto with_inputs = [&](std::vector<std::uint16_t> inputs) {
        return choose(headend, runs(500), {{"A", "A", "A"}, {1, 1, 1}, std::move(inputs)});
    };
    EXPECT_EQ(with_inputs({1, 1, 2}).asked_for_all.moved, 0U);
    EXPECT_EQ(with_inputs({2, 2, 1}).asked_for_all.moved, 3U);
    EXPECT_EQ(with_inputs({0, 2, 0}).asked_for_all.moved, 1U) << "0: any";
    EXPECT_EQ(with_inputs({}).asked_for_all.moved, 0U);
    // A third service of value 0 turns the streams round, and may be withheld.
    headend.services.push_back(service(4, 2, 90000));
    headend.services.push_back(service(5, 2, 90000));
    const Choice choice =
        choose(headend, runs(500), {{"A", "A", "A", "", ""}, {1, 1, 1, 0, 0}, {1, 1, 2, 0, 0}});
    EXPECT_EQ(choice.asked_for_all.moved, 3U);
    EXPECT_EQ(choice.worth.value, 3U);
    EXPECT_EQ(choice.worth.moved, 0U);
}

TEST(Choosing, ARunThatDoesNotEndIsNotSound) {
    const host::Log silence("");
    const Headend headend = exploding(60, 40, 10);
    const StaysPut none;
    const EngineTrial trial(headend, none);
    std::vector<bool> asked = trial.askable();
    asked[0] = false;
    host::RunLimits limits;
    limits.time = std::chrono::milliseconds(0);
    host::limit_runs(limits);
    const TrialOutcome outcome = trial.run(asked);
    const Choice choice =
        choose_services(headend, runs(200), none, [](const ChoosingProgress&) { return false; });
    host::limit_runs({});
    EXPECT_FALSE(outcome.is_sound);
    EXPECT_EQ(outcome.worth.placed, 0U);
    EXPECT_EQ(outcome.worth.withheld, 1U);
    EXPECT_EQ(std::count(outcome.placed.begin(), outcome.placed.end(), true), 0);
    EXPECT_EQ(outcome.placed.size(), headend.services.size());
    EXPECT_FALSE(choice.is_asked_for_all_sound);
    EXPECT_TRUE(trial.run(asked).worth.placed > 0) << "without the limit it ends";
}

/// The clone of a service goes with it, and so does a second service of its key.
TEST(Choosing, AServiceTakesItsClonesWithIt) {
    Headend headend = one_input();
    headend.services.push_back(service(4, 2, 1000));
    headend.services[3].value = 4;
    headend.services.back().value = 4;
    headend.clones.push_back(clone_of(headend.services[0]));
    const Choice choice = choose(headend, runs(500));
    EXPECT_EQ(choice.worth.value, 9U);
    // A clone is no service of its own.
    EXPECT_EQ(choice.worth.placed, 2U);
}

TEST(Choosing, TheWatchEndsItAndGetsTheBest) {
    const host::Log silence("");
    std::size_t calls = 0;
    ChoosingProgress last;
    const Headend headend = three_modules();
    const Choice choice = choose_services(headend, runs(0), {}, [&](const ChoosingProgress& progress) {
        last = progress;
        return ++calls < 3;
    });
    EXPECT_EQ(calls, 3U);
    EXPECT_EQ(last.states, choice.states);
    EXPECT_EQ(last.best.value, choice.worth.value);
    EXPECT_TRUE(choice.is_sound);
}

TEST(Choosing, OfNothingThereIsNothingToChoose) {
    Headend headend = one_input();
    headend.modules.front().inputs = 0;
    EXPECT_EQ(choose(headend, runs(10)).worth.placed, 0U);
    headend = one_input();
    headend.services.clear();
    EXPECT_EQ(choose(headend, runs(10)).asked.size(), 0U);
    headend = one_input();
    headend.modules.front().outputs.clear();
    EXPECT_EQ(choose(headend, runs(10)).worth.placed, 0U);
}

TEST(ChoiceWorth, IsOrderedByMustsThenValueThenMovedThenWithheld) {
    EXPECT_TRUE(is_better({1, 0, 0, 9, 9}, {0, 9, 9, 0, 0}));
    EXPECT_TRUE(is_better({1, 3, 0, 9, 9}, {1, 2, 9, 0, 0}));
    EXPECT_TRUE(is_better({1, 3, 0, 1, 9}, {1, 3, 9, 2, 0}));
    EXPECT_TRUE(is_better({1, 3, 0, 1, 1}, {1, 3, 9, 1, 2}));
    EXPECT_FALSE(is_better({1, 3, 0, 1, 1}, {1, 3, 9, 1, 1}));
}

} // namespace
} // namespace zarven::tool::choosing_test
