// What measured rates have changed, and what of them did not match.

#ifndef RECALCULO_MEASURING_TEXT_H
#define RECALCULO_MEASURING_TEXT_H

#include <string>
#include <vector>

#include "headend/headend.h"
#include "measured/measuring.h"
#include "report/message_digest.h"

namespace zarven::tool {

/// One message per line; the last has the numbers. The services are those that were changed, and there is one
/// file at least.
std::vector<std::string> measuring_messages(const std::vector<MeasuredFile>& files,
                                            const std::vector<Service>& services, const Measuring& measuring,
                                            MessageDigest::Extent extent);

} // namespace zarven::tool

#endif
