#include "placement/places.h"

#include <algorithm>
#include <map>
#include <numeric>
#include <tuple>

namespace zarven::tool {

namespace {

auto key_of(const Place& place) {
    return std::tie(place.mac, place.input, place.outputs);
}

using FullIdentity = std::pair<ServiceNumbers, std::string>;

FullIdentity full_identity_of(const ServiceResult& service) {
    return {numbers_of(service), service.name};
}

class ServiceList {
public:
    explicit ServiceList(const Result& result) {
        for (const ModuleResult& module : result.modules) {
            for (const InputResult& input : module.inputs)
                for (const ServiceResult& service : input.services)
                    add(service, {module.mac, input.number, service.outputs}, service.stream == input.stream);
            for (const ServiceResult& service : module.without_input)
                add(service, {module.mac, 0, service.outputs}, false);
        }
        for (const StreamResult& stream : result.left_out)
            for (const ServiceResult& service : stream.services)
                if (Found* found = find(service))
                    found->service.absence = Absence::left_out;
        for (const ServiceResult& service : result.neither)
            find(service);
    }

    std::vector<PlacedService> services() && {
        std::vector<PlacedService> all;
        for (auto& [identity, found] : found_) {
            auto& places = found.service.places;
            if (!found.is_received)
                places.clear();
            std::sort(places.begin(), places.end(),
                      [](const Place& one, const Place& other) { return key_of(one) < key_of(other); });
            all.push_back(std::move(found.service));
        }
        return all;
    }

private:
    struct Found {
        PlacedService service;
        /// In one of its places at least.
        bool is_received = false;
    };

    /// Null for a clone.
    Found* find(const ServiceResult& service) {
        if (service.is_clone)
            return nullptr;
        Found& found = found_[full_identity_of(service)];
        found.service.service = service;
        return &found;
    }

    /// A place without output is none: the service is received and not sent.
    void add(const ServiceResult& service, Place place, bool is_received) {
        Found* found = find(service);
        if (found == nullptr || place.outputs.empty())
            return;
        found->service.places.push_back(std::move(place));
        found->is_received = found->is_received || is_received;
    }

    std::map<FullIdentity, Found> found_;
};

class Matching {
public:
    using Services = std::vector<PlacedService>;

    Matching(const Services& before, const Services& after) : before_(before), after_(after) {
        matches_.only_before.resize(before.size());
        matches_.only_after.resize(after.size());
        std::iota(matches_.only_before.begin(), matches_.only_before.end(), std::size_t{0});
        std::iota(matches_.only_after.begin(), matches_.only_after.end(), std::size_t{0});
    }

    /// Pairs those that have a key which neither side has twice, and leaves the others.
    template <class Key> void match_by(Key key) {
        using Found = std::map<decltype(key(ServiceResult())), std::vector<std::size_t>>;
        Found in_before;
        Found in_after;
        for (const std::size_t index : matches_.only_before)
            in_before[key(before_[index].service)].push_back(index);
        for (const std::size_t index : matches_.only_after)
            in_after[key(after_[index].service)].push_back(index);
        matches_.only_before.clear();
        matches_.only_after.clear();
        const auto keep = [](std::vector<std::size_t>& left, const std::vector<std::size_t>& indices) {
            left.insert(left.end(), indices.begin(), indices.end());
        };
        for (const auto& [with_key, indices] : in_before) {
            const auto others = in_after.find(with_key);
            if (others == in_after.end() || indices.size() != 1 || others->second.size() != 1) {
                keep(matches_.only_before, indices);
                continue;
            }
            matches_.pairs.emplace_back(indices.front(), others->second.front());
            in_after.erase(others);
        }
        for (const auto& [with_key, indices] : in_after)
            keep(matches_.only_after, indices);
    }

    Matches matches() && { return std::move(matches_); }

private:
    const Services& before_;
    const Services& after_;
    Matches matches_;
};

} // namespace

std::string module_name(const std::string& mac, const Labels& labels) {
    const auto label = labels.find(mac);
    return module_name(mac, label == labels.end() ? "" : label->second);
}

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

std::vector<PlacedService> placed_services(const Result& result) {
    return ServiceList(result).services();
}

ServiceNumbers numbers_of(const Service& service) {
    return {stream_of(service), service.lcn, service.sid};
}

ServiceNumbers numbers_of(const ServiceResult& service) {
    return {service.stream, service.lcn, service.sid};
}

bool is_moved(const std::vector<Place>& before, const std::vector<Place>& after) {
    return !std::equal(before.begin(), before.end(), after.begin(), after.end(),
                       [](const Place& one, const Place& other) { return key_of(one) == key_of(other); });
}

Matches match(const std::vector<PlacedService>& before, const std::vector<PlacedService>& after) {
    Matching matching(before, after);
    matching.match_by([](const ServiceResult& service) { return numbers_of(service); });
    matching.match_by([](const ServiceResult& service) { return service.name; });
    return std::move(matching).matches();
}

} // namespace zarven::tool
