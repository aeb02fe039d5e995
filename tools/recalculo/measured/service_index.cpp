// A stream is received with the SID that the head-end calls `osid`.

#include "measured/service_index.h"

#include <algorithm>

namespace zarven::tool {

ServiceIndex::ServiceIndex(const std::vector<Service>& services) {
    for (std::size_t place = 0; place < services.size(); ++place) {
        const Service& service = services[place];
        places_[{service.tsid, service.osid}][service.onid].push_back(place);
        streams_[stream_of(service)].push_back(place);
    }
}

ServiceIndex::Match ServiceIndex::find(const MeasuredService& measured) const {
    Match match;
    const auto found = places_.find({measured.tsid, measured.sid});
    if (found != places_.end() && !measured.onid) {
        match.is_ambiguous = found->second.size() > 1;
        match.places = found->second.begin()->second;
    } else if (found != places_.end()) {
        const auto network = found->second.find(*measured.onid);
        if (network != found->second.end())
            match.places = network->second;
    }
    match.has_stream = !match.places.empty() || has_stream(measured);
    return match;
}

bool ServiceIndex::has_stream(const MeasuredService& measured) const {
    return std::any_of(streams_.begin(), streams_.end(), [&measured](const auto& stream) {
        return stream.first.tsid == measured.tsid && (!measured.onid || stream.first.onid == *measured.onid);
    });
}

} // namespace zarven::tool
