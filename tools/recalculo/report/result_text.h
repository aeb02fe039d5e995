// The result for a person: module by module what comes in and what goes out, then what was left out.

#ifndef RECALCULO_RESULT_TEXT_H
#define RECALCULO_RESULT_TEXT_H

#include <string>

#include "placement/result.h"
#include "report/caution_text.h"
#include "report/terminal.h"

namespace zarven::tool {

/// The whole report; by default as for a file, in UTF-8.
std::string result_text(const Result& result, const TextStyle& style = {},
                        Extent extent = Extent::few_of_each);

/// Its last line.
std::string result_summary_text(const Result& result, const TextStyle& style = {});

} // namespace zarven::tool

#endif
