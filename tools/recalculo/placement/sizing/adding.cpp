#include "placement/sizing/adding.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "placement/bound.h"
#include "placement/sizing/further_modules.h"

namespace zarven::tool {

Adding::Adding(const Headend& headend, const Module& kind, const Wanted& wanted, const SizingOptions& options)
    : headend_(headend), wanted_(wanted), most_(options.most), jobs_(options.jobs) {
    addition_.kind = kind;
    addition_.musts = wanted.musts();
    addition_.impossible = wanted.impossible();
}

/// Bisects, because what cannot be done with a number of modules cannot be done with fewer. Without shortages
/// some number is enough for the bound.
void Adding::find_least() {
    std::size_t too_few = 0;
    if (!wanted_.are_too_few({too_few}))
        return;
    std::size_t enough = 1;
    while (wanted_.are_too_few({enough})) {
        too_few = enough;
        enough *= 2;
    }
    while (enough - too_few > 1) {
        const std::size_t middle = too_few + (enough - too_few) / 2;
        (wanted_.are_too_few({middle}) ? too_few : enough) = middle;
    }
    addition_.at_least = enough;
}

/// With enough modules each limit that they raise is out of the way, and those that they do not raise stay as
/// they are. Compared are one module and two: none would leave out services that only the kind can take, and
/// so tell of others.
void Adding::find_shortages() {
    const Bound with_one = wanted_.limits_with({1});
    const Bound with_two = wanted_.limits_with({2});
    for (const BoundKind& kind : bound_kinds) {
        const BoundLimit& limit = with_one.*kind.member;
        if (limit.allows < wanted_.number() && limit.capacity == (with_two.*kind.member).capacity)
            addition_.shortages.push_back({kind.member, limit});
    }
}

/// Notes an attempt. True if it suffices.
bool Adding::take(std::size_t number, const SizingTrial& trial) {
    const Attempt attempt = wanted_.attempt_of(number, trial);
    const bool is_best = addition_.attempts.empty() || attempt.missing < least_missing_;
    addition_.attempts.push_back(attempt);
    if (suffices(attempt)) {
        addition_.number = number;
        addition_.withheld = trial.withheld;
        addition_.remaining.clear();
        return true;
    }
    if (is_best) {
        least_missing_ = attempt.missing;
        addition_.remaining = wanted_.missing_in(trial);
    }
    return false;
}

/// In waves of as many numbers as there are threads; of a wave, those after the first that suffices are
/// forgotten, so that the answer does not depend on the threads. But for one: whoever buys a module to spare
/// is to know what the engine makes of it.
void Adding::search(Runner& runner) {
    for (std::size_t first = addition_.at_least; first <= most_ && !runner.is_stopped();) {
        const std::size_t size = std::min(std::size_t{jobs_}, most_ - first + 1);
        std::vector<std::optional<SizingTrial>> wave(size);
        runner.plan(size);
        runner.in_parallel(size, [&](std::size_t part) {
            if (!runner.is_stopped())
                wave[part] = runner.trial(with_modules(headend_, addition_.kind, first + part));
        });
        for (const std::optional<SizingTrial>& trial : wave) {
            if (!trial)
                return;
            if (take(first++, *trial)) {
                if (const auto next = runner.trial(with_modules(headend_, addition_.kind, first)))
                    addition_.one_more = wanted_.attempt_of(first, *next);
                return;
            }
        }
    }
}

Addition Adding::addition(Runner& runner, const Result& now) && {
    const SizingTrial as_it_is{now, {}};
    if (suffices(wanted_.attempt_of(0, as_it_is))) {
        take(0, as_it_is);
        return std::move(addition_);
    }
    find_shortages();
    if (addition_.shortages.empty())
        find_least();
    else
        addition_.at_least = most_ + 1;
    if (addition_.at_least > most_)
        addition_.remaining = wanted_.missing_in(as_it_is);
    else
        search(runner);
    return std::move(addition_);
}

} // namespace zarven::tool
