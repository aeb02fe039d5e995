#include "placement/choosing/choosing.h"

#include <algorithm>
#include <random>
#include <tuple>

#include "placement/choosing/engine_trial.h"

namespace zarven::tool {

bool is_better(const ChoiceWorth& one, const ChoiceWorth& other) {
    return std::tie(one.musts, one.value, other.moved, other.withheld) >
           std::tie(other.musts, other.value, one.moved, one.withheld);
}

Choice choose_services(const Headend& headend, const ChoosingLimits& limits, const StaysPut& stays,
                       const ChoosingWatch& watch) {
    using Clock = std::chrono::steady_clock;
    const Clock::time_point start = Clock::now();
    const EngineTrial trial(headend, stays);
    TrialOutcome best = trial.run(trial.askable());
    Choice choice;
    choice.asked = trial.askable();
    choice.asked_for_all = best.worth;
    choice.engine_runs = 1;
    std::mt19937_64 numbers(limits.seed);
    for (;; ++choice.states) {
        const auto elapsed = std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - start);
        if ((limits.runs != 0 && choice.states >= limits.runs) || elapsed >= limits.time ||
            !watch({best.worth, choice.states, choice.engine_runs, elapsed}))
            break;
        std::vector<bool> asked = choice.asked;
        for (auto changes = numbers() % 3 + 1; changes != 0; --changes) {
            const std::size_t service = numbers() % std::max(asked.size(), std::size_t{1});
            if (service < asked.size() && trial.askable()[service])
                asked[service] = !asked[service];
        }
        TrialOutcome tried = trial.run(asked);
        ++choice.engine_runs;
        if (!tried.is_sound || (best.is_sound && is_better(best.worth, tried.worth)))
            continue;
        best = std::move(tried);
        choice.asked = std::move(asked);
    }
    choice.worth = best.worth;
    choice.is_sound = best.is_sound;
    return choice;
}

} // namespace zarven::tool
