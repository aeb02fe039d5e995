// Streams without ids of their own need some, and LCNs must be good for the engine; the rest is copying.

#include "lineup/channel_import.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <set>
#include <tuple>
#include <utility>

#include <fmt/format.h>

namespace zarven::tool {

namespace {

ChannelKind kind_of(const Channel& channel) {
    if (channel.kind)
        return *channel.kind;
    if (channel.video_pid == 0)
        return ChannelKind::radio;
    return channel.video_mode == video_h264 || channel.video_mode == video_hevc ? ChannelKind::hd
                                                                                : ChannelKind::sd;
}

/// PIDs to assume for a scrambled service of which none is known: picture and one sound.
std::uint16_t typical_pids(ChannelKind kind) {
    return kind == ChannelKind::radio ? 1 : 2;
}

/// The TSIDs that are not taken, as runs: few in a short list, and no steps over the taken ones in a long
/// list.
class FreeTsids {
public:
    void take(std::uint16_t tsid) {
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

    /// The first that is free from start on, and from 1 on behind the last; 0 when none is.
    std::uint16_t first_from(std::uint16_t start) const {
        if (runs_.empty())
            return 0;
        const auto behind = runs_.upper_bound(start);
        if (behind != runs_.begin() && std::prev(behind)->second >= start)
            return start;
        return behind == runs_.end() ? runs_.begin()->first : behind->first;
    }

private:
    /// First and last of each run. A stream 0/0 would look like no stream.
    std::map<std::uint16_t, std::uint16_t> runs_{{std::uint16_t{1}, std::uint16_t{65535}}};
};

/// Gives a TSID, under ONID 0, to each stream that the list tells apart only by where it is received.
class NamelessStreams {
public:
    explicit NamelessStreams(const std::vector<Channel>& channels) {
        for (const Channel& channel : channels)
            if (channel.nid == 0)
                free_.take(channel.tid);
    }

    /// The frequency in the largest unit in which it has 16 bits, or the next number that is free; 0 when
    /// none is. The same list gives the same numbers every time.
    std::uint16_t tsid_of(const Channel& channel) {
        const auto key = std::tuple(channel.source, channel.frequency, channel.polarization);
        const auto known = tsids_.find(key);
        if (known != tsids_.end())
            return known->second;
        std::uint32_t start = channel.frequency;
        while (start > 65535)
            start /= 1000;
        const std::uint16_t tsid = free_.first_from(static_cast<std::uint16_t>(start));
        if (tsid == 0)
            return 0;
        free_.take(tsid);
        tsids_.emplace(key, tsid);
        return tsid;
    }

    std::size_t size() const { return tsids_.size(); }

private:
    FreeTsids free_;
    std::map<std::tuple<std::string, std::uint32_t, char>, std::uint16_t> tsids_;
};

/// One import: what has been taken so far, and the report on it.
class Import {
public:
    Import(const ChannelList& list, const BitrateEstimates& estimates)
        : estimates_(estimates), nameless_(list.channels) {
        report_.unreadable = list.unreadable;
        for (const Channel& channel : list.channels)
            take(channel);
        report_.nameless_streams = nameless_.size();
        std::sort(report_.unreadable.begin(), report_.unreadable.end(),
                  [](const auto& one, const auto& other) { return one.line < other.line; });
    }

    ImportedChannels report() && { return std::move(report_); }

private:
    void take(const Channel& channel) {
        if (channel.number > 65535)
            return leave_aside(channel, fmt::format("channel number {} is too large, expected at most 65535",
                                                    channel.number));
        Service service;
        service.lcn = static_cast<std::uint16_t>(channel.number);
        service.onid = channel.nid;
        service.tsid = channel.tid;
        if (channel.nid == 0 && channel.tid == 0) {
            service.tsid = nameless_.tsid_of(channel);
            if (service.tsid == 0)
                return leave_aside(channel, "no id is left for a stream without NID and TID");
        }
        const auto [taken, is_first] =
            lines_.emplace(std::tuple(service.onid, service.tsid, service.lcn), channel.line);
        if (!is_first)
            return leave_aside(channel,
                               fmt::format("channel number {} stands in stream {}/{} already, on line {}",
                                           service.lcn, service.onid, service.tsid, taken->second));
        service.name = channel.name;
        service.output_name = channel.name;
        service.sid = channel.sid;
        service.osid = channel.sid;
        set_kind(channel, service);
        if (channel.scrambled)
            set_scrambled(channel, service);
        report_.services.push_back(std::move(service));
    }

    void leave_aside(const Channel& channel, const std::string& reason) {
        report_.unreadable.push_back({channel.line, reason});
    }

    void set_kind(const Channel& channel, Service& service) {
        service.type = type_television;
        switch (kind_of(channel)) {
        case ChannelKind::radio:
            ++report_.radio;
            service.type = type_radio;
            service.bitrate = estimates_.radio;
            service.video_bitrate = 0;
            return;
        case ChannelKind::sd:
            ++report_.sd;
            service.bitrate = estimates_.sd;
            break;
        case ChannelKind::hd:
            ++report_.hd;
            service.video_format = tRec_Servicio::VIDEO_HD;
            service.bitrate = estimates_.hd;
            break;
        }
        service.video_bitrate = service.bitrate;
    }

    /// Each of its PIDs, sound and picture, needs descrambling.
    void set_scrambled(const Channel& channel, Service& service) {
        ++report_.scrambled;
        std::set<std::uint16_t> pids = channel.audio_pids;
        if (channel.video_pid != 0)
            pids.insert(channel.video_pid);
        service.descramble = 1;
        service.ca_pids = static_cast<std::uint16_t>(pids.size());
        // A file that tells the kind outright need not know the PIDs.
        if (channel.kind && pids.empty()) {
            ++report_.without_pids;
            service.ca_pids = typical_pids(*channel.kind);
        }
        service.ca_pids_max = service.ca_pids;
    }

    BitrateEstimates estimates_;
    NamelessStreams nameless_;
    /// Line of each service, by stream and LCN.
    std::map<std::tuple<std::uint16_t, std::uint16_t, std::uint16_t>, std::size_t> lines_;
    ImportedChannels report_;
};

} // namespace

ImportedChannels import_channels(const ChannelList& list, const BitrateEstimates& estimates) {
    return Import(list, estimates).report();
}

} // namespace zarven::tool
