// Two placements side by side as a page for a browser, in the frame of the page of a result.

#ifndef RECALCULO_COMPARISON_PAGE_H
#define RECALCULO_COMPARISON_PAGE_H

#include <string>

#include "placement/change/comparison.h"
#include "report/comparison_text.h"

namespace zarven::tool {

/// The whole page, in UTF-8.
std::string comparison_page(const Comparison& comparison, const ComparedFiles& files);

} // namespace zarven::tool

#endif
