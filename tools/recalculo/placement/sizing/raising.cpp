#include "placement/sizing/raising.h"

#include <algorithm>
#include <limits>
#include <map>
#include <set>
#include <string>
#include <tuple>

#include <fmt/format.h>

#include "Reglas.h"
#include "headend/stream.h"
#include "placement/sizing/hardware.h"

namespace zarven::tool {

namespace {

/// What became of a limit; null for one that no test tells of.
const LimitTests* tests_of(const RaisableLimit& candidate, const ModuleTests& tests) {
    switch (candidate.kind) {
    case LimitKind::pids:
        return &tests.pids;
    case LimitKind::bitrate:
        return &tests.bitrate[candidate.output - 1];
    case LimitKind::inputs:
        return &tests.inputs;
    case LimitKind::sd_transcoders:
        return &tests.sd_transcoders;
    case LimitKind::hd_transcoders:
        return &tests.hd_transcoders;
    case LimitKind::one_more_output:
        break;
    }
    return nullptr;
}

} // namespace

/// Without those that nothing ever met: a higher one gives the same run.
void Raising::add(const RaisableLimit& candidate) {
    if (candidate.generous <= candidate.from)
        return;
    if (!tests_.empty())
        if (const LimitTests* tests = tests_of(candidate, tests_[candidate.module]);
            tests != nullptr && !tests->any_failed)
            return;
    candidates_.push_back(candidate);
}

void Raising::list() {
    candidates_.clear();
    tests_ = runner_.tests_as_it_is();
    std::uint64_t bitrate = 0;
    std::uint64_t pids = 0;
    std::size_t transcoded = 0;
    for (const Service& service : headend_.services) {
        bitrate += service.bitrate;
        pids += std::max(service.ca_pids, service.ca_pids_max);
        transcoded += reglas::ocupaTranscoder(service.transcoding) ? 1 : 0;
    }
    const std::size_t streams = streams_of(headend_.services).size();
    for (std::size_t module = 0; module < headend_.modules.size(); ++module)
        if (!kept_ || kept_->count(module) != 0)
            list(module, bitrate, pids, transcoded, streams);
}

void Raising::list(std::size_t index, std::uint64_t bitrate, std::uint64_t pids, std::size_t transcoded,
                   std::size_t streams) {
    // The engine compares loads as signed numbers in one place.
    const std::uint64_t most_bitrate = std::numeric_limits<std::int32_t>::max();
    const std::uint64_t most_others = std::numeric_limits<std::uint16_t>::max();
    const auto within = [](std::uint64_t value, std::uint64_t most) {
        return static_cast<std::uint32_t>(std::min(value, most));
    };
    const Module& module = headend_.modules[index];
    add({LimitKind::pids, index, 0, module.pids_max, within(module.pids_max + pids, most_others)});
    for (std::size_t output = 0; output < module.outputs.size(); ++output)
        add({LimitKind::bitrate, index, output + 1, module.outputs[output],
             within(reglas::techoPara(module.outputs[output] + bitrate), most_bitrate)});
    add({LimitKind::inputs, index, 0, module.inputs, within(module.inputs + streams, most_others)});
    add({LimitKind::sd_transcoders, index, 0, module.sd_transcoders,
         within(module.sd_transcoders + transcoded, most_others)});
    add({LimitKind::hd_transcoders, index, 0, module.hd_transcoders,
         within(module.hd_transcoders + transcoded, most_others)});
    // One like the largest there is: a single step, and nothing to look for.
    if (!module.outputs.empty() && module.outputs.size() < most_others) {
        const std::uint32_t largest = *std::max_element(module.outputs.begin(), module.outputs.end());
        if (largest != 0)
            add({LimitKind::one_more_output, index, module.outputs.size() + 1, largest - 1, largest});
    }
}

std::size_t Raising::limits_of(std::size_t module) const {
    return static_cast<std::size_t>(
        std::count_if(candidates_.begin(), candidates_.end(),
                      [module](const RaisableLimit& candidate) { return candidate.module == module; }));
}

void Raising::keep_modules(const std::set<std::size_t>& modules) {
    kept_ = modules;
    list();
}

void raise(Module& module, const RaisableLimit& candidate, std::uint32_t value) {
    switch (candidate.kind) {
    case LimitKind::pids:
        module.pids_max = static_cast<std::uint16_t>(value);
        break;
    case LimitKind::bitrate:
        module.outputs[candidate.output - 1] = value;
        break;
    case LimitKind::inputs:
        module.inputs = static_cast<std::uint16_t>(value);
        break;
    case LimitKind::sd_transcoders:
        module.sd_transcoders = static_cast<std::uint16_t>(value);
        break;
    case LimitKind::hd_transcoders:
        module.hd_transcoders = static_cast<std::uint16_t>(value);
        break;
    case LimitKind::one_more_output:
        module.outputs.push_back(value);
        break;
    }
}

std::string setting_of(const RaisableLimit& candidate, const Module& raised, std::uint32_t value) {
    const std::string path = fmt::format("modules[{}]", candidate.module);
    switch (candidate.kind) {
    case LimitKind::pids:
        return fmt::format("{}.pids_max={}", path, value);
    case LimitKind::bitrate:
        return fmt::format("{}.outputs[{}]={}", path, candidate.output - 1, value);
    case LimitKind::inputs:
        return fmt::format("{}.inputs={}", path, value);
    case LimitKind::sd_transcoders:
        return fmt::format("{}.sd_transcoders={}", path, value);
    case LimitKind::hd_transcoders:
        return fmt::format("{}.hd_transcoders={}", path, value);
    case LimitKind::one_more_output:
        break;
    }
    return fmt::format("{}.outputs=[{}]", path, fmt::join(raised.outputs, ", "));
}

Outcome Raising::outcome_with(const RaisableLimit& candidate, std::uint32_t value, ModuleTests* tests) {
    Module changed = headend_.modules[candidate.module];
    raise(changed, candidate, value);
    return runner_.with_module(candidate.module, changed, tests);
}

/// Between what is and what is generous, ascending.
std::vector<std::uint32_t> Raising::values_of(const RaisableLimit& candidate) const {
    std::vector<std::uint32_t> values;
    const auto add = [&](std::uint32_t value) {
        if (value > candidate.from && value < candidate.generous)
            values.push_back(value);
    };
    const std::vector<std::uint32_t>& hardware = hardware_values(candidate.kind);
    std::for_each(hardware.begin(), hardware.end(), add);
    if (!tries_all_ || candidate.kind == LimitKind::bitrate || hardware.empty())
        return values;
    for (std::uint32_t value = 1; value < hardware.back(); ++value)
        if (!is_hardware_value(candidate.kind, value))
            add(value);
    std::sort(values.begin(), values.end());
    return values;
}

/// The values of a bitrate at which the run becomes another, from what is on, as far as rehearsals tell them.
std::map<std::uint32_t, Outcome> Raising::bitrate_steps(const RaisableLimit& candidate) {
    std::map<std::uint32_t, Outcome> steps;
    if (!tries_all_ || candidate.kind != LimitKind::bitrate || tests_.empty())
        return steps;
    ModuleTests tests = tests_[candidate.module];
    std::uint64_t last = candidate.from;
    while (steps.size() < most_steps && !tests.bitrate.empty() && !runner_.is_stopped()) {
        const std::uint64_t next = tests.bitrate[candidate.output - 1].next;
        if (next <= last || next >= candidate.generous)
            break;
        tests = {};
        const auto value = static_cast<std::uint32_t>(next);
        steps.emplace(value, outcome_with(candidate, value, &tests));
        last = next;
    }
    return steps;
}

/// The generous value comes first: from what it needed on, all values give its run.
std::optional<RaisedLimit> Raising::best_value(const RaisableLimit& candidate, std::size_t placed_now) {
    ModuleTests tests;
    const Outcome generous = outcome_with(candidate, candidate.generous, &tests);
    const LimitTests* limit = tests.bitrate.empty() ? nullptr : tests_of(candidate, tests);
    std::optional<RaisedLimit> best;
    std::uint32_t too_small = candidate.from;
    const auto take = [&](std::uint32_t value, Outcome outcome) {
        const bool is_more = outcome.placed > (best ? best->placed : placed_now);
        const bool is_as_many = best && outcome.placed == best->placed;
        if (!outcome.is_broken && is_more)
            best = {value, too_small, outcome.placed};
        else if (!outcome.is_broken && is_as_many && is_hardware_value(candidate.kind, value) &&
                 !is_hardware_value(candidate.kind, best->value))
            best->value = value;
        too_small = value;
    };
    const std::map<std::uint32_t, Outcome> steps = bitrate_steps(candidate);
    std::set<std::uint32_t> values;
    for (const auto& [value, outcome] : steps)
        values.insert(value);
    for (const std::uint32_t value : values_of(candidate))
        values.insert(value);
    for (const std::uint32_t value : values) {
        if (runner_.is_stopped())
            break;
        if (const auto step = steps.find(value); step != steps.end()) {
            take(value, step->second);
            continue;
        }
        const bool same = limit != nullptr && limit->same_with(value);
        take(value, same ? generous : outcome_with(candidate, value));
    }
    take(candidate.generous, generous);
    return best;
}

/// Whether the best value of one candidate is to be preferred to that of another: for what it places, then
/// because it can be bought, then as the smaller raise, then by the place in the file.
bool Raising::is_better(std::size_t one, std::size_t other) const {
    const auto rank = [this](std::size_t index) {
        const RaisableLimit& candidate = candidates_[index];
        const RaisedLimit& best = *best_[index];
        return std::make_tuple(headend_.services.size() - best.placed,
                               is_hardware_value(candidate.kind, best.value) ? 0 : 1,
                               best.value - candidate.from, index);
    };
    return rank(one) < rank(other);
}

std::vector<std::size_t> Raising::best_of_each_kind() const {
    std::map<LimitKind, std::size_t> best;
    for (std::size_t index = 0; index < candidates_.size(); ++index) {
        if (!best_[index])
            continue;
        const auto [of_kind, is_first] = best.emplace(candidates_[index].kind, index);
        if (!is_first && is_better(index, of_kind->second))
            of_kind->second = index;
    }
    std::vector<std::size_t> chosen;
    for (const auto& [kind, index] : best)
        chosen.push_back(index);
    return chosen;
}

/// Bisects for the smallest value that places as many. One on the way that places more is better still.
Raise Raising::smallest(const RaisableLimit& candidate, RaisedLimit best) {
    const Module& module = headend_.modules[candidate.module];
    std::uint32_t enough = best.value;
    while (enough - best.too_small > 1 && !runner_.is_stopped()) {
        const std::uint32_t middle = best.too_small + (enough - best.too_small) / 2;
        const Outcome outcome = outcome_with(candidate, middle);
        if (outcome.is_broken || outcome.placed < best.placed) {
            best.too_small = middle;
            continue;
        }
        enough = middle;
        if (outcome.placed > best.placed) {
            best.placed = outcome.placed;
            best.value = middle;
        }
    }
    Raise found;
    found.kind = candidate.kind;
    found.mac = module.mac;
    found.label = module.label;
    found.output = candidate.output;
    found.from = candidate.kind == LimitKind::one_more_output ? 0 : candidate.from;
    found.to = is_hardware_value(candidate.kind, best.value) ? best.value : enough;
    found.enough = enough;
    found.placed = best.placed;
    Module raised = module;
    raise(raised, candidate, found.to);
    found.setting = setting_of(candidate, raised, found.to);
    return found;
}

/// Runs what is told. False if the engine sees it otherwise.
bool Raising::is_confirmed(const RaisableLimit& candidate, Raise& found) {
    const auto run_with = [&](std::uint32_t value) {
        Headend changed = headend_;
        raise(changed.modules[candidate.module], candidate, value);
        return runner_.run_unless_stopped(changed);
    };
    const std::optional<Result> result = run_with(found.to);
    if (!result || result->counts.placed != found.placed || has_broken(*result))
        return false;
    found.findings = result->findings.size();
    if (candidate.kind == LimitKind::one_more_output || runner_.is_stopped())
        return true;
    const auto is_enough = [&](const std::optional<Result>& outcome) {
        return outcome && outcome->counts.placed >= found.placed && !has_broken(*outcome);
    };
    return (found.enough == found.to || is_enough(run_with(found.enough))) &&
           (found.enough - 1 <= candidate.from || !is_enough(run_with(found.enough - 1)));
}

std::vector<Raise> Raising::raises(std::size_t placed_now) {
    tries_all_ =
        values_ == RaisedTo::any_value && headend_.services.size() * candidates_.size() <= small_head_end;
    best_.assign(candidates_.size(), {});
    runner_.plan(candidates_.size());
    runner_.in_parallel(candidates_.size(), [&](std::size_t index) {
        if (!runner_.is_stopped())
            best_[index] = best_value(candidates_[index], placed_now);
    });
    const std::vector<std::size_t> chosen = best_of_each_kind();
    std::vector<Raise> found(chosen.size());
    std::vector<char> are_confirmed(chosen.size());
    runner_.in_parallel(chosen.size(), [&](std::size_t index) {
        found[index] = smallest(candidates_[chosen[index]], *best_[chosen[index]]);
        are_confirmed[index] = is_confirmed(candidates_[chosen[index]], found[index]) ? 1 : 0;
    });
    if (std::count(are_confirmed.begin(), are_confirmed.end(), 0) != 0 && runner_.trusts_rehearsals()) {
        runner_.distrust_rehearsals();
        list();
        return raises(placed_now);
    }
    std::stable_sort(found.begin(), found.end(),
                     [](const Raise& one, const Raise& other) { return one.placed > other.placed; });
    return found;
}

} // namespace zarven::tool
