// The services of both results are matched, and each pair is sorted into one of the groups.

#include "placement/change/comparison.h"

#include <algorithm>
#include <map>
#include <tuple>
#include <utility>

#include "headend/mac.h"
#include "placement/change/change_order.h"

namespace zarven::tool {

/// Of what there is nothing, nothing is used up.
bool is_tight(const TightLimit& limit) {
    if (limit.max == 0)
        return false;
    const std::uint64_t percent = limit.kind == TightKind::inputs ? 100 : 95;
    return limit.used * 100 >= limit.max * percent;
}

namespace {

class Comparing {
public:
    Comparing(const Result& before, const Result& after) : before_(before), after_(after) {}

    Comparison comparison(OrderOfSteps order) && {
        comparison_.before = {before_.name, before_.counts, before_.findings, cautions_of(before_)};
        comparison_.after = {after_.name, after_.counts, after_.findings, cautions_of(after_)};
        compare_services();
        compare_modules();
        compare_limits();
        if (order == OrderOfSteps::told)
            comparison_.order = change_order(comparison_, before_, after_);
        for (const Result* result : {&after_, &before_})
            for (const ModuleResult& module : result->modules)
                if (!module.label.empty())
                    comparison_.labels.emplace(module.mac, module.label);
        return std::move(comparison_);
    }

private:
    void compare_services();
    void sort_in(const PlacedService* before, const PlacedService* after);
    void sort_in_unmoved(const ServiceResult& before, const ServiceResult& after);
    void compare_modules();
    void compare_inputs(const ModuleResult& before, const ModuleResult& after);
    void compare_limits();

    const Result& before_;
    const Result& after_;
    Comparison comparison_;
};

void Comparing::compare_services() {
    const std::vector<PlacedService> before = placed_services(before_);
    const std::vector<PlacedService> after = placed_services(after_);
    const Matches matches = match(before, after);
    for (const auto& [was, is] : matches.pairs)
        sort_in(&before[was], &after[is]);
    for (const std::size_t index : matches.only_before)
        sort_in(&before[index], nullptr);
    for (const std::size_t index : matches.only_after)
        sort_in(nullptr, &after[index]);
}

void Comparing::sort_in(const PlacedService* before, const PlacedService* after) {
    const PlacedService nowhere{{}, {}, Absence::not_there};
    const PlacedService& was = before != nullptr ? *before : nowhere;
    const PlacedService& is = after != nullptr ? *after : nowhere;
    ServiceChange change{(after != nullptr ? is : was).service, was.places, is.places, was.absence,
                         is.absence};
    if (change.before.empty() && change.after.empty())
        ++comparison_.never_placed;
    else if (before == nullptr)
        comparison_.added.push_back(std::move(change));
    else if (after == nullptr)
        comparison_.removed.push_back(std::move(change));
    else if (change.before.empty())
        comparison_.gained.push_back(std::move(change));
    else if (change.after.empty())
        comparison_.lost.push_back(std::move(change));
    else if (!is_moved(change.before, change.after))
        sort_in_unmoved(was.service, is.service);
    else
        comparison_.moved.push_back(std::move(change));
}

void Comparing::sort_in_unmoved(const ServiceResult& before, const ServiceResult& after) {
    ++comparison_.unmoved;
    const auto names_of = [](const ServiceResult& service) {
        return std::tie(service.name, service.output_name, service.lcn, service.sid);
    };
    if (names_of(before) != names_of(after))
        comparison_.renamed.push_back({before, after});
}

const ModuleResult* find_module(const Result& result, const std::string& mac) {
    const auto found = std::find_if(result.modules.begin(), result.modules.end(),
                                    [&mac](const ModuleResult& module) { return module.mac == mac; });
    return found == result.modules.end() ? nullptr : &*found;
}

void Comparing::compare_modules() {
    const auto alike = [](const std::string& mac) {
        ModuleResult module;
        module.mac = mac;
        return module;
    };
    for (const ModuleResult& module : before_.modules) {
        const ModuleResult* after = find_module(after_, module.mac);
        if (after == nullptr)
            comparison_.modules_gone.push_back(module.mac);
        compare_inputs(module, after == nullptr ? alike(module.mac) : *after);
    }
    for (const ModuleResult& module : after_.modules)
        if (find_module(before_, module.mac) == nullptr) {
            comparison_.modules_new.push_back(module.mac);
            compare_inputs(alike(module.mac), module);
        }
}

/// An input that a result does not have is one that it has not tuned.
void Comparing::compare_inputs(const ModuleResult& before, const ModuleResult& after) {
    std::map<std::uint16_t, InputChange> changes;
    for (const InputResult& input : before.inputs) {
        changes[input.number].was_tuned = input.is_tuned;
        changes[input.number].before = input.stream;
    }
    for (const InputResult& input : after.inputs) {
        changes[input.number].is_tuned = input.is_tuned;
        changes[input.number].after = input.stream;
    }
    for (auto& [number, change] : changes) {
        change.mac = before.mac;
        change.number = number;
        if (change.was_tuned && !change.is_tuned)
            comparison_.inputs_freed.push_back(change);
        else if (!change.was_tuned && change.is_tuned)
            comparison_.inputs_taken.push_back(change);
        else if (change.was_tuned && change.before != change.after)
            comparison_.inputs_retuned.push_back(change);
    }
}

/// All limits of a result, tight or not.
std::vector<TightLimit> limits_of(const Result& result) {
    std::vector<TightLimit> limits;
    for (const ModuleResult& module : result.modules) {
        const InputCounts inputs = inputs_of(module);
        limits.push_back({TightKind::inputs, module.mac, 0, inputs.used, inputs.all});
        limits.push_back({TightKind::pids, module.mac, 0, module.pids, module.pids_max});
        for (const OutputResult& output : module.outputs)
            limits.push_back(
                {TightKind::bitrate, module.mac, output.number, output.bitrate, output.bitrate_max});
    }
    return limits;
}

bool is_same(const TightLimit& one, const TightLimit& other) {
    return std::tie(one.kind, one.mac, one.output) == std::tie(other.kind, other.mac, other.output);
}

void Comparing::compare_limits() {
    const std::vector<TightLimit> before = limits_of(before_);
    const std::vector<TightLimit> after = limits_of(after_);
    const auto find = [](const std::vector<TightLimit>& all, const TightLimit& limit) {
        return std::find_if(all.begin(), all.end(),
                            [&limit](const auto& one) { return is_same(one, limit); });
    };
    for (const TightLimit& limit : after) {
        const auto earlier = find(before, limit);
        const bool was_tight = earlier != before.end() && is_tight(*earlier);
        if (is_tight(limit) && !was_tight)
            comparison_.became_tight.push_back(limit);
        if (!is_tight(limit) && was_tight)
            comparison_.relaxed.push_back(limit);
    }
}

/// The result with the MACs of its modules as the other spells them.
Result spelled_as_in(const Result& other, Result result) {
    std::map<std::string, std::string> spellings;
    for (const ModuleResult& module : other.modules)
        spellings.emplace(canonical_mac(module.mac), module.mac);
    for (ModuleResult& module : result.modules) {
        const auto spelling = spellings.find(canonical_mac(module.mac));
        if (spelling != spellings.end())
            module.mac = spelling->second;
    }
    return result;
}

} // namespace

std::string Comparison::name_of(const std::string& mac) const {
    return module_name(mac, labels);
}

Comparison compare(const Result& before, const Result& after, OrderOfSteps order) {
    const Result respelled = spelled_as_in(after, before);
    return Comparing(respelled, after).comparison(order);
}

} // namespace zarven::tool
