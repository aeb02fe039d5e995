// The section of the service lists: a table for each output as an installer takes it along, with where each
// service comes from and what its receiver is tuned by.

#ifndef RECALCULO_RESULT_LISTS_H
#define RECALCULO_RESULT_LISTS_H

#include <string>

#include <kainjow/mustache.hpp>

#include "placement/result.h"

namespace zarven::tool {

/// Of the outputs that carry something, by module.
kainjow::mustache::list list_entries(const Result& result);

/// The tables alone as markup, to stand in another page.
std::string service_lists_markup(const Result& result);

} // namespace zarven::tool

#endif
