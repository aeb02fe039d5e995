// The dvbv5 form of a channel list: for each channel a heading with its name, then lines with a key and a
// value,
//
//     [Name]
//         SERVICE_ID = 101
//         VIDEO_PID = 512
//         AUDIO_PID = 650 651
//
// and comments, which begin with #. This file knows the form and nothing of head-ends.

#ifndef RECALCULO_DVBV5_H
#define RECALCULO_DVBV5_H

#include <string_view>

#include "lineup/channel.h"

namespace zarven::tool {

/// Reads a list in UTF-8 or Latin-1. A channel one of whose lines cannot be read is left aside, and keeps its
/// place in the numbering.
ChannelList read_dvbv5(std::string_view text);

} // namespace zarven::tool

#endif
