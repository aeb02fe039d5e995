// What an import tells: lines of the lists that could not be taken, what was imported, and what is an
// estimate.

#ifndef RECALCULO_IMPORT_TEXT_H
#define RECALCULO_IMPORT_TEXT_H

#include <string>
#include <vector>

#include "lineup/channel_import.h"
#include "lineup/imported_lists.h"
#include "report/message_digest.h"
#include "report/wish_text.h"

namespace zarven::tool {

/// One message per line. The lists are in the order of `Channel::list`, and there is one at least.
std::vector<std::string> import_messages(const std::vector<ImportedList>& lists,
                                         const ImportedChannels& imported,
                                         const std::vector<MissingWish>& wishes,
                                         MessageDigest::Extent extent);

} // namespace zarven::tool

#endif
