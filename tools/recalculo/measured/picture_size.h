// What a picture is, by its size in a description that people read, as "AVC video (1920x1080, high profile)".

#ifndef RECALCULO_PICTURE_SIZE_H
#define RECALCULO_PICTURE_SIZE_H

#include <optional>
#include <string_view>

#include "lineup/channel.h"

namespace zarven::tool {

/// SD, HD or UHD; nothing where no size is told.
std::optional<ChannelKind> kind_by_size(std::string_view description);

} // namespace zarven::tool

#endif
