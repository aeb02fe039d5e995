// All looks are gathered first, by service and by stream; then each service is changed once.

#include "measured/measuring.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <set>
#include <tuple>

#include "lineup/channel_import.h"
#include "measured/service_index.h"

namespace zarven::tool {

namespace {

/// What all looks at a service have found.
struct Found : MeasuredTraits {
    double peak = 0;
    /// Of the looks with a rate: rates by seconds, and for those that do not tell these.
    double bits = 0;
    double seconds = 0;
    double rates = 0;
    std::size_t looks = 0;

    void add(const MeasuredService& service, const Measurement& look);
    double mean() const { return seconds > 0 ? bits / seconds : rates / static_cast<double>(looks); }
};

struct FoundStream {
    std::optional<double> seconds;
    std::optional<double> room;
};

void Found::add(const MeasuredService& service, const Measurement& look) {
    if (service.rate > 0) {
        peak = std::max(peak, service.rate);
        bits += service.rate * look.seconds.value_or(0);
        seconds += look.seconds.value_or(0);
        rates += service.rate;
        ++looks;
    }
    if (!service.name.empty())
        name = service.name;
    is_name_unseen = is_name_unseen || service.is_name_unseen;
    // A later look may see less, and a picture changes its size seldom.
    if (service.kind && (!kind || *service.kind > *kind))
        kind = service.kind;
    tells_scrambling = tells_scrambling || service.tells_scrambling;
    scrambled_pids = std::max(scrambled_pids, service.scrambled_pids);
    is_scrambled = is_scrambled || service.is_scrambled || service.scrambled_pids != 0;
    has_ecms = has_ecms || service.has_ecms;
}

/// kbit/s, rounded up.
std::uint32_t in_kbits(double bits) {
    const double most = std::numeric_limits<std::uint32_t>::max();
    return static_cast<std::uint32_t>(std::min(std::ceil(bits / 1000), most));
}

class Application {
public:
    Application(const Margins& margins, Descrambling descrambling, std::vector<Service>& services)
        : margins_(margins), descrambling_(descrambling), services_(services), index_(services) {
        measuring_.kinds.resize(services.size());
    }

    void gather(const Measurement& look);
    Measuring result() &&;

private:
    void apply(const Found& found, std::size_t place);
    void apply_rate(const Found& found, Service& service);
    bool apply_kind(ChannelKind kind, Service& service);
    void apply_scrambling(const Found& found, std::size_t place);
    void hold_to_room();

    Margins margins_;
    Descrambling descrambling_;
    std::vector<Service>& services_;
    const ServiceIndex index_;
    std::map<std::size_t, Found> found_;
    std::map<Stream, FoundStream> streams_;
    /// By what is told of them, so that each is told once, whatever the number of looks.
    using Key = std::tuple<std::optional<std::uint16_t>, std::uint16_t, std::uint16_t>;
    std::map<Key, Unmatched> unknown_services_;
    std::map<Key, Unmatched> ambiguous_services_;
    std::map<std::pair<std::optional<std::uint16_t>, std::uint16_t>, std::set<std::uint16_t>>
        unknown_streams_;
    Measuring measuring_;
};

void Application::gather(const Measurement& look) {
    std::set<Stream> seen;
    for (const MeasuredService& service : look.services) {
        const Unmatched unmatched{service.onid, service.tsid, service.sid, service.name, 0};
        const Key key{service.onid, service.tsid, service.sid};
        const ServiceIndex::Match match = index_.find(service);
        if (match.places.empty() && !match.has_stream)
            unknown_streams_[{service.onid, service.tsid}].insert(service.sid);
        else if (match.places.empty())
            unknown_services_.emplace(key, unmatched);
        else if (match.is_ambiguous)
            ambiguous_services_.emplace(key, unmatched);
        if (match.is_ambiguous)
            continue;
        for (const std::size_t place : match.places) {
            found_[place].add(service, look);
            seen.insert(stream_of(services_[place]));
        }
    }
    for (const Stream stream : seen) {
        FoundStream& found = streams_[stream];
        if (look.seconds)
            found.seconds = found.seconds.value_or(0) + *look.seconds;
        if (look.room)
            found.room = std::max(found.room.value_or(0), *look.room);
    }
}

void Application::apply_rate(const Found& found, Service& service) {
    const bool picture_is_all = service.video_bitrate == service.bitrate;
    service.bitrate = with_margin(in_kbits(found.peak), margins_.measured);
    service.video_bitrate =
        picture_is_all ? service.bitrate : std::min(service.video_bitrate, service.bitrate);
    service.mean_bitrate = in_kbits(found.mean());
    service.measured = true;
}

/// Returns whether it was something else before.
bool Application::apply_kind(ChannelKind kind, Service& service) {
    const bool to_be_radio = kind == ChannelKind::radio;
    const bool was_radio = is_radio(service);
    const bool was_hd = is_hd(service);
    const bool to_be_hd = kind == ChannelKind::hd || kind == ChannelKind::uhd;
    service.kind_unknown = false;
    if (to_be_radio) {
        service.type = type_radio;
        service.video_bitrate = 0;
    } else if (was_radio) {
        service.type = type_television;
        service.video_bitrate = service.bitrate;
    }
    if (was_hd != to_be_hd)
        service.video_format = to_be_hd ? tRec_Servicio::VIDEO_HD : std::uint16_t{0};
    return was_radio != to_be_radio || was_hd != to_be_hd;
}

void Application::apply_scrambling(const Found& found, std::size_t place) {
    Service& service = services_[place];
    if (!found.is_scrambled) {
        if (service.descramble != 0 && found.tells_scrambling)
            (found.has_ecms ? measuring_.clear_at_the_moment : measuring_.clear).push_back(place);
        return;
    }
    if (service.descramble == 0 && descrambling_ == Descrambling::as_planned) {
        measuring_.not_descrambled.push_back(place);
        return;
    }
    service.descramble = service.descramble == 0 ? std::uint16_t{1} : service.descramble;
    if (found.scrambled_pids == 0) {
        measuring_.without_pids.push_back(place);
        return;
    }
    // A ceiling above the number is the planner's, for clones.
    if (service.ca_pids_max <= service.ca_pids || service.ca_pids_max < found.scrambled_pids)
        service.ca_pids_max = found.scrambled_pids;
    service.ca_pids = found.scrambled_pids;
    measuring_.of_known_pids.push_back(place);
}

void Application::apply(const Found& found, std::size_t place) {
    Service& service = services_[place];
    if (found.looks != 0) {
        apply_rate(found, service);
        measuring_.measured.push_back(place);
        measuring_.measured_once += found.looks == 1 ? 1 : 0;
    } else {
        measuring_.without_rate.push_back(place);
    }
    if (found.kind && apply_kind(*found.kind, service))
        measuring_.of_other_kind.push_back(place);
    measuring_.kinds[place] = found.kind;
    apply_scrambling(found, place);
    const bool is_nameless = service.name.empty() || service.name == name_of_nameless(service.sid);
    if (!found.name.empty() && is_nameless) {
        if (service.output_name == service.name)
            service.output_name = found.name;
        service.name = found.name;
    } else if (found.name.empty() && found.is_name_unseen) {
        measuring_.without_name.push_back(place);
    }
}

void Application::hold_to_room() {
    for (const auto& [stream, found] : streams_) {
        if (!found.room)
            continue;
        const std::uint32_t room = in_kbits(*found.room);
        if (const auto wanted = hold_to(room, index_.of_stream(stream), services_))
            measuring_.held.push_back({stream, *wanted, room});
    }
}

Measuring Application::result() && {
    for (const auto& [place, found] : found_)
        apply(found, place);
    for (Service& service : services_)
        if (!service.measured) {
            const bool picture_is_all = service.video_bitrate == service.bitrate;
            service.bitrate = with_margin(service.bitrate, margins_.estimated);
            if (picture_is_all)
                service.video_bitrate = service.bitrate;
        }
    hold_to_room();
    for (const auto& [stream, found] : streams_)
        if (found.seconds && *found.seconds < short_look)
            measuring_.short_looks.push_back({stream, *found.seconds});
    for (const auto& [stream, sids] : unknown_streams_)
        measuring_.unknown_streams.push_back({stream.first, stream.second, 0, "", sids.size()});
    for (const auto& [key, unmatched] : unknown_services_)
        measuring_.unknown_services.push_back(unmatched);
    for (const auto& [key, unmatched] : ambiguous_services_)
        measuring_.ambiguous_services.push_back(unmatched);
    return std::move(measuring_);
}

} // namespace

Measuring apply_measurements(const std::vector<MeasuredFile>& files, const Margins& margins,
                             Descrambling descrambling, std::vector<Service>& services) {
    Application application(margins, descrambling, services);
    for (const MeasuredFile& file : files)
        for (const Measurement& look : file.measurements)
            application.gather(look);
    return std::move(application).result();
}

void take_kinds(const Measuring& measuring, ImportedChannels& imported) {
    for (std::size_t place = 0; place < imported.facts.size(); ++place) {
        ServiceFacts& facts = imported.facts[place];
        if (measuring.kinds[place])
            facts = {*measuring.kinds[place], false, false, facts.has_estimated_pids};
    }
    for (const std::size_t place : measuring.of_known_pids)
        imported.facts[place].has_estimated_pids = false;
}

} // namespace zarven::tool
