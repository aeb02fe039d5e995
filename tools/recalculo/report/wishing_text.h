// What is told of wish lists: which wishes no service meets, what was taken for others, and what became of
// their LCNs.

#ifndef RECALCULO_WISHING_TEXT_H
#define RECALCULO_WISHING_TEXT_H

#include <string>
#include <vector>

#include "report/message_digest.h"
#include "wishes/wishing.h"

namespace zarven::tool {

/// One message per line; the last of each list has its numbers. The services are those among which the wishes
/// were found.
std::vector<std::string> wishing_messages(const std::vector<WishList>& lists,
                                          const std::vector<Service>& services, const Wishing& wishing,
                                          MessageDigest::Extent extent);

/// The same of the LCNs that were taken over; the services have them already.
std::vector<std::string> lcn_messages(const std::vector<WishList>& lists,
                                      const std::vector<Service>& services, const Wishing& wishing,
                                      MessageDigest::Extent extent);

} // namespace zarven::tool

#endif
