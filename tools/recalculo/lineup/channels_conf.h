// The channels.conf form of a channel list: one channel per line in 13 fields with colons between them,
//
//     Name:Frequency:Parameters:Source:Srate:VPID:APID:TPID:CAID:SID:NID:TID:RID
//
// and lines that begin with a colon, which are headings. This file knows the form and nothing of head-ends.

#ifndef RECALCULO_CHANNELS_CONF_H
#define RECALCULO_CHANNELS_CONF_H

#include <string_view>

#include "lineup/channel.h"

namespace zarven::tool {

/// The line, which is not empty, can be of such a list: a heading, or 13 fields.
bool is_channels_conf_line(std::string_view line);

/// Reads a list in UTF-8 or Latin-1. A line that cannot be read keeps its channel number, so that the numbers
/// of those after it do not depend on it.
ChannelList read_channels_conf(std::string_view text);

} // namespace zarven::tool

#endif
