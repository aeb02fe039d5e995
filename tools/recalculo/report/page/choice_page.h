// A choice of services as a page for a browser, in the frame of the page of a result.

#ifndef RECALCULO_CHOICE_PAGE_H
#define RECALCULO_CHOICE_PAGE_H

#include <string>

#include "placement/choosing/choice.h"

namespace zarven::tool {

/// The whole page, in UTF-8. `kept` is how the placement is called that is to be kept.
std::string choice_page(const ChoiceReport& report, const std::string& kept);

} // namespace zarven::tool

#endif
