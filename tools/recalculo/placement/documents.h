// The documents that are written whole and not read back, for a program: the same facts as the texts,
// described in docs/tool.md. Each is indented JSON with a final line end.

#ifndef RECALCULO_DOCUMENTS_H
#define RECALCULO_DOCUMENTS_H

#include <string>

#include "placement/bound.h"
#include "placement/change/comparison.h"
#include "placement/choosing/choice.h"
#include "placement/failing/drill.h"
#include "placement/sizing/sizing.h"
#include "records/description.h"

namespace zarven::tool {

/// A bound beside what the engine placed.
std::string bound_json(const Bound& bound, const Result& result);

const RecordDescription& bound_description();

std::string choice_json(const ChoiceReport& report);

const RecordDescription& choice_description();

std::string comparison_json(const Comparison& comparison);

const RecordDescription& comparison_description();

std::string drill_json(const Drill& drill);

const RecordDescription& drill_description();

std::string sizing_json(const Sizing& sizing);

const RecordDescription& sizing_description();

} // namespace zarven::tool

#endif
