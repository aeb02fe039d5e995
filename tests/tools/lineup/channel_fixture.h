// Channels for the tests of an import, and the import of them.

#ifndef RECALCULO_CHANNEL_FIXTURE_H
#define RECALCULO_CHANNEL_FIXTURE_H

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "lineup/channel_import.h"

namespace zarven::tool {

/// A television channel of stream 1/1011; the fields that the tests vary come first.
inline Channel channel(std::uint32_t number, std::uint16_t video_pid = 6110, std::uint16_t video_mode = 2) {
    Channel made;
    made.line = number;
    made.sid = static_cast<std::uint16_t>(11110 + number);
    made.number = number;
    made.name = "Canal";
    made.frequency = 11362;
    made.source = "S19.2E";
    made.polarization = 'H';
    made.video_pid = video_pid;
    made.video_mode = video_mode;
    made.audio_pids = {6120, 6121};
    made.nid = 1;
    made.tid = 1011;
    return made;
}

inline Channel nameless(std::uint32_t number, std::uint32_t frequency, char polarization = 'H',
                        const std::string& source = "S19.2E") {
    Channel made = channel(number);
    made.nid = 0;
    made.tid = 0;
    made.frequency = frequency;
    made.polarization = polarization;
    made.source = source;
    return made;
}

inline ImportedChannels import(std::vector<Channel> channels, const BitrateEstimates& estimates = {}) {
    ChannelList list;
    list.channels = std::move(channels);
    return import_channels(list, estimates);
}

/// A channel of stream 65535/1, received anywhere.
inline Channel shared_ids(std::uint32_t number, std::uint32_t frequency, char polarization = 'H',
                          const std::string& source = "S19.2E") {
    Channel made = nameless(number, frequency, polarization, source);
    made.nid = 65535;
    made.tid = 1;
    return made;
}

} // namespace zarven::tool

#endif
