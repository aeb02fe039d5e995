// LCNs must be good for the engine, and what a list does not tell is estimated; the rest is copying.

#include "lineup/channel_import.h"

#include <algorithm>
#include <map>
#include <set>
#include <tuple>
#include <utility>

#include <fmt/format.h>

#include "headend/number_in_stream.h"
#include "lineup/channel_kind.h"
#include "lineup/stream_ids.h"

namespace zarven::tool {

namespace {

/// PIDs to assume for a scrambled service of which none is known: picture and one sound.
std::uint16_t typical_pids(ChannelKind kind) {
    return kind == ChannelKind::radio ? 1 : 2;
}

std::size_t& count_of(ImportedChannels& imported, const ServiceFacts& facts) {
    if (facts.is_unknown)
        return imported.unknown;
    switch (facts.kind) {
    case ChannelKind::radio:
        return imported.radio;
    case ChannelKind::sd:
        return imported.sd;
    case ChannelKind::hd:
        return imported.hd;
    case ChannelKind::uhd:
        break;
    }
    return imported.uhd;
}

/// Counts the services by what they are.
void count(ImportedChannels& imported) {
    imported.radio = imported.sd = imported.hd = imported.uhd = imported.unknown = 0;
    imported.kinds_by_name = imported.scrambled = imported.without_pids = 0;
    for (std::size_t index = 0; index < imported.services.size(); ++index) {
        const ServiceFacts& facts = imported.facts[index];
        ++count_of(imported, facts);
        imported.kinds_by_name += facts.is_by_name ? 1 : 0;
        imported.scrambled += imported.services[index].descramble != 0 ? 1 : 0;
        imported.without_pids += facts.has_estimated_pids ? 1 : 0;
    }
}

/// One import: what has been taken so far, and the report on it.
class Import {
public:
    Import(const ChannelList& list, const BitrateEstimates& estimates, Duplicates duplicates,
           const Refinement& refine)
        : estimates_(estimates), duplicates_(duplicates), streams_(list.channels) {
        for (const Channel& channel : list.channels)
            numbers_.emplace(channel.number, no_list);
        report_.unreadable = list.unreadable;
        report_.remarks = list.remarks;
        for (const Channel& channel : list.channels)
            take(channel);
        if (refine)
            refine(report_);
        report_.shared_out = loads_.share_out(report_.services);
        count(report_);
        report_.unchecked_streams = loads_.unchecked();
        report_.nameless_streams = streams_.nameless();
        report_.shared_ids = streams_.shared();
        report_.receptions = streams_.receptions();
        loads_.describe(report_.receptions);
        for (std::vector<Remark>* remarks : {&report_.unreadable, &report_.remarks})
            std::stable_sort(remarks->begin(), remarks->end(), [](const Remark& one, const Remark& other) {
                return std::tie(one.list, one.line) < std::tie(other.list, other.line);
            });
    }

    ImportedChannels report() && { return std::move(report_); }

private:
    void take(const Channel& channel) {
        if (channel.number > highest_number)
            return leave_aside(channel, fmt::format("channel number {} is too large, expected at most 65535",
                                                    channel.number));
        const std::optional<Stream> stream = streams_.of(channel);
        if (!stream)
            return leave_aside(channel, "no id is left for a stream without NID and TID of its own");
        if (is_duplicate(channel, *stream))
            return;
        const std::optional<std::uint16_t> lcn = lcn_of(channel);
        if (!lcn)
            return leave_aside(channel, "no number is left for a channel whose number another list has");
        Service service;
        service.lcn = *lcn;
        service.onid = stream->onid;
        service.tsid = stream->tsid;
        const auto [taken, is_first] = lines_.emplace(lcn_in_stream_of(service), channel.line);
        if (!is_first)
            return leave_aside(channel,
                               fmt::format("channel number {} stands in stream {} already, on line {}",
                                           service.lcn, to_string(*stream), taken->second));
        sids_.emplace(in_stream_of(service, channel.sid), std::pair(channel.list, channel.line));
        service.name = channel.name.empty() ? name_of_nameless(channel.sid) : channel.name;
        service.output_name = service.name;
        service.sid = channel.sid;
        service.osid = channel.sid;
        const ChannelKind kind = set_kind(channel, service);
        if (channel.scrambled)
            set_scrambled(channel, kind, service);
        loads_.add(*stream, report_.services.size(), channel.transponder);
        report_.services.push_back(std::move(service));
    }

    /// Its number, or the next that no list has if another list has had it; nothing if none is left.
    std::optional<std::uint16_t> lcn_of(const Channel& channel) {
        std::size_t& list = numbers_.at(channel.number);
        if (list == no_list || list == channel.list) {
            list = channel.list;
            return static_cast<std::uint16_t>(channel.number);
        }
        while (next_number_ <= highest_number && !numbers_.emplace(next_number_, channel.list).second)
            ++next_number_;
        if (next_number_ > highest_number)
            return std::nullopt;
        ++report_.renumbered;
        return static_cast<std::uint16_t>(next_number_);
    }

    /// Tells one that is passed over.
    bool is_duplicate(const Channel& channel, Stream stream) {
        if (channel.sid == 0 || duplicates_ == Duplicates::kept)
            return false;
        const auto first = sids_.find({stream, channel.sid});
        if (first == sids_.end())
            return false;
        ++report_.duplicates;
        const auto [list, line] = first->second;
        report_.remarks.push_back(
            {channel.line,
             fmt::format("SID {} of stream {} stands on line {}{} already", channel.sid, to_string(stream),
                         line, list == channel.list ? "" : " of an earlier list"),
             channel.list});
        return true;
    }

    void leave_aside(const Channel& channel, const std::string& reason) {
        report_.unreadable.push_back({channel.line, reason, channel.list});
    }

    /// Sets what follows from the kind of service.
    ChannelKind set_kind(const Channel& channel, Service& service) {
        const KindFinding finding = find_kind(channel);
        service.kind_unknown = finding.is_unknown;
        report_.facts.push_back({finding.kind, finding.is_unknown, finding.is_by_name, false});
        const bool is_radio = finding.kind == ChannelKind::radio;
        service.type = is_radio ? type_radio : type_television;
        if (finding.kind == ChannelKind::hd || finding.kind == ChannelKind::uhd)
            service.video_format = tRec_Servicio::VIDEO_HD;
        service.bitrate = estimate_of(finding.kind);
        service.video_bitrate = is_radio ? 0 : service.bitrate;
        return finding.kind;
    }

    std::uint32_t estimate_of(ChannelKind kind) const {
        switch (kind) {
        case ChannelKind::radio:
            return estimates_.radio;
        case ChannelKind::sd:
            return estimates_.sd;
        case ChannelKind::hd:
            return estimates_.hd;
        case ChannelKind::uhd:
            break;
        }
        return estimates_.uhd;
    }

    /// Each of its PIDs, sound and picture, needs descrambling. A file that tells the kind outright, or
    /// nothing of it, need not know the PIDs.
    void set_scrambled(const Channel& channel, ChannelKind kind, Service& service) {
        std::set<std::uint16_t> pids = channel.audio_pids;
        if (channel.video_pid != 0)
            pids.insert(channel.video_pid);
        service.descramble = 1;
        service.ca_pids = static_cast<std::uint16_t>(pids.size());
        if (pids.empty()) {
            report_.facts.back().has_estimated_pids = true;
            service.ca_pids = typical_pids(kind);
        }
        service.ca_pids_max = service.ca_pids;
    }

    static constexpr std::uint32_t highest_number = 65535;
    static constexpr std::size_t no_list = static_cast<std::size_t>(-1);

    BitrateEstimates estimates_;
    Duplicates duplicates_;
    /// All numbers, and the list of which a channel has taken it.
    std::map<std::uint32_t, std::size_t> numbers_;
    std::uint32_t next_number_ = 1;
    StreamIds streams_;
    StreamLoads loads_;
    /// List and line of each service that is imported, by stream and SID.
    std::map<NumberInStream, std::pair<std::size_t, std::size_t>> sids_;
    /// Line of each service, by stream and LCN.
    std::map<NumberInStream, std::size_t> lines_;
    ImportedChannels report_;
};

} // namespace

ImportedChannels import_channels(const ChannelList& list, const BitrateEstimates& estimates,
                                 Duplicates duplicates, const Refinement& refine) {
    return Import(list, estimates, duplicates, refine).report();
}

std::string name_of_nameless(std::uint16_t sid) {
    return fmt::format("SID {}", sid);
}

void choose_services(ImportedChannels& imported, const ServiceFilter& filter) {
    std::vector<std::size_t> wanted;
    for (std::size_t index = 0; index < imported.services.size(); ++index)
        if (filter.wants(imported.services[index]))
            wanted.push_back(index);
    keep_services(imported, wanted);
}

void keep_services(ImportedChannels& imported, const std::vector<std::size_t>& places) {
    std::vector<Service> services;
    std::vector<ServiceFacts> facts;
    for (const std::size_t place : places) {
        services.push_back(std::move(imported.services[place]));
        facts.push_back(imported.facts[place]);
    }
    imported.not_wanted += imported.services.size() - services.size();
    imported.services = std::move(services);
    imported.facts = std::move(facts);
    count(imported);
}

} // namespace zarven::tool
