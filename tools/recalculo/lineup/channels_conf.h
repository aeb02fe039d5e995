// The channels.conf form of a channel list: one channel per line in 13 fields with colons between them,
//
//     Name:Frequency:Parameters:Source:Srate:VPID:APID:TPID:CAID:SID:NID:TID:RID
//
// and lines that begin with a colon, which are headings. This file knows the form and nothing of head-ends.
// Lists have from a hundred to some ten thousand lines.

#ifndef RECALCULO_CHANNELS_CONF_H
#define RECALCULO_CHANNELS_CONF_H

#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace zarven::tool {

/// One channel, as far as its line tells something that a head-end wants to know.
struct Channel {
    /// Line in the file, from 1.
    std::size_t line = 0;
    /// Counted from 1 along the list, or from the last `:@N`.
    std::uint32_t number = 0;
    /// The long name, UTF-8.
    std::string name;
    std::uint32_t frequency = 0;
    /// Where it comes from: S19.2E, T, C, ...
    std::string source;
    /// H, V, L or R for a satellite channel that says so, else 0.
    char polarization = 0;
    /// 0 for radio.
    std::uint16_t video_pid = 0;
    /// Kind of video stream; 0 where the line does not say.
    std::uint16_t video_mode = 0;
    /// PIDs of all sound, Dolby too.
    std::set<std::uint16_t> audio_pids;
    bool scrambled = false;
    std::uint16_t sid = 0;
    std::uint16_t nid = 0;
    std::uint16_t tid = 0;
};

/// Why a line could not be taken.
struct UnreadableLine {
    std::size_t line = 0;
    std::string reason;
};

struct ChannelList {
    std::vector<Channel> channels;
    std::vector<UnreadableLine> unreadable;
};

/// Reads a list in UTF-8 or Latin-1. A line that cannot be read keeps its channel number, so that the numbers
/// of those after it do not depend on it.
ChannelList read_channels_conf(std::string_view text);

} // namespace zarven::tool

#endif
