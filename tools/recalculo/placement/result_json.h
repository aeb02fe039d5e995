// The result for a program: the same facts as the text report, described in docs/tool.md. It is read back by
// the commands that work on a result of before.

#ifndef RECALCULO_RESULT_JSON_H
#define RECALCULO_RESULT_JSON_H

#include <string>

#include "placement/result.h"
#include "placement/strategies.h"
#include "records/description.h"
#include "records/document.h"

namespace zarven::tool {

/// The whole result as indented JSON with a final line end, with the strategies if there are any.
std::string result_json(const Result& result, const Strategies* strategies = nullptr);

/// The same on one line, for a program that asks after each change.
std::string result_json_on_one_line(const Result& result);

/// Every result has a summary, and no head-end does.
bool is_result(const Document& document);

/// Reads a result. Members that a result does not hold are passed over: a later report may tell more. Throws
/// `Failure`, for a head-end too.
Result read_result(const Document& document);

/// The same from the text of a file; `file` is for messages.
Result read_result(const std::string& file, const std::string& text);

const RecordDescription& result_description();

} // namespace zarven::tool

#endif
