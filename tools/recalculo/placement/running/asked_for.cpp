// A clone is loaded under the key of a service of its stream, which is its parent unless the clone names
// another by its OSID. A PID belongs to the first clone with its SID, and without one to the first service.
// Where a key stands twice, the later service is a clone; with the earlier one withheld it is an ordinary
// service.

#include "placement/running/asked_for.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

#include "headend/stream.h"
#include "placement/one_of.h"

namespace zarven::tool {

namespace {

/// A number that tells services of a stream apart.
using Key = std::pair<Stream, std::uint16_t>;

/// Services of either kind, by such a number.
struct Holders {
    std::set<Key> asked;
    std::set<Key> withheld;

    void add(const Key& key, bool is_asked) { (is_asked ? asked : withheld).insert(key); }
    /// Those that have it are all withheld.
    bool lack(const Key& key) const { return asked.count(key) == 0 && withheld.count(key) != 0; }
};

Key key_of(const Programme& programme, std::uint16_t number) {
    return {{programme.onid, programme.tsid}, number};
}

std::vector<bool> clones_asked_for(const Headend& headend, const std::vector<bool>& services) {
    Holders by_lcn;
    Holders by_osid;
    for (std::size_t index = 0; index < services.size(); ++index) {
        const Service& service = headend.services[index];
        by_lcn.add(key_of(service, service.lcn), services[index]);
        by_osid.add(key_of(service, service.osid), services[index]);
    }
    std::vector<bool> asked;
    for (const Clone& clone : headend.clones)
        asked.push_back(!by_lcn.lack(key_of(clone, clone.lcn)) &&
                        (clone.parent_sid == 0 || !by_osid.lack(key_of(clone, clone.parent_sid))));
    return asked;
}

std::vector<bool> pids_asked_for(const Headend& headend, const std::vector<bool>& services,
                                 const std::vector<bool>& clones) {
    std::map<std::uint16_t, bool> of_clones;
    std::map<std::uint16_t, bool> of_services;
    std::set<Key> keys;
    for (std::size_t index = 0; index < services.size(); ++index) {
        const Service& service = headend.services[index];
        (keys.insert(key_of(service, service.lcn)).second ? of_services : of_clones)
            .emplace(service.sid, services[index]);
    }
    for (std::size_t index = 0; index < clones.size(); ++index)
        of_clones.emplace(headend.clones[index].sid, clones[index]);
    of_clones.merge(of_services);
    std::vector<bool> asked;
    for (const Pid& pid : headend.pids) {
        const auto owner = of_clones.find(pid.sid);
        asked.push_back(owner == of_clones.end() || owner->second);
    }
    return asked;
}

} // namespace

AskedFor asked_for(const Headend& headend) {
    AskedFor asked;
    asked.services = services_asked_for(headend.services);
    if (std::find(asked.services.begin(), asked.services.end(), false) == asked.services.end())
        return {std::move(asked.services), std::vector<bool>(headend.clones.size(), true),
                std::vector<bool>(headend.pids.size(), true)};
    asked.clones = clones_asked_for(headend, asked.services);
    asked.pids = pids_asked_for(headend, asked.services, asked.clones);
    return asked;
}

} // namespace zarven::tool
