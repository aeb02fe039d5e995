#include "wishes/wishing.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

#include "headend/receptions.h"
#include "lineup/stream_ids.h"

namespace zarven::tool {

namespace {

class Finding {
public:
    Finding(const std::vector<Service>& services, const std::vector<Reception>& streams)
        : services_(services), names_(services), receptions_(by_stream(streams)) {
        for (std::size_t service = 0; service < services.size(); ++service) {
            by_sid_[services[service].osid].push_back(service);
            by_lcn_[services[service].lcn].push_back(service);
        }
    }

    std::optional<MetWish> find(const Wish& wish) const {
        if (wish.ids)
            if (auto met = find_by_ids(*wish.ids))
                return met;
        if (!wish.name.empty())
            if (auto met = find_by_name(wish))
                return met;
        const auto found = by_lcn_.find(wish.lcn.value_or(0));
        // A list of names tells an LCN in the place of a name; elsewhere a name comes before an LCN.
        const bool is_by_lcn = wish.lcn && (wish.name.empty() || wish.name == std::to_string(*wish.lcn));
        if (!is_by_lcn || wish.ids || found == by_lcn_.end())
            return {};
        return first_of(found->second, Likeness::exact);
    }

private:
    static MetWish first_of(const std::vector<std::size_t>& places, Likeness likeness) {
        MetWish met;
        met.service = places.front();
        met.likeness = likeness;
        met.others.assign(places.begin() + 1, places.end());
        return met;
    }

    bool is_on_another_satellite(const Service& service, const std::string& satellite) const {
        const std::string& own = reception_of(stream_of(service), receptions_).satellite;
        return !own.empty() && !satellite.empty() && own != satellite;
    }

    std::optional<MetWish> find_by_ids(const WishedIds& ids) const {
        std::vector<std::size_t> exact;
        std::vector<std::size_t> of_made_up;
        const auto found = by_sid_.find(ids.sid);
        if (found == by_sid_.end())
            return {};
        for (const std::size_t place : found->second) {
            const Service& service = services_[place];
            if (is_on_another_satellite(service, ids.satellite))
                continue;
            const bool is_same_network = !ids.onid || *ids.onid == service.onid || service.onid == 0;
            if (is_same_network && service.tsid == ids.tsid)
                exact.push_back(place);
            else if (is_same_network &&
                     is_made_up(service.tsid, reception_of(stream_of(service), receptions_)))
                of_made_up.push_back(place);
        }
        if (!exact.empty())
            return first_of(exact, Likeness::exact);
        if (of_made_up.size() != 1)
            return {};
        return first_of(of_made_up, Likeness::other_tsid);
    }

    /// Of several the one with the LCN of the list, else the first in the head-end.
    std::optional<MetWish> find_by_name(const Wish& wish) const {
        ServiceNames::Found found = names_.find(wish.name);
        if (found.services.empty() || (!found.is_exact && wish.lcn && wish.name == std::to_string(*wish.lcn)))
            return {};
        const auto with_lcn =
            std::find_if(found.services.begin(), found.services.end(), [&](std::size_t service) {
                return wish.lcn && services_[service].lcn == *wish.lcn;
            });
        if (with_lcn != found.services.end())
            found.services = {*with_lcn};
        return first_of(found.services, found.is_exact ? Likeness::exact : Likeness::like);
    }

    const std::vector<Service>& services_;
    ServiceNames names_;
    const Receptions receptions_;
    std::map<std::uint16_t, std::vector<std::size_t>> by_sid_;
    std::map<std::uint16_t, std::vector<std::size_t>> by_lcn_;
};

} // namespace

Wishing find_wishes(const std::vector<WishList>& lists, const std::vector<Service>& services,
                    const std::vector<Reception>& streams) {
    const Finding finding(services, streams);
    Wishing wishing;
    std::set<std::size_t> taken;
    for (std::size_t list = 0; list < lists.size(); ++list)
        for (std::size_t wish = 0; wish < lists[list].wishes.size(); ++wish) {
            std::optional<MetWish> met = finding.find(lists[list].wishes[wish]);
            if (!met) {
                wishing.missing.push_back({list, wish});
                continue;
            }
            met->wish = {list, wish};
            if (!taken.insert(met->service).second) {
                wishing.repeated.push_back(std::move(*met));
                continue;
            }
            if (!services[met->service].ask)
                wishing.withheld.push_back(*met);
            wishing.met.push_back(std::move(*met));
        }
    return wishing;
}

void ask_for_met(const Wishing& wishing, std::vector<Service>& services) {
    std::vector<bool> is_met(services.size(), false);
    for (const MetWish& met : wishing.met)
        is_met[met.service] = true;
    for (std::size_t service = 0; service < services.size(); ++service)
        services[service].ask = services[service].ask && is_met[service];
}

void value_wishes(const std::vector<WishList>& lists, const Wishing& wishing,
                  std::vector<Service>& services) {
    // Places in the order of priority: a one-of group has the place of its first service.
    std::vector<std::size_t> places;
    std::map<std::string, std::size_t> groups;
    std::size_t number = 0;
    for (const MetWish& met : wishing.met) {
        const Wish& wish = lists[met.wish.list].wishes[met.wish.wish];
        Service& service = services[met.service];
        if (!wish.output_name.empty())
            service.output_name = wish.output_name;
        if (!wish.group.empty())
            service.group = wish.group;
        if (!wish.one_of.empty())
            service.one_of = wish.one_of;
        service.must = wish.must.value_or(service.must);
        if (service.one_of.empty()) {
            places.push_back(number++);
            continue;
        }
        const auto [group, is_new] = groups.emplace(service.one_of, number);
        number += is_new ? 1 : 0;
        places.push_back(group->second);
    }
    for (std::size_t index = 0; index < wishing.met.size(); ++index) {
        const MetWish& met = wishing.met[index];
        Service& service = services[met.service];
        const std::size_t by_place =
            number <= most_value ? number - places[index] : most_value - places[index] * most_value / number;
        service.value =
            lists[met.wish.list].wishes[met.wish.wish].value.value_or(static_cast<std::uint16_t>(by_place));
        service.wished_as = index + 1;
    }
}

} // namespace zarven::tool
