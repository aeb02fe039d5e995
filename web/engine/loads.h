// How full the outputs are, in one word each: what the page colours them by.

#ifndef RECALCULO_WEB_LOADS_H
#define RECALCULO_WEB_LOADS_H

#include <string>
#include <vector>

#include "placement/result.h"

namespace zarven::web {

/// For each module and each of its outputs: "broken" beyond its limits, "full" with little left as
/// comparisons count it, "high" from three quarters on, else "free".
std::vector<std::vector<std::string>> loads_of(const tool::Result& result);

} // namespace zarven::web

#endif
