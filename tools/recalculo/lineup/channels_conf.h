// The channels.conf form of a channel list: one channel per line in 13 fields with colons between them,
//
//     Name:Frequency:Parameters:Source:Srate:VPID:APID:TPID:CAID:SID:NID:TID:RID
//
// and lines that begin with a colon, which are headings. This file knows the form and nothing of head-ends.

#ifndef RECALCULO_CHANNELS_CONF_H
#define RECALCULO_CHANNELS_CONF_H

#include <string>
#include <string_view>
#include <vector>

#include "lineup/channel.h"

namespace zarven::tool {

/// The line, which is not empty, can be of such a list: a heading, or 13 fields.
bool is_channels_conf_line(std::string_view line);

/// Reads a list in UTF-8 or Latin-1. A line that cannot be read keeps its channel number, so that the numbers
/// of those after it do not depend on it.
ChannelList read_channels_conf(std::string_view text);

/// The name as the form can hold it: it has no means to write a semicolon, a bar or a line end. Other
/// control characters, which a terminal would obey, are replaced.
std::string channels_conf_name(std::string_view name);

/// Writes a list, each channel after a heading with its number where that is not the next one. Names must be
/// as `channels_conf_name` gives them. What a channel of ours does not know is written as on a typical cable.
std::string write_channels_conf(const std::vector<Channel>& channels);

} // namespace zarven::tool

#endif
