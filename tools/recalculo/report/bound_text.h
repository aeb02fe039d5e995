// The bound of a head-end beside what the engine placed, for a person.

#ifndef RECALCULO_BOUND_TEXT_H
#define RECALCULO_BOUND_TEXT_H

#include <string>

#include "placement/bound.h"
#include "report/terminal.h"

namespace zarven::tool {

/// A sentence, a table of the limits, the services that no module can take, and the audit of the placement;
/// by default as for a file, in UTF-8.
std::string bound_text(const Bound& bound, const Result& result, const TextStyle& style = {});

} // namespace zarven::tool

#endif
