// The section of the causes: how many services each keeps out, with links to them, and which limit to raise.

#ifndef RECALCULO_RESULT_CAUSES_H
#define RECALCULO_RESULT_CAUSES_H

#include <cstddef>
#include <string>
#include <vector>

#include <kainjow/mustache.hpp>

#include "placement/reasons/cause.h"
#include "placement/result.h"

namespace zarven::tool {

/// What leads to a service that is not placed, by its section and its place there, from 1; and to a cause.
std::string unplaced_anchor(const std::string& section, std::size_t place);
std::string cause_anchor(Cause cause);

/// Each with the services that it keeps out.
kainjow::mustache::list cause_entries(const Result& result, const std::vector<CauseCount>& causes);

} // namespace zarven::tool

#endif
