// From a result to a channel list: what stands on the outputs, ready to be imported again.

#ifndef RECALCULO_RESULT_CHANNELS_H
#define RECALCULO_RESULT_CHANNELS_H

#include <string>
#include <vector>

#include "lineup/channel.h"
#include "placement/result.h"

namespace zarven::tool {

struct ChannelExport {
    /// By LCN, then by stream. Their names are as channels.conf can hold them.
    std::vector<Channel> channels;
    /// Channels whose name had to be changed.
    std::size_t renamed = 0;
    /// Services that are no channels of the list, because they are not placed, have no number that a list can
    /// tell, or are clones.
    std::size_t left_out = 0;
    std::size_t neither = 0;
    std::size_t without_lcn = 0;
    std::size_t clones = 0;
};

/// Makes a channel of each service that stands on some output. PIDs and frequencies are made up: a result
/// knows none.
ChannelExport result_channels(const Result& result);

/// What was written of the result in the file, and what was not.
std::string exported_message(const std::string& file, const ChannelExport& exported);

} // namespace zarven::tool

#endif
