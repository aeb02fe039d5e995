// The result as a page for a browser: the head-end as a plan, for the planner's meeting. One file that needs
// no network, readable without scripts; a head-end of 480 modules and 8000 services makes some megabytes.

#ifndef RECALCULO_RESULT_PAGE_H
#define RECALCULO_RESULT_PAGE_H

#include <string>

#include "placement/result.h"

namespace zarven::tool {

/// The whole page, in UTF-8.
std::string result_page(const Result& result);

} // namespace zarven::tool

#endif
