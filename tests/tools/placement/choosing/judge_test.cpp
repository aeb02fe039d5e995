// The quick judgement of a choice beside that of the engine.

#include "placement/choosing/judge.h"

#include <algorithm>
#include <random>

#include <gtest/gtest.h>

#include "placement/choosing/chain.h"
#include "placement/engine_by_hand.h"
#include "placement/rehearsal/rehearsal.h"
#include "placement/running/host.h"
#include "tries.h"

namespace zarven::tool::judge_test {
namespace {

/// Of services that are too many for it, some with values, some that must be placed.
Headend crowded(std::mt19937& numbers, std::size_t modules) {
    const auto below = [&numbers](unsigned end) { return static_cast<unsigned>(numbers() % end); };
    Headend headend;
    for (std::size_t index = 0; index < modules; ++index) {
        Module module;
        module.mac = std::string(1, static_cast<char>('A' + index));
        module.controller = index == 0;
        module.inputs = static_cast<std::uint16_t>(1 + below(3));
        for (unsigned left = 1 + below(3); left != 0; --left)
            module.outputs.push_back(6000 + below(20000));
        module.pids_max = static_cast<std::uint16_t>(2 + below(8));
        module.sd_transcoders = static_cast<std::uint16_t>(below(3));
        headend.modules.push_back(std::move(module));
    }
    std::uint16_t lcn = 1;
    for (std::uint16_t tsid = 1; tsid <= 3 * modules; ++tsid)
        for (unsigned left = 1 + below(6); left != 0; --left, ++lcn) {
            headend.services.push_back(
                service(lcn, tsid, 1000 + below(6000), static_cast<std::uint16_t>(below(3))));
            headend.services.back().value = static_cast<std::uint16_t>(below(4));
            headend.services.back().must = below(9) == 0;
            headend.services.back().transcoding = below(6) == 0 ? 1 : 0;
        }
    return headend;
}

struct Judging {
    explicit Judging(const Headend& headend, const StaysPut& stays = {})
        : stays_(stays), trial(headend, stays_), loaded(trial.load(trial.askable())), model(loaded),
          goal(trial.headend(), stays_, model, trial.numbers_of(model.services, loaded), trial.groups()),
          judge(trial, model, goal) {}

    const StaysPut stays_;
    const EngineTrial trial;
    const EngineRun loaded;
    const RehearsedHeadend model;
    const Goal goal;
    Judge judge;
};

void expect_same(const TrialOutcome& one, const TrialOutcome& other) {
    EXPECT_EQ(one.is_sound, other.is_sound);
    EXPECT_EQ(one.placed, other.placed);
    EXPECT_EQ(one.worth.musts, other.worth.musts);
    EXPECT_EQ(one.worth.value, other.worth.value);
    EXPECT_EQ(one.worth.placed, other.worth.placed);
    EXPECT_EQ(one.worth.moved, other.worth.moved);
    EXPECT_EQ(one.worth.withheld, other.worth.withheld);
}

std::vector<bool> part_of(const EngineTrial& trial, std::mt19937& numbers) {
    std::vector<bool> asked = trial.askable();
    const auto share = numbers() % 100;
    for (std::size_t service = 0; service < asked.size(); ++service)
        asked[service] = asked[service] && numbers() % 100 >= share;
    return asked;
}

TEST(JudgeOfChoices, TellsWhatTheEngineMakesOfAChoice) {
    const host::Log silence("");
    std::mt19937 numbers(11);
    std::uint64_t engine_runs = 0;
    std::size_t trials = 0;
    std::size_t broken = 0;
    for (unsigned seed = 0; seed < 60; ++seed) {
        const Headend headend = crowded(numbers, 1 + seed % 6);
        StaysPut stays;
        if (seed % 2 == 0)
            for (std::size_t service = 0; service < headend.services.size(); ++service) {
                const std::size_t module = service % 3 % headend.modules.size();
                stays.module.push_back(service % 5 == 0 ? "" : headend.modules[module].mac);
                stays.output.push_back(static_cast<std::uint32_t>(service % 2));
                stays.input.push_back(static_cast<std::uint16_t>(service % 3));
            }
        Judging judging(headend, stays);
        for (int trial = 0; trial < 20; ++trial, ++trials) {
            const std::vector<bool> asked = part_of(judging.trial, numbers);
            const TrialOutcome engine = judging.trial.run(asked);
            expect_same(judging.judge.run(asked), engine);
            ASSERT_FALSE(testing::Test::HasFailure()) << "head-end " << seed;
            broken += engine.is_sound ? 0 : 1;
            EXPECT_FALSE(judging.judge.run(asked, &engine.worth).is_sound) << "not better than the bar";
            EXPECT_EQ(judging.judge.run_confirmed(asked, {}).is_sound,
                      engine.is_sound && is_better(engine.worth, ChoiceWorth{}));
        }
        engine_runs += judging.judge.take_engine_runs();
    }
    EXPECT_GT(broken, 5U);
    // One of each trial is the one that confirms.
    EXPECT_LT(engine_runs, trials + trials / 4);
}

/// Where the place of a second service of a key decides, the engine is asked.
TEST(JudgeOfChoices, AsksTheEngineWhereClonesDecide) {
    const host::Log silence("");
    Headend headend = two_modules();
    headend.services = {service(1, 1), service(1, 1), service(2, 2)};
    Judging judging(headend);
    const std::vector<bool> asked(3, true);
    expect_same(judging.judge.run(asked), judging.trial.run(asked));
    EXPECT_EQ(judging.judge.take_engine_runs(), 1U);
    headend.services[1].lcn = 3;
    Judging without(headend);
    expect_same(without.judge.run(asked), without.trial.run(asked));
    EXPECT_EQ(without.judge.take_engine_runs(), 0U);
}

/// Of head-ends so small that every choice can be judged.
TEST(JudgeOfChoices, FindsNoBetterChoiceThanTheSearch) {
    const host::Log silence("");
    std::mt19937 numbers(12);
    std::size_t reached = 0;
    std::size_t gained = 0;
    for (unsigned seed = 0; seed < 12; ++seed) {
        Headend headend = crowded(numbers, 2);
        headend.services.resize(std::min<std::size_t>(headend.services.size(), 10));
        Judging judging(headend);
        ChoiceWorth best;
        for (unsigned choice = 0; choice < 1U << headend.services.size(); ++choice) {
            std::vector<bool> asked = judging.trial.askable();
            for (std::size_t service = 0; service < asked.size(); ++service)
                asked[service] = asked[service] && (choice >> service & 1U) != 0;
            const TrialOutcome outcome = judging.judge.run(asked, &best);
            if (outcome.is_sound) {
                best = outcome.worth;
                expect_same(outcome, judging.trial.run(asked, nullptr));
            }
        }
        const ChoosingLimits limits{std::chrono::hours(1), 2000, 1, 1};
        const Choice found =
            choose_services(headend, limits, {}, [](const ChoosingProgress&) { return true; });
        EXPECT_FALSE(is_better(found.worth, best)) << "head-end " << seed;
        reached += found.worth.musts == best.musts && found.worth.value == best.value ? 1 : 0;
        gained += is_better(found.worth, found.asked_for_all) ? 1 : 0;
    }
    // A must that takes the place of several others may take longer.
    EXPECT_GE(reached, 11U);
    EXPECT_GT(gained, 3U);
}

/// Where a rehearsal gives up, the chain does not know where anything stands.
TEST(JudgeOfChoices, AChainGoesOnWhereARehearsalGivesUp) {
    const host::Log silence("");
    std::mt19937 numbers(13);
    std::size_t given_up = 0;
    for (unsigned seed = 0; seed < tries(200); ++seed) {
        const Judging judging(crowded(numbers, 6));
        for (const reglas::Estrategia& strategy : reglas::ESTRATEGIAS) {
            Rehearsal rehearsal(judging.model);
            const AskedParts all(judging.model);
            if (rehearsal.run(all, strategy))
                continue;
            ++given_up;
            for (PartIndex part = 0; part < judging.model.parts.size(); ++part)
                EXPECT_FALSE(rehearsal.seating().is_placed(part));
            Chain chain(judging.model, judging.goal, strategy, Scope::whole_pass, seed);
            chain.begin(all.flags(), 100);
            EXPECT_EQ(chain.best().placed, PartFlags(judging.model.parts.size(), 0));
            EXPECT_EQ(chain.best().worth.value, 0U);
            EXPECT_EQ(chain.run(100), 100U);
            for (PartIndex part = 0; part < judging.model.parts.size(); ++part)
                EXPECT_LE(chain.best().placed[part], chain.best().asked[part]);
        }
    }
    EXPECT_GT(given_up, met(10));
}

} // namespace
} // namespace zarven::tool::judge_test
