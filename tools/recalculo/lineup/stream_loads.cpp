// A sum of 32-bit estimates is kept in 64 bits; bitrates are rounded down, so that rounding exceeds nothing.

#include "lineup/stream_loads.h"

#include <algorithm>

namespace zarven::tool {

namespace {

/// Others make room first.
bool is_fixed(const Service& service) {
    return service.measured || is_radio(service);
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

std::optional<std::uint64_t> hold_to(std::uint32_t carried, const std::vector<std::size_t>& places,
                                     std::vector<Service>& services) {
    std::uint64_t all = 0;
    std::uint64_t fixed = 0;
    for (const std::size_t place : places) {
        all += services[place].bitrate;
        fixed += is_fixed(services[place]) ? services[place].bitrate : 0;
    }
    if (all <= carried)
        return std::nullopt;
    const bool fixed_keep = fixed < carried;
    const std::uint64_t kept = fixed_keep ? fixed : 0;
    for (const std::size_t place : places)
        if (!fixed_keep || !is_fixed(services[place]))
            set_bitrate(services[place], share(services[place].bitrate, all - kept, carried - kept));
    return all;
}

void StreamLoads::add(Stream stream, std::size_t service, const Transponder& transponder) {
    Load& load = loads_[stream];
    load.services.push_back(service);
    if (load.carried)
        return;
    load.carried = net_rate(transponder);
    if (load.carried || load.services.size() == 1)
        load.transponder = transponder;
}

std::vector<SharedOut> StreamLoads::share_out(std::vector<Service>& services) const {
    std::vector<SharedOut> shared;
    for (const auto& [stream, load] : loads_)
        if (load.carried)
            if (const auto wanted = hold_to(*load.carried, load.services, services))
                shared.push_back({stream, *wanted, *load.carried});
    return shared;
}

std::size_t StreamLoads::unchecked() const {
    return static_cast<std::size_t>(
        std::count_if(loads_.begin(), loads_.end(), [](const auto& entry) { return !entry.second.carried; }));
}

void StreamLoads::describe(Receptions& receptions) const {
    for (const auto& [stream, load] : loads_) {
        const auto found = receptions.find(stream);
        if (found == receptions.end())
            continue;
        Reception& reception = found->second;
        reception.symbol_rate = symbol_rate(load.transponder);
        reception.net_rate = load.carried.value_or(0);
        reception.delivery = to_string(load.transponder.delivery);
    }
}

} // namespace zarven::tool
