// A channel list as plain values, whatever the form of its file. Lists have from a hundred to some ten
// thousand channels.

#ifndef RECALCULO_CHANNEL_H
#define RECALCULO_CHANNEL_H

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "lineup/transponder.h"

namespace zarven::tool {

enum class ChannelKind { radio, sd, hd, uhd };

/// Kinds of video stream, as the streams themselves number them.
inline constexpr std::uint16_t video_mpeg2 = 2;
inline constexpr std::uint16_t video_h264 = 27;
inline constexpr std::uint16_t video_hevc = 36;

/// PIDs have 13 bits.
inline constexpr std::uint16_t highest_pid = 8191;

/// One channel, as far as its file tells something that a head-end wants to know.
struct Channel {
    /// Where it begins in the file; lines count from 1.
    std::size_t line = 0;
    /// Of several lists, which one; they count from 0.
    std::size_t list = 0;
    /// Logical channel number; not yet within 16 bits.
    std::uint32_t number = 0;
    /// UTF-8; empty where the file tells none.
    std::string name;
    std::uint32_t frequency = 0;
    /// What else tells apart where it comes from: T, C, S and what names the satellite, as S19.2E, ...
    std::string source;
    /// H, V, L or R for a satellite channel that says so, else 0.
    char polarization = 0;
    Transponder transponder;
    /// Where the file says it in so many words; else it follows from the picture.
    std::optional<ChannelKind> kind;
    /// 0 for radio.
    std::uint16_t video_pid = 0;
    /// Kind of video stream; 0 where the file does not say.
    std::uint16_t video_mode = 0;
    /// PIDs of all sound, Dolby too.
    std::set<std::uint16_t> audio_pids;
    bool scrambled = false;
    std::uint16_t sid = 0;
    std::uint16_t nid = 0;
    std::uint16_t tid = 0;
};

/// What is to be told of a line, or of what begins on it.
struct Remark {
    std::size_t line = 0;
    std::string reason;
    /// Of several lists, which one; they count from 0.
    std::size_t list = 0;
};

struct ChannelList {
    std::vector<Channel> channels;
    /// Why lines, or what begins on them, could not be taken.
    std::vector<Remark> unreadable;
    /// What of a channel could not be taken, and costs no more than that.
    std::vector<Remark> remarks;
    /// Channels to which the file gives no number: they are numbered by their place in it.
    std::size_t numbered_by_place = 0;
};

} // namespace zarven::tool

#endif
