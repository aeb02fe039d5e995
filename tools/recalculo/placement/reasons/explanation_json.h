// An explanation for a program: the same facts as the text, described in docs/tool.md. The answer to a
// command is one JSON document that is written piece by piece, because in a large head-end all of it may not
// fit into memory.

#ifndef RECALCULO_EXPLANATION_JSON_H
#define RECALCULO_EXPLANATION_JSON_H

#include <string>
#include <vector>

#include "placement/reasons/explanation.h"
#include "records/description.h"

namespace zarven::tool {

/// What stands before the first explanation: name, causes and advice of the result.
std::string explanations_json_begin(const Result& result);

/// One explanation. Between two of them stands a comma.
std::string explanation_json(const Explanation& explanation);

/// What stands after the last, with all that the audit found.
std::string explanations_json_end(const std::vector<Finding>& findings);

const RecordDescription& explanations_description();

} // namespace zarven::tool

#endif
