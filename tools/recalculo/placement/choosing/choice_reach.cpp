// A bound for every choice at once. What a service takes depends on the choice: the second service of a key
// is a clone of the first, which costs nothing but PIDs that are charged to that one, and an ordinary service
// where the first is withheld. So the services of a key are taken for one, which is worth all of them
// together and takes of each resource what the least of them takes. So are the variants of a one-of group, of
// which one counts; where they are of several streams, the bundle needs no input.

#include <algorithm>
#include <map>
#include <string>
#include <utility>

#include "headend/number_in_stream.h"
#include "placement/bound.h"
#include "placement/choosing/choice.h"
#include "placement/one_of.h"
#include "placement/running/capacity.h"

namespace zarven::tool {

namespace {

/// The services that can be asked for, one for each key and for each one-of group, with what they are worth.
struct Bundles {
    Headend headend;
    std::vector<std::uint64_t> worths;
    std::vector<bool> of_any_stream;
    std::uint64_t wanted = 0;
};

/// Of services of one key the second is a clone to the engine.
enum class Clones { count, do_not_count };

class Bundling {
public:
    Bundling(const Headend& headend, Clones clones) : headend_(headend), clones_(clones) {
        bundles_.headend.modules = headend.modules;
        for (const Clone& clone : headend.clones)
            ++holders_[lcn_in_stream_of(clone)].clones;
        std::vector<bool> is_any_variant(headend.services.size(), false);
        for (const OneOf& group : one_of_groups(headend.services))
            for (const std::size_t variant : group.variants)
                is_any_variant[variant] = true;
        for (std::size_t index = 0; index < headend.services.size(); ++index) {
            const Service& service = headend.services[index];
            if (is_variant(service) ? !is_any_variant[index] : !service.ask)
                continue;
            asked_.push_back(index);
            ++holders_[lcn_in_stream_of(service)].services;
            holders_[lcn_in_stream_of(service)].variants += is_variant(service) ? 1 : 0;
        }
    }

    template <class Worth> Bundles bundles(Worth worth_of) && {
        for (const std::size_t index : asked_)
            add(headend_.services[index], worth_of(headend_.services[index]));
        return std::move(bundles_);
    }

private:
    struct Holders {
        std::size_t services = 0;
        std::size_t clones = 0;
        std::size_t variants = 0;
    };

    void add(const Service& service, std::uint64_t worth) {
        const std::size_t bundle = bundle_of(service);
        const bool is_new_key = keys_.emplace(lcn_in_stream_of(service), bundle).second;
        if (is_variant(service)) {
            // One of the group counts, and be it the one that is worth most.
            std::uint64_t& most = most_of_[service.one_of];
            const std::uint64_t before = std::exchange(most, std::max(most, worth));
            worth = most - before;
        } else if (!is_new_key && clones_ == Clones::do_not_count) {
            worth = 0;
        }
        bundles_.worths[bundle] += worth;
        bundles_.wanted += worth;
    }

    /// The bundle that it is put into, or begins.
    std::size_t bundle_of(const Service& service) {
        const std::size_t next = bundles_.worths.size();
        const auto of_key = keys_.find(lcn_in_stream_of(service));
        std::size_t bundle = of_key == keys_.end() ? next : of_key->second;
        if (is_variant(service))
            bundle = groups_.emplace(service.one_of, bundle).first->second;
        if (bundle == next) {
            bundles_.headend.services.push_back(least_of(service));
            bundles_.worths.push_back(0);
            bundles_.of_any_stream.push_back(false);
        } else {
            take_least(bundle, least_of(service));
        }
        return bundle;
    }

    /// To charge a clone's PIDs the engine applies the parent's ceiling, which may be under what it has.
    /// Where a variant shares its key, whichever of them is a clone takes nothing.
    Service least_of(Service service) const {
        const Holders& holders = holders_.at(lcn_in_stream_of(service));
        service.one_of.clear();
        if (holders.services + holders.clones > 1)
            service.ca_pids = std::min(service.ca_pids, service.ca_pids_max);
        if (holders.services > 1 && holders.variants != 0) {
            service.bitrate = 0;
            service.ca_pids = 0;
        }
        return service;
    }

    void take_least(std::size_t place, const Service& service) {
        Service& bundle = bundles_.headend.services[place];
        bundle.bitrate = std::min(bundle.bitrate, service.bitrate);
        bundle.ca_pids = std::min(bundle.ca_pids, service.ca_pids);
        // Attached, it needs a transcoder of the other pool.
        bundle.transcoding = 0;
        if (bundle.onid != service.onid || bundle.tsid != service.tsid)
            bundles_.of_any_stream[place] = true;
    }

    const Headend& headend_;
    const Clones clones_;
    std::vector<std::size_t> asked_;
    std::map<NumberInStream, Holders> holders_;
    std::map<NumberInStream, std::size_t> keys_;
    std::map<std::string, std::size_t> groups_;
    std::map<std::string, std::uint64_t> most_of_;
    Bundles bundles_;
};

Bound bound_of_bundles(const Bundles& bundles, const std::string& file) {
    const EngineRun loaded = load_engine(bundles.headend, file);
    return bound_of(loaded, capacities_of(loaded), bundles.worths, bundles.of_any_stream);
}

template <class Worth> Reach reach(const Headend& headend, const std::string& file, Worth worth_of) {
    const Bundles bundles = Bundling(headend, Clones::count).bundles(worth_of);
    return {bundles.wanted, bound_of_bundles(bundles, file).most};
}

} // namespace

Bound bound_of(const Headend& headend, const std::string& file) {
    if (std::none_of(headend.services.begin(), headend.services.end(), is_variant)) {
        const EngineRun loaded = load_engine(headend, file);
        return bound_of(loaded, capacities_of(loaded));
    }
    const auto one = [](const Service&) { return std::uint64_t{1}; };
    return bound_of_bundles(Bundling(headend, Clones::do_not_count).bundles(one), file);
}

Reach reach_of_musts(const Headend& headend, const std::string& file) {
    return reach(headend, file, [](const Service& service) { return service.must ? std::uint64_t{1} : 0; });
}

Reach reach_of_value(const Headend& headend, const std::string& file) {
    return reach(headend, file, [](const Service& service) { return std::uint64_t{service.value}; });
}

} // namespace zarven::tool
