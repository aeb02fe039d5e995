// What an import tells: lines of the lists that could not be taken, what was imported, and what is an
// estimate.

#ifndef RECALCULO_IMPORT_TEXT_H
#define RECALCULO_IMPORT_TEXT_H

#include <string>
#include <vector>

#include "lineup/channel_import.h"
#include "lineup/lineup.h"
#include "report/message_digest.h"
#include "report/wish_text.h"

namespace zarven::tool {

struct ImportedList {
    std::string file;
    LineupFormat format = LineupFormat::channels_conf;
    std::size_t channels = 0;
    /// Channels to which the file gives no number.
    std::size_t numbered_by_place = 0;
};

/// One message per line. The lists are in the order of `Channel::list`, and there is one at least.
std::vector<std::string> import_messages(const std::vector<ImportedList>& lists,
                                         const ImportedChannels& imported,
                                         const std::vector<MissingWish>& wishes,
                                         MessageDigest::Extent extent);

} // namespace zarven::tool

#endif
