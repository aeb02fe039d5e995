// From a channel list to the services of a head-end: numbering, streams, descrambling and estimated bitrates.

#ifndef RECALCULO_CHANNEL_IMPORT_H
#define RECALCULO_CHANNEL_IMPORT_H

#include <cstdint>
#include <vector>

#include "headend/headend.h"
#include "lineup/channel.h"

namespace zarven::tool {

/// Peak bitrate in kbit/s to assume by kind of service, because the list tells none.
struct BitrateEstimates {
    std::uint32_t radio = typical_radio_bitrate;
    std::uint32_t sd = typical_sd_bitrate;
    std::uint32_t hd = typical_hd_bitrate;
};

struct ImportedChannels {
    std::vector<Service> services;
    /// The lines left aside, ascending: those that could not be read and those no service can be made of.
    std::vector<UnreadableLine> unreadable;
    /// Of the services, how many are of each kind.
    std::size_t radio = 0;
    std::size_t sd = 0;
    std::size_t hd = 0;
    std::size_t scrambled = 0;
    /// Scrambled services whose PIDs the list does not know, so that their number is an estimate.
    std::size_t without_pids = 0;
    /// Streams without ids, which have been given some.
    std::size_t nameless_streams = 0;
};

/// Makes a service of each channel.
ImportedChannels import_channels(const ChannelList& list, const BitrateEstimates& estimates);

} // namespace zarven::tool

#endif
