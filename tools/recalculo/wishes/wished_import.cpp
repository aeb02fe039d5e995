#include "wishes/wished_import.h"

#include <algorithm>
#include <cstddef>

namespace zarven::tool {

Wishing find_wishes(const std::vector<WishList>& lists, const ImportedChannels& imported) {
    std::vector<Reception> streams;
    for (const auto& [stream, reception] : imported.receptions)
        streams.push_back(reception);
    return find_wishes(lists, imported.services, streams);
}

void keep_wished(Wishing& wishing, const ServiceFilter& filter, ImportedChannels& imported) {
    const auto is_unwanted = [&](const MetWish& met) {
        return !filter.wants(imported.services[met.service]);
    };
    wishing.met.erase(std::remove_if(wishing.met.begin(), wishing.met.end(), is_unwanted), wishing.met.end());
    std::vector<std::size_t> order;
    for (MetWish& met : wishing.met) {
        order.push_back(met.service);
        met.service = order.size() - 1;
    }
    keep_services(imported, order);
}

} // namespace zarven::tool
