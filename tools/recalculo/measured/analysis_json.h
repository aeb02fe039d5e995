// The analysis of a stream as `tsanalyze --json` writes it, one object for a file. The order of its members
// means nothing, and there are far more of them than are read here.

#ifndef RECALCULO_ANALYSIS_JSON_H
#define RECALCULO_ANALYSIS_JSON_H

#include <string>

#include "measured/measurement.h"

namespace zarven::tool {

/// Reads one object. `place` is for messages. Throws `Failure`.
Measurement read_analysis(const std::string& place, const std::string& text);

} // namespace zarven::tool

#endif
