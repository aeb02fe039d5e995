#include "placement/sizing/advising.h"

#include <algorithm>
#include <map>
#include <numeric>
#include <set>
#include <vector>

#include "base/failure.h"
#include "base/workers.h"
#include "placement/sizing/raising.h"
#include "placement/sizing/runner.h"

namespace zarven::tool {

namespace {

constexpr std::size_t most_automatic_trials = 200;
/// Services placed in all of the runs.
constexpr std::size_t services_in_all = 200000;
/// As services times modules squared: up to so much, rehearsals of all values take some hundredths of a
/// second.
constexpr std::size_t small_head_end = 10000;

/// The modules by the number of services that they are nearest to taking; among equals as in the head-end.
std::vector<std::size_t> by_need(const Headend& headend, const Result& now) {
    std::map<std::string, std::size_t> needs;
    for (const StreamResult& stream : now.left_out)
        for (const ServiceResult& service : stream.services)
            ++needs[service.nearest];
    std::vector<std::size_t> modules(headend.modules.size());
    std::iota(modules.begin(), modules.end(), 0);
    std::stable_sort(modules.begin(), modules.end(), [&](std::size_t one, std::size_t other) {
        return needs[headend.modules[one].mac] > needs[headend.modules[other].mac];
    });
    return modules;
}

} // namespace

std::size_t automatic_trials_for(std::size_t services) {
    return std::min(most_automatic_trials, services_in_all / std::max<std::size_t>(services, 1));
}

Advice advice_for(const Headend& headend, const std::string& file, const Result& now, std::uint32_t trials) {
    Advice advice;
    if (trials == 0 || now.counts.placed >= now.counts.loaded)
        return advice;
    const std::size_t most =
        trials == automatic_trials ? automatic_trials_for(headend.services.size()) : trials;
    SizingOptions options;
    options.jobs = cores();
    Runner runner(headend, file, options);
    const bool tries_all =
        trials == automatic_trials && runner.trusts_rehearsals() &&
        headend.services.size() * headend.modules.size() * headend.modules.size() <= small_head_end;
    Raising raising(headend, runner, tries_all ? RaisedTo::any_value : RaisedTo::sold_value);
    advice.limits = raising.limits();
    std::set<std::size_t> modules;
    std::size_t limits = 0;
    for (const std::size_t module : by_need(headend, now)) {
        limits += raising.limits_of(module);
        // The other half is for making the best of them small.
        if (limits > most / 2)
            break;
        modules.insert(module);
    }
    raising.keep_modules(modules);
    advice.limits_tried = raising.limits();
    // A report is not to fail for the sake of its advice.
    try {
        advice.raises = raising.raises(now.counts.placed);
    } catch (const Failure&) {
        advice.limits_tried = 0;
    }
    return advice;
}

} // namespace zarven::tool
