// A sizing for a program: the same facts as the text, described in docs/tool.md.

#ifndef RECALCULO_SIZING_JSON_H
#define RECALCULO_SIZING_JSON_H

#include <string>

#include "placement/sizing.h"
#include "records/description.h"

namespace zarven::tool {

/// The whole sizing as indented JSON with a final line end.
std::string sizing_json(const Sizing& sizing);

const RecordDescription& sizing_description();

} // namespace zarven::tool

#endif
