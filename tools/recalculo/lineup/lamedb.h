// The lamedb form of a channel list, versions 4 and 5: transponders, then services, with hexadecimal ids.
//
//     eDVB services /4/                eDVB services /5/
//     transponders                     t:00c00000:03e9:0001,s:11362000:22000000:0:...
//     00c00000:03e9:0001               s:0065:00c00000:03e9:0001:25:0,"Name",p:Provider,c:000200,C:098c
//     	s 11362000:22000000:0:...
//     /
//     end
//     services
//     0065:00c00000:03e9:0001:25:0
//     Name
//     p:Provider,c:000200,C:098c
//     end
//
// This file knows the form and nothing of head-ends.

#ifndef RECALCULO_LAMEDB_H
#define RECALCULO_LAMEDB_H

#include <cstdint>
#include <string>
#include <string_view>

#include "lineup/channel.h"

namespace zarven::tool {

/// How the first line begins; the version follows.
inline constexpr std::string_view lamedb_header = "eDVB services /";

/// Reads a list in UTF-8 or Latin-1. A service that cannot be read keeps its place in the numbering. Throws
/// `BadLine` (lineup/text_lines.h) for a first line that names no known version.
ChannelList read_lamedb(std::string_view text);

/// Eight hexadecimal digits; `field` is for the complaint. Throws `BadLine`.
std::uint32_t read_namespace(std::string_view field, std::string_view text);

/// As `Channel::source`. The upper half of a namespace is the satellite's place in orbit, in tenths of a
/// degree to the east.
std::string source_of_namespace(std::uint32_t name_space);

} // namespace zarven::tool

#endif
