#include "lineup/stream_ids.h"

#include <iterator>

#include "lineup/transponder.h"

namespace zarven::tool {

namespace {

constexpr Stream no_ids;

/// As far as both are known.
bool are_alike(char one, char other) {
    return one == other || one == 0 || other == 0;
}

std::uint32_t distance(std::uint32_t one, std::uint32_t other) {
    return one < other ? other - one : one - other;
}

/// In the largest unit in which it has 16 bits.
std::uint16_t tsid_of_frequency(std::uint32_t frequency) {
    while (frequency > 65535)
        frequency /= 1000;
    return static_cast<std::uint16_t>(frequency);
}

} // namespace

bool is_made_up(std::uint16_t tsid, const Reception& reception) {
    const std::uint16_t start = tsid_of_frequency(reception.frequency);
    const std::uint16_t most_taken = 16;
    return start != 0 && tsid >= start && tsid - start <= most_taken;
}

void FreeTsids::take(std::uint16_t tsid) {
    auto run = runs_.upper_bound(tsid);
    if (run == runs_.begin() || (--run)->second < tsid)
        return;
    const auto [first, last] = *run;
    runs_.erase(run);
    if (first < tsid)
        runs_.emplace(first, static_cast<std::uint16_t>(tsid - 1));
    if (tsid < last)
        runs_.emplace(static_cast<std::uint16_t>(tsid + 1), last);
}

std::uint16_t FreeTsids::first_from(std::uint16_t start) const {
    if (runs_.empty())
        return 0;
    const auto behind = runs_.upper_bound(start);
    if (behind != runs_.begin() && std::prev(behind)->second >= start)
        return start;
    return behind == runs_.end() ? runs_.begin()->first : behind->first;
}

StreamIds::StreamIds(const std::vector<Channel>& channels) {
    for (const Channel& channel : channels)
        free_[channel.nid].take(channel.tid);
}

/// The nearest within the tolerance; of a transponder whose frequency is not known, any.
const StreamIds::Place* StreamIds::find(const Places& places, std::uint32_t khz, char polarization) {
    const Place* nearest = nullptr;
    const std::uint32_t least = khz > frequency_tolerance ? khz - frequency_tolerance : 1;
    const auto first = khz == 0 ? places.begin() : places.lower_bound(least);
    const auto end = khz == 0 ? places.end() : places.upper_bound(khz + frequency_tolerance);
    for (auto place = first; place != end; ++place)
        if (are_alike(place->second.polarization, polarization) &&
            (nearest == nullptr || distance(place->first, khz) < distance(nearest->khz, khz)))
            nearest = &place->second;
    if (nearest != nullptr)
        return nearest;
    for (auto [place, last] = places.equal_range(0); place != last; ++place)
        if (are_alike(place->second.polarization, polarization))
            return &place->second;
    return nullptr;
}

std::optional<Stream> StreamIds::of(const Channel& channel) {
    const Stream listed{channel.nid, channel.tid};
    Places& places = places_[{listed, channel.source}];
    const std::uint32_t khz = in_khz(channel.frequency);
    if (const Place* known = find(places, khz, channel.polarization))
        return known->given;
    const std::optional<Stream> given = give(channel, listed);
    if (given) {
        places.emplace(khz, Place{khz, channel.polarization, *given});
        given_[listed].push_back(*given);
    }
    return given;
}

std::optional<Stream> StreamIds::give(const Channel& channel, Stream listed) {
    if (listed != no_ids && given_.count(listed) == 0)
        return listed;
    const std::uint16_t start = tsid_of_frequency(channel.frequency);
    FreeTsids& free = free_[listed.onid];
    const std::uint16_t tsid = free.first_from(start);
    if (tsid == 0)
        return std::nullopt;
    free.take(tsid);
    nameless_ += listed == no_ids ? 1 : 0;
    return Stream{listed.onid, tsid};
}

Receptions StreamIds::receptions() const {
    Receptions receptions;
    for (const auto& [listed_and_source, places] : places_)
        for (const auto& [khz, place] : places) {
            Reception reception{place.given.onid, place.given.tsid, khz, "", ""};
            if (place.polarization != 0)
                reception.polarization = place.polarization;
            const std::string& source = listed_and_source.second;
            if (!source.empty() && source.front() == 'S')
                reception.satellite = source.substr(1);
            receptions.emplace(place.given, reception);
        }
    return receptions;
}

std::map<Stream, std::vector<Stream>> StreamIds::shared() const {
    std::map<Stream, std::vector<Stream>> shared;
    for (const auto& [listed, given] : given_)
        if (listed != no_ids && given.size() > 1)
            shared.emplace(listed, given);
    return shared;
}

} // namespace zarven::tool
