// The result for a spreadsheet: one line for each service and output, described in docs/tool.md.

#ifndef RECALCULO_RESULT_CSV_H
#define RECALCULO_RESULT_CSV_H

#include <string>

#include "placement/result.h"

namespace zarven::tool {

/// The whole table with its header line, in UTF-8, by RFC 4180.
std::string result_csv(const Result& result);

} // namespace zarven::tool

#endif
