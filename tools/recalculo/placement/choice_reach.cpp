// A bound for every choice at once. What a service takes depends on the choice: the second service of a key
// is a clone of the first, which costs nothing but PIDs that are charged to that one, and an ordinary service
// where the first is withheld. So the services of a key are taken for one, which is worth all of them
// together and takes of each resource what the least of them takes.

#include <algorithm>
#include <map>
#include <set>
#include <utility>

#include "placement/bound.h"
#include "placement/capacity.h"
#include "placement/choice.h"

namespace zarven::tool {

namespace {

using Key = std::pair<Stream, std::uint16_t>;

Key key_of(const Programme& programme) {
    return {{programme.onid, programme.tsid}, programme.lcn};
}

/// The services that can be asked for, one for each key, with what they are worth.
struct Bundles {
    Headend headend;
    std::vector<std::uint64_t> worths;
    std::uint64_t wanted = 0;
};

void take_least(Service& bundle, const Service& service) {
    bundle.bitrate = std::min(bundle.bitrate, service.bitrate);
    bundle.ca_pids = std::min(bundle.ca_pids, service.ca_pids);
    bundle.ca_pids_max = std::min(bundle.ca_pids_max, service.ca_pids_max);
    // Attached, it needs a transcoder of the other pool.
    bundle.transcoding = 0;
}

template <class Worth> Bundles bundles_of(const Headend& headend, Worth worth_of) {
    Bundles bundles;
    bundles.headend.modules = headend.modules;
    std::map<Key, std::size_t> places;
    std::set<Key> with_clones;
    for (const Clone& clone : headend.clones)
        with_clones.insert(key_of(clone));
    for (const Service& service : headend.services) {
        if (!service.ask)
            continue;
        const auto [found, is_new] = places.emplace(key_of(service), bundles.worths.size());
        const std::uint64_t worth = worth_of(service);
        bundles.wanted += worth;
        if (is_new) {
            bundles.headend.services.push_back(service);
            bundles.worths.push_back(worth);
        } else {
            take_least(bundles.headend.services[found->second], service);
            bundles.worths[found->second] += worth;
            with_clones.insert(found->first);
        }
    }
    // To charge a clone's PIDs the engine applies the parent's ceiling, which may be under what it has.
    for (Service& bundle : bundles.headend.services)
        if (with_clones.count(key_of(bundle)) != 0)
            bundle.ca_pids = std::min(bundle.ca_pids, bundle.ca_pids_max);
    return bundles;
}

template <class Worth> Reach reach(const Headend& headend, const std::string& file, Worth worth_of) {
    const Bundles bundles = bundles_of(headend, worth_of);
    const EngineRun loaded = load_engine(bundles.headend, file);
    return {bundles.wanted, bound_of(loaded, capacities_of(loaded), bundles.worths).most};
}

} // namespace

Reach reach_of_musts(const Headend& headend, const std::string& file) {
    return reach(headend, file, [](const Service& service) { return service.must ? std::uint64_t{1} : 0; });
}

Reach reach_of_value(const Headend& headend, const std::string& file) {
    return reach(headend, file, [](const Service& service) { return std::uint64_t{service.value}; });
}

} // namespace zarven::tool
