// Wish lists brought to services that are just imported: those that nobody wishes for are left away.

#ifndef RECALCULO_WISHED_IMPORT_H
#define RECALCULO_WISHED_IMPORT_H

#include <vector>

#include "headend/service_filter.h"
#include "lineup/channel_import.h"
#include "wishes/wish_list.h"
#include "wishes/wishing.h"

namespace zarven::tool {

/// What the wishes mean among the imported services.
Wishing find_wishes(const std::vector<WishList>& lists, const ImportedChannels& imported);

/// Keeps what is wished for, in the order of the lists, but for what the filter, which may ask for groups of
/// the lists, does not want. The wishes then tell the places that the services have now.
void keep_wished(Wishing& wishing, const ServiceFilter& filter, ImportedChannels& imported);

} // namespace zarven::tool

#endif
