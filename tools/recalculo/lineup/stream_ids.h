// Which stream a channel is in. Lists number streams by ONID and TSID; but some streams have none, and some
// ids stand for several transponders, as on two satellites. Those are told apart by where they are received:
// source, frequency and polarization. A list has up to some thousand streams.

#ifndef RECALCULO_STREAM_IDS_H
#define RECALCULO_STREAM_IDS_H

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "headend/receptions.h"
#include "headend/stream.h"
#include "lineup/channel.h"

namespace zarven::tool {

/// Frequencies so near to each other, in kHz, are those of one transponder: lists round them.
inline constexpr std::uint32_t frequency_tolerance = 3000;

/// The TSIDs that are not taken, as runs: few in a short list, and no steps over the taken ones in a long
/// list.
class FreeTsids {
public:
    void take(std::uint16_t tsid);

    /// The first that is free from start on, and from 1 on behind the last; 0 when none is.
    std::uint16_t first_from(std::uint16_t start) const;

private:
    /// First and last of each run. A stream 0/0 would look like no stream.
    std::map<std::uint16_t, std::uint16_t> runs_{{std::uint16_t{1}, std::uint16_t{65535}}};
};

/// The TSID of a stream may have been given to it: it is what its frequency gives, or the next that was free.
bool is_made_up(std::uint16_t tsid, const Reception& reception);

class StreamIds {
public:
    /// Ids that a channel of the list has are given to no other stream.
    explicit StreamIds(const std::vector<Channel>& channels);

    /// The ids of the channel's stream: its own, unless it has none or another transponder has them. Those
    /// get the frequency, in the largest unit in which it has 16 bits, as TSID, or the next that is free. The
    /// same list gives the same numbers every time. Nothing when no number is left.
    std::optional<Stream> of(const Channel& channel);

    /// Where the streams are received, those without any place too, by the ids that they have been given.
    Receptions receptions() const;

    /// Streams to which ids have been given because they have none of their own.
    std::size_t nameless() const { return nameless_; }

    /// By the ids of the list, the streams that share them, as they have been given; the first has kept them.
    std::map<Stream, std::vector<Stream>> shared() const;

private:
    struct Place {
        std::uint32_t khz = 0;
        char polarization = 0;
        Stream given;
    };

    /// The transponders of one source that have the same ids, by frequency.
    using Places = std::multimap<std::uint32_t, Place>;

    static const Place* find(const Places& places, std::uint32_t khz, char polarization);
    std::optional<Stream> give(const Channel& channel, Stream listed);

    std::map<std::uint16_t, FreeTsids> free_;
    /// By the ids of the list and the source.
    std::map<std::pair<Stream, std::string>, Places> places_;
    /// By the ids of the list, what has been given, in the order of the list.
    std::map<Stream, std::vector<Stream>> given_;
    std::size_t nameless_ = 0;
};

} // namespace zarven::tool

#endif
