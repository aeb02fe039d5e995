// Choices on small head-ends of every kind: what is told is what a run of the head-end that is written gives,
// and within the bounds.

#include "placement/choosing/choice.h"

#include <algorithm>
#include <random>
#include <tuple>

#include <gtest/gtest.h>

#include "headend/headend_json.h"
#include "placement/audit/audit.h"
#include "placement/made_services.h"
#include "placement/random_headend.h"
#include "placement/running/host.h"
#include "tries.h"

namespace zarven::tool::choice_random_test {
namespace {

/// Up to three modules that are too small, services that share keys, clones, values.
Headend random_headend(unsigned seed) {
    const ModuleSizes sizes{{0, 3}, {1, 2}, {4000, 18000, 1000}, {0, 12}, {0, 2}, {0, 2}};
    Dice dice(seed);
    Headend headend;
    const unsigned modules = dice.one_of({1, 3});
    for (unsigned module = 0; module < modules; ++module)
        headend.modules.push_back(random_module(dice, letter(module), module == 0, sizes));
    const unsigned services = dice.one_of({1, 16});
    for (unsigned number = 0; number < services; ++number) {
        Service made =
            service(static_cast<std::uint16_t>(1 + (dice.once_in(10) ? dice.up_to(number) : number)),
                    dice.one_of({10, 60, 10}), dice.one_of({1000, 8000, 500}), dice.up_to(4),
                    dice.once_in(6) ? 1 : 0);
        made.sid = made.osid = static_cast<std::uint16_t>(200 + number);
        made.ca_pids_max = static_cast<std::uint16_t>(made.ca_pids + dice.up_to(2));
        made.video_format = dice.once_in(3) ? 4 : 0;
        made.value = dice.once_in(2) ? 1 : dice.once_in(6) ? most_value : dice.up_to(4);
        made.must = dice.once_in(6);
        made.ask = !dice.once_in(10);
        headend.services.push_back(made);
        if (dice.once_in(8))
            headend.clones.push_back(clone_of(made, dice.up_to(1)));
    }
    return headend;
}

/// What of the services is on an output, read off a run.
struct Outcome {
    std::vector<bool> placed;
    std::size_t musts = 0;
    std::uint64_t value = 0;
    bool is_sound = false;
};

Outcome outcome_of(const Headend& headend) {
    EngineRun run = load_engine(headend, "f");
    run_engine(run, "f");
    ServiceSet on_outputs;
    for (const auto& [mac, module] : run.engine.Mapa_ModulosCabecera_Final)
        on_outputs.merge(services_on_outputs(module));
    Outcome outcome;
    outcome.is_sound = !has_broken(run);
    for (std::size_t index = 0; index < headend.services.size(); ++index) {
        outcome.placed.push_back(on_outputs.count(run.services[index]) != 0);
        if (outcome.placed.back()) {
            outcome.musts += headend.services[index].must ? 1 : 0;
            outcome.value += headend.services[index].value;
        }
    }
    return outcome;
}

std::vector<int> sids(const std::vector<ValuedChange>& changes) {
    std::vector<int> all;
    for (const ValuedChange& change : changes)
        all.push_back(change.service.service.sid);
    return all;
}

class RandomChoices : public testing::Test {
protected:
    static bool never_asked(const Service& service) {
        return !service.ask || (service.value == 0 && !service.must);
    }

    static void expect_told_is_so(const Headend& headend, const Choice& choice, const ChoiceReport& report) {
        // What is written, read again.
        const Headend chosen = read_headend("f", write_headend(with_choice(headend, choice)));
        const Outcome all = outcome_of(headend);
        const Outcome outcome = outcome_of(chosen);
        std::vector<int> gained;
        std::vector<int> lost;
        std::size_t missed = 0;
        for (std::size_t index = 0; index < headend.services.size(); ++index) {
            const Service& service = headend.services[index];
            EXPECT_TRUE(service.ask || !choice.asked[index]);
            EXPECT_FALSE(never_asked(service) && choice.asked[index]);
            if (outcome.placed[index] && !all.placed[index])
                gained.push_back(service.sid);
            if (!outcome.placed[index] && all.placed[index])
                lost.push_back(service.sid);
            missed += service.ask && service.must && !outcome.placed[index] ? 1 : 0;
        }
        EXPECT_EQ(sids(report.gained), gained);
        EXPECT_EQ(sids(report.lost), lost);
        EXPECT_EQ(report.missed.size(), missed);
        EXPECT_EQ(report.musts.wanted, report.chosen.musts + missed);
        EXPECT_EQ(report.chosen.musts, outcome.musts);
        EXPECT_EQ(report.chosen.value, outcome.value);
        EXPECT_EQ(report.all.value, all.value);
        EXPECT_EQ(choice.worth.musts, outcome.musts);
        EXPECT_EQ(choice.worth.value, outcome.value);
        for (const MissedMust& one : report.missed)
            EXPECT_NE(one.service.reason, "");
        EXPECT_EQ(outcome.is_sound, choice.is_sound);
        if (choice.is_sound) {
            EXPECT_TRUE(broken_among(report.chosen.findings).all() == 0);
            EXPECT_LE(report.chosen.musts, report.musts.most);
            EXPECT_LE(report.chosen.value, report.value.most);
        }
    }

    /// As long as everything that it asks for may be asked for.
    static void expect_no_worse_than_all(const Headend& headend, const Choice& choice) {
        Headend askable = headend;
        for (Service& service : askable.services)
            service.ask = !never_asked(service);
        const Outcome all = outcome_of(askable);
        if (all.is_sound) {
            EXPECT_GE(std::tie(choice.worth.musts, choice.worth.value), std::tie(all.musts, all.value));
        }
    }

    /// What everything asked for comes to is not passed over: it is reached, does not count, or is told.
    static void expect_no_more_with_all_untold(const ChoiceReport& report) {
        const auto reached = [](const ChoiceSide& side) { return std::tie(side.musts, side.value); };
        const bool is_more = is_sound(report.all) &&
                             (!is_sound(report.chosen) || reached(report.all) > reached(report.chosen));
        EXPECT_EQ(is_less_than_all(report), is_more);
    }

    host::Log no_log{""};
};

TEST_F(RandomChoices, AreWhatARunGives) {
    ChoosingLimits limits;
    limits.runs = 30;
    std::size_t better = 0;
    std::size_t withheld = 0;
    std::size_t missed = 0;
    for (unsigned seed = 0; seed < tries(200) && !HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        const Headend headend = random_headend(seed);
        limits.seed = seed + 1;
        const Choice choice = choose_services(headend, limits, {}, [](const auto&) { return true; });
        const ChoiceReport report = report_of(headend, choice, nullptr, "f");
        expect_told_is_so(headend, choice, report);
        expect_no_worse_than_all(headend, choice);
        expect_no_more_with_all_untold(report);
        better += report.chosen.value > report.all.value ? 1 : 0;
        withheld += report.withheld.size();
        missed += report.missed.size();
    }
    // Nothing of this would be worth much if there were nothing to choose.
    EXPECT_GT(better, met(20));
    EXPECT_GT(withheld, met(100));
    EXPECT_GT(missed, met(50));
}

TEST_F(RandomChoices, NeverReachMoreThanTheBound) {
    std::mt19937 random(5);
    std::size_t sound = 0;
    for (unsigned seed = 1000; seed < 1000 + tries(500) && !HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        Headend headend = random_headend(seed);
        for (Service& service : headend.services)
            service.ask = true;
        const Reach musts = reach_of_musts(headend, "f");
        const Reach value = reach_of_value(headend, "f");
        for (Service& service : headend.services)
            service.ask = random() % 4 != 0;
        const Outcome outcome = outcome_of(headend);
        if (!outcome.is_sound)
            continue;
        ++sound;
        EXPECT_LE(outcome.musts, musts.most);
        EXPECT_LE(outcome.value, value.most);
    }
    EXPECT_GT(sound, met(400));
}

} // namespace
} // namespace zarven::tool::choice_random_test
