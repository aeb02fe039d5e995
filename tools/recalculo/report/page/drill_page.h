// A drill as a page for a browser, in the frame of the page of a result.

#ifndef RECALCULO_DRILL_PAGE_H
#define RECALCULO_DRILL_PAGE_H

#include <string>

#include "placement/failing/drill.h"

namespace zarven::tool {

/// The whole page, in UTF-8.
std::string drill_page(const Drill& drill);

} // namespace zarven::tool

#endif
