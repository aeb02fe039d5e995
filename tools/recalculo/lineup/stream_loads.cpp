// A sum of 32-bit estimates is kept in 64 bits; bitrates are rounded down, so that rounding exceeds nothing.

#include "lineup/stream_loads.h"

#include <algorithm>

namespace zarven::tool {

namespace {

bool is_radio(const Service& service) {
    return service.type == type_radio;
}

void set_bitrate(Service& service, std::uint64_t bitrate) {
    service.bitrate = static_cast<std::uint32_t>(bitrate);
    service.video_bitrate = std::min(service.video_bitrate, service.bitrate);
}

/// `part` of `whole`, of which there is `there`.
std::uint64_t share(std::uint64_t part, std::uint64_t whole, std::uint64_t there) {
    return part * there / whole;
}

} // namespace

void StreamLoads::add(Stream stream, std::size_t service, const Transponder& transponder) {
    Load& load = loads_[stream];
    load.services.push_back(service);
    if (!load.carried)
        load.carried = net_rate(transponder);
}

std::vector<SharedOut> StreamLoads::share_out(std::vector<Service>& services) const {
    std::vector<SharedOut> shared;
    for (const auto& [stream, load] : loads_) {
        std::uint64_t all = 0;
        std::uint64_t radios = 0;
        for (const std::size_t index : load.services) {
            all += services[index].bitrate;
            radios += is_radio(services[index]) ? services[index].bitrate : 0;
        }
        if (!load.carried || all <= *load.carried)
            continue;
        const bool radios_keep = radios < *load.carried;
        const std::uint64_t fixed = radios_keep ? radios : 0;
        for (const std::size_t index : load.services)
            if (!radios_keep || !is_radio(services[index]))
                set_bitrate(services[index],
                            share(services[index].bitrate, all - fixed, *load.carried - fixed));
        shared.push_back({stream, all, *load.carried});
    }
    return shared;
}

std::size_t StreamLoads::unchecked() const {
    return static_cast<std::size_t>(
        std::count_if(loads_.begin(), loads_.end(), [](const auto& entry) { return !entry.second.carried; }));
}

} // namespace zarven::tool
