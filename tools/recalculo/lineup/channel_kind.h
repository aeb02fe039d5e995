// What kind of service a channel is: as the list tells it, by its PIDs and its picture, and where these are
// silent by its name.

#ifndef RECALCULO_CHANNEL_KIND_H
#define RECALCULO_CHANNEL_KIND_H

#include <optional>
#include <string_view>

#include "lineup/channel.h"

namespace zarven::tool {

struct KindFinding {
    ChannelKind kind = ChannelKind::sd;
    /// Nothing but the name, or not even that, speaks for the kind.
    bool is_unknown = false;
    /// There is a picture of which the list tells no more, and the name says what it is.
    bool is_by_name = false;
};

/// What a name says: UHD or 4K, HD, Radio. Capital letters may end a word, as in "ServusHD"; in any case they
/// may be a word of their own.
std::optional<ChannelKind> kind_by_name(std::string_view name);

/// A channel without PIDs is of unknown kind, and taken for what its name says or for SD.
KindFinding find_kind(const Channel& channel);

} // namespace zarven::tool

#endif
