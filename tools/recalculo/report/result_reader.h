// The JSON report read back, for the commands that work on a result of before.

#ifndef RECALCULO_RESULT_READER_H
#define RECALCULO_RESULT_READER_H

#include <string>

#include "placement/result.h"

namespace zarven::tool {

/// Reads a result from the text of a file; `file` is for messages. Members that a result does not hold are
/// passed over: a later report may tell more. Throws `Failure`, for a head-end too.
Result read_result(const std::string& file, const std::string& text);

} // namespace zarven::tool

#endif
