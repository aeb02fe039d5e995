// The result for a person: module by module what comes in and what goes out, then what was left out.

#ifndef RECALCULO_REPORT_TEXT_H
#define RECALCULO_REPORT_TEXT_H

#include <string>

#include "placement/result.h"

namespace zarven::tool {

/// The whole report, lines in UTF-8.
std::string text_report(const Result& result);

} // namespace zarven::tool

#endif
