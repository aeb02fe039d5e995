// The section of the planner's groups, and that of the one-of groups.

#ifndef RECALCULO_RESULT_GROUPS_H
#define RECALCULO_RESULT_GROUPS_H

#include <kainjow/mustache.hpp>

#include "placement/result.h"

namespace zarven::tool {

/// Each with what is placed of it.
kainjow::mustache::list planned_groups(const Result& result);

/// Each with the variant that is asked for.
kainjow::mustache::list asked_variants(const Result& result);

} // namespace zarven::tool

#endif
