// Each result is turned into a list of its services with their places; the lists are matched, and each pair
// is sorted into one of the groups.

#include "placement/comparison.h"

#include <algorithm>
#include <map>
#include <optional>
#include <tuple>
#include <utility>

namespace zarven::tool {

static bool operator<(const Place& one, const Place& other) {
    return std::tie(one.mac, one.input, one.outputs) < std::tie(other.mac, other.input, other.outputs);
}

static bool operator==(const Place& one, const Place& other) {
    return std::tie(one.mac, one.input, one.outputs) == std::tie(other.mac, other.input, other.outputs);
}

namespace {

struct PlacedService {
    ServiceResult service;
    std::vector<Place> places;
    /// Where there are no places.
    Absence absence = Absence::neither;
};

using FullIdentity = std::tuple<std::uint16_t, std::uint16_t, std::uint16_t, std::uint16_t, std::string>;

FullIdentity full_identity_of(const ServiceResult& service) {
    return {service.stream.onid, service.stream.tsid, service.lcn, service.sid, service.name};
}

/// All services of a result but its clones, each once, in the order of stream, LCN and SID.
class ServiceList {
public:
    explicit ServiceList(const Result& result) {
        for (const ModuleResult& module : result.modules) {
            for (const InputResult& input : module.inputs)
                for (const ServiceResult& service : input.services)
                    add(service, Place{module.mac, input.number, service.outputs});
            for (const ServiceResult& service : module.without_input)
                add(service, Place{module.mac, 0, service.outputs});
        }
        for (const StreamResult& stream : result.left_out)
            for (const ServiceResult& service : stream.services)
                add(service, {}, Absence::left_out);
        for (const ServiceResult& service : result.neither)
            add(service, {});
    }

    std::vector<PlacedService> services() && {
        std::vector<PlacedService> all;
        for (auto& [identity, placed] : found_) {
            std::sort(placed.places.begin(), placed.places.end());
            all.push_back(std::move(placed));
        }
        return all;
    }

private:
    /// A place without output is none: the service is received and not sent.
    void add(const ServiceResult& service, const std::optional<Place>& place,
             Absence absence = Absence::neither) {
        if (service.is_clone)
            return;
        PlacedService& placed = found_[full_identity_of(service)];
        placed.service = service;
        if (place && !place->outputs.empty())
            placed.places.push_back(*place);
        if (absence == Absence::left_out)
            placed.absence = absence;
    }

    std::map<FullIdentity, PlacedService> found_;
};

class Comparing {
public:
    Comparing(const Result& before, const Result& after) : before_(before), after_(after) {}

    Comparison comparison() && {
        comparison_.before = {before_.name, before_.counts, before_.warnings};
        comparison_.after = {after_.name, after_.counts, after_.warnings};
        compare_services();
        compare_modules();
        compare_limits();
        return std::move(comparison_);
    }

private:
    using Services = std::vector<PlacedService>;

    void compare_services();
    template <class Key> void match(Services& before, Services& after, Key key);
    void sort_in(const PlacedService* before, const PlacedService* after);
    void compare_modules();
    void compare_inputs(const ModuleResult& before, const ModuleResult& after);
    void compare_limits();

    const Result& before_;
    const Result& after_;
    Comparison comparison_;
};

void Comparing::compare_services() {
    Services before = ServiceList(before_).services();
    Services after = ServiceList(after_).services();
    match(before, after, [](const ServiceResult& service) {
        return std::make_tuple(service.stream.onid, service.stream.tsid, service.lcn, service.sid);
    });
    match(before, after, [](const ServiceResult& service) { return service.name; });
    for (const PlacedService& service : before)
        sort_in(&service, nullptr);
    for (const PlacedService& service : after)
        sort_in(nullptr, &service);
}

/// Sorts in the pairs that have a key which neither side has twice, and leaves the others.
template <class Key> void Comparing::match(Services& before, Services& after, Key key) {
    using Found = std::map<decltype(key(ServiceResult())), Services>;
    Found in_before;
    Found in_after;
    for (PlacedService& service : before)
        in_before[key(service.service)].push_back(std::move(service));
    for (PlacedService& service : after)
        in_after[key(service.service)].push_back(std::move(service));
    before.clear();
    after.clear();
    const auto keep = [](Services& left, const Services& services) {
        left.insert(left.end(), services.begin(), services.end());
    };
    for (const auto& [with_key, services] : in_before) {
        const auto others = in_after.find(with_key);
        if (others == in_after.end() || services.size() != 1 || others->second.size() != 1) {
            keep(before, services);
            continue;
        }
        sort_in(&services.front(), &others->second.front());
        in_after.erase(others);
    }
    for (const auto& [with_key, services] : in_after)
        keep(after, services);
}

void Comparing::sort_in(const PlacedService* before, const PlacedService* after) {
    const PlacedService nowhere{{}, {}, Absence::not_there};
    const PlacedService& was = before != nullptr ? *before : nowhere;
    const PlacedService& is = after != nullptr ? *after : nowhere;
    ServiceChange change{(after != nullptr ? is : was).service, was.places, is.places, was.absence,
                         is.absence};
    if (change.before.empty() && change.after.empty())
        ++comparison_.never_placed;
    else if (change.before.empty())
        comparison_.gained.push_back(std::move(change));
    else if (change.after.empty())
        comparison_.lost.push_back(std::move(change));
    else if (change.before == change.after)
        ++comparison_.unmoved;
    else
        comparison_.moved.push_back(std::move(change));
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
        limits.push_back({TightKind::inputs, module.mac, 0, inputs.tuned, inputs.all});
        limits.push_back({TightKind::pids, module.mac, 0, module.pids, module.pids_max});
        for (const OutputResult& output : module.outputs)
            limits.push_back(
                {TightKind::bitrate, module.mac, output.number, output.bitrate, output.bitrate_max});
    }
    return limits;
}

/// Of what there is nothing, nothing is used up.
bool is_tight(const TightLimit& limit) {
    if (limit.max == 0)
        return false;
    const std::uint64_t percent = limit.kind == TightKind::inputs ? 100 : 95;
    return limit.used * 100 >= limit.max * percent;
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

} // namespace

const char* to_string(Absence absence) {
    switch (absence) {
    case Absence::left_out:
        return "left out";
    case Absence::neither:
        return "neither";
    case Absence::not_there:
        break;
    }
    return "not there";
}

Comparison compare(const Result& before, const Result& after) {
    return Comparing(before, after).comparison();
}

} // namespace zarven::tool
