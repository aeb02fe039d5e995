// A drill for a person: what comes to the worst in one sentence, a table of failures with the worst first,
// the worst one service by service, and how many spare modules are enough.

#ifndef RECALCULO_DRILL_TEXT_H
#define RECALCULO_DRILL_TEXT_H

#include <string>

#include "placement/failing/drill.h"
#include "report/terminal.h"

namespace zarven::tool {

enum class FailuresShown { worst, all };

/// "module 02:00:00:00:00:01 (Rack 1), the controller", as it comes, not yet fit to be shown.
std::string part_text(const FailedPart& part);

/// What there is to say of a failure besides its numbers; empty as a rule.
std::string remark_on(const DrilledFailure& failure);

/// "3 modules and 5 inputs"
std::string parts_text(const PartCounts& parts);

/// In one or two sentences. Not yet fit to be shown, as it names the worst.
std::string verdict_of(const Drill& drill);

/// How many spares are enough, in one sentence.
std::string answer_of(const Spare& spare, bool is_partial, bool are_musts);

/// By default as for a file, in UTF-8.
std::string drill_text(const Drill& drill, FailuresShown shown = FailuresShown::worst,
                       const TextStyle& style = {});

} // namespace zarven::tool

#endif
