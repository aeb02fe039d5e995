// A clone is loaded under the key of a service of its stream, which is its parent unless the clone names
// another by its OSID. A PID belongs to the first clone with its SID, and without one to the first service.
// Where a key stands twice, the later service is a clone; with the earlier one withheld it is an ordinary
// service.

#include "placement/running/asked_for.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

#include "headend/number_in_stream.h"
#include "placement/one_of.h"

namespace zarven::tool {

namespace {

/// Services of either kind, by their LCN or another number.
struct Holders {
    std::set<NumberInStream> asked;
    std::set<NumberInStream> withheld;

    void add(const NumberInStream& key, bool is_asked) { (is_asked ? asked : withheld).insert(key); }
    /// Those that have it are all withheld.
    bool lack(const NumberInStream& key) const { return asked.count(key) == 0 && withheld.count(key) != 0; }
};

std::vector<bool> clones_asked_for(const Headend& headend, const std::vector<bool>& services) {
    Holders by_lcn;
    Holders by_osid;
    for (std::size_t index = 0; index < services.size(); ++index) {
        const Service& service = headend.services[index];
        by_lcn.add(lcn_in_stream_of(service), services[index]);
        by_osid.add(in_stream_of(service, service.osid), services[index]);
    }
    std::vector<bool> asked;
    for (const Clone& clone : headend.clones)
        asked.push_back(!by_lcn.lack(lcn_in_stream_of(clone)) &&
                        (clone.parent_sid == 0 || !by_osid.lack(in_stream_of(clone, clone.parent_sid))));
    return asked;
}

std::vector<bool> pids_asked_for(const Headend& headend, const std::vector<bool>& services,
                                 const std::vector<bool>& clones) {
    std::map<std::uint16_t, bool> of_clones;
    std::map<std::uint16_t, bool> of_services;
    std::set<NumberInStream> keys;
    for (std::size_t index = 0; index < services.size(); ++index) {
        const Service& service = headend.services[index];
        (keys.insert(lcn_in_stream_of(service)).second ? of_services : of_clones)
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
