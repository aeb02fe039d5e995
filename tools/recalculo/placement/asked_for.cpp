// A clone is loaded under the key of a service of its stream, which is its parent unless the clone names
// another by its OSID. A PID belongs to the first clone with its SID, and without one to the first service.
// Where a key stands twice, the later service is a clone; with the earlier one withheld it is an ordinary
// service.

#include "placement/asked_for.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

#include "headend/stream.h"

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

std::vector<bool> clones_asked_for(const Headend& headend) {
    Holders by_lcn;
    Holders by_osid;
    for (const Service& service : headend.services) {
        by_lcn.add(key_of(service, service.lcn), service.ask);
        by_osid.add(key_of(service, service.osid), service.ask);
    }
    std::vector<bool> asked;
    for (const Clone& clone : headend.clones)
        asked.push_back(!by_lcn.lack(key_of(clone, clone.lcn)) &&
                        (clone.parent_sid == 0 || !by_osid.lack(key_of(clone, clone.parent_sid))));
    return asked;
}

std::vector<bool> pids_asked_for(const Headend& headend, const std::vector<bool>& clones) {
    std::map<std::uint16_t, bool> of_clones;
    std::map<std::uint16_t, bool> of_services;
    std::set<Key> keys;
    for (const Service& service : headend.services)
        (keys.insert(key_of(service, service.lcn)).second ? of_services : of_clones)
            .emplace(service.sid, service.ask);
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
    const auto is_asked = [](const Service& service) { return service.ask; };
    if (std::all_of(headend.services.begin(), headend.services.end(), is_asked))
        return {std::vector<bool>(headend.services.size(), true),
                std::vector<bool>(headend.clones.size(), true), std::vector<bool>(headend.pids.size(), true)};
    AskedFor asked;
    for (const Service& service : headend.services)
        asked.services.push_back(service.ask);
    asked.clones = clones_asked_for(headend);
    asked.pids = pids_asked_for(headend, asked.clones);
    return asked;
}

} // namespace zarven::tool
