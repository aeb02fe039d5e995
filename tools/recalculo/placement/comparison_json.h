// A comparison for a program: the same facts as the text, described in docs/tool.md.

#ifndef RECALCULO_COMPARISON_JSON_H
#define RECALCULO_COMPARISON_JSON_H

#include <string>

#include "placement/comparison.h"
#include "records/description.h"

namespace zarven::tool {

/// The whole comparison as indented JSON with a final line end.
std::string comparison_json(const Comparison& comparison);

const RecordDescription& comparison_description();

} // namespace zarven::tool

#endif
