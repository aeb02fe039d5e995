// A bound beside what the engine placed, for a program: the same facts as the text, described in
// docs/tool.md.

#ifndef RECALCULO_BOUND_JSON_H
#define RECALCULO_BOUND_JSON_H

#include <string>

#include "placement/bound.h"
#include "records/description.h"

namespace zarven::tool {

/// All of it as indented JSON with a final line end.
std::string bound_json(const Bound& bound, const Result& result);

const RecordDescription& bound_description();

} // namespace zarven::tool

#endif
