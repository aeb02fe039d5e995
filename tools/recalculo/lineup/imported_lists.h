// Channel lists of one import: what was read of each, all channels together, and the head-end that is made of
// them.

#ifndef RECALCULO_IMPORTED_LISTS_H
#define RECALCULO_IMPORTED_LISTS_H

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "lineup/channel_import.h"
#include "lineup/lineup.h"

namespace zarven::tool {

struct ImportedList {
    std::string file;
    LineupFormat format = LineupFormat::channels_conf;
    std::size_t channels = 0;
    /// Channels to which the file gives no number.
    std::size_t numbered_by_place = 0;
};

/// The lists that have been read, in their order.
struct ImportedLists {
    std::vector<ImportedList> lists;
    ChannelList channels;

    /// Reads one more, as `read_lineup` does. Throws `Failure`.
    void read(const std::string& file, std::string_view text, std::optional<LineupFormat> format);
};

/// The imported services on the modules of a head-end, with what is known of their streams; nothing else of
/// that head-end is kept but its name. Throws `Failure` if there are no services.
Headend headend_of_import(Headend planned, ImportedChannels imported);

} // namespace zarven::tool

#endif
