#include "placement/sizing/raising.h"

#include <algorithm>
#include <limits>
#include <map>
#include <set>
#include <string>

#include <fmt/format.h>

#include "Reglas.h"
#include "headend/stream.h"

namespace zarven::tool {

void Raising::list() {
    std::uint64_t bitrate = 0;
    std::uint64_t pids = 0;
    std::size_t transcoded = 0;
    std::set<Stream> streams;
    for (const Service& service : headend_.services) {
        bitrate += service.bitrate;
        pids += std::max(service.ca_pids, service.ca_pids_max);
        transcoded += reglas::ocupaTranscoder(service.transcoding) ? 1 : 0;
        streams.insert({service.onid, service.tsid});
    }
    for (std::size_t module = 0; module < headend_.modules.size(); ++module)
        list(module, bitrate, pids, transcoded, streams.size());
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
    const auto is_kept = [&modules](const RaisableLimit& candidate) {
        return modules.count(candidate.module) != 0;
    };
    candidates_.erase(std::stable_partition(candidates_.begin(), candidates_.end(), is_kept),
                      candidates_.end());
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

RaiseOutcome Raising::outcome_with(const RaisableLimit& candidate, std::uint32_t value) {
    Headend changed = headend_;
    raise(changed.modules[candidate.module], candidate, value);
    const Result result = runner_.run(changed);
    return {result.counts.placed, result.findings.size(), broken_in(result).all()};
}

/// Bisects between what is and what is generous for the smallest value that places as many.
Raise Raising::smallest(const RaisableLimit& candidate, RaiseOutcome generous) {
    const Module& module = headend_.modules[candidate.module];
    Raise found;
    found.kind = candidate.kind;
    found.mac = module.mac;
    found.label = module.label;
    found.output = candidate.output;
    found.from = candidate.from;
    found.to = candidate.generous;
    RaiseOutcome outcome = generous;
    std::uint32_t too_small = candidate.from;
    while (found.to - too_small > 1) {
        const std::uint32_t middle = too_small + (found.to - too_small) / 2;
        const RaiseOutcome with_middle = outcome_with(candidate, middle);
        if (with_middle.placed >= generous.placed) {
            found.to = middle;
            outcome = with_middle;
        } else {
            too_small = middle;
        }
    }
    found.placed = outcome.placed;
    found.findings = outcome.findings;
    found.broken = outcome.broken;
    Module raised = module;
    raise(raised, candidate, found.to);
    found.setting = setting_of(candidate, raised, found.to);
    if (candidate.kind == LimitKind::one_more_output)
        found.from = 0;
    return found;
}

std::vector<Raise> Raising::raises(std::size_t placed_now) {
    std::vector<RaiseOutcome> outcomes(candidates_.size());
    runner_.plan(candidates_.size());
    runner_.in_parallel(candidates_.size(), [&](std::size_t index) {
        outcomes[index] = outcome_with(candidates_[index], candidates_[index].generous);
    });
    std::map<LimitKind, std::size_t> best;
    for (std::size_t index = 0; index < candidates_.size(); ++index) {
        if (outcomes[index].placed <= placed_now)
            continue;
        const auto [of_kind, is_first] = best.emplace(candidates_[index].kind, index);
        if (!is_first && outcomes[index].placed > outcomes[of_kind->second].placed)
            of_kind->second = index;
    }
    std::vector<std::size_t> chosen;
    for (const auto& [kind, index] : best)
        chosen.push_back(index);
    std::vector<Raise> found(chosen.size());
    runner_.in_parallel(chosen.size(), [&](std::size_t index) {
        found[index] = smallest(candidates_[chosen[index]], outcomes[chosen[index]]);
    });
    std::stable_sort(found.begin(), found.end(),
                     [](const Raise& one, const Raise& other) { return one.placed > other.placed; });
    return found;
}

} // namespace zarven::tool
