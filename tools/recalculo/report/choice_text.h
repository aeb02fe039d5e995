// A choice of services for a person: what it brings in figures, then the services, by what becomes of them.

#ifndef RECALCULO_CHOICE_TEXT_H
#define RECALCULO_CHOICE_TEXT_H

#include <string>
#include <vector>

#include "placement/choosing/choice.h"
#include "report/caution_text.h"
#include "report/terminal.h"

namespace zarven::tool {

/// In one sentence.
std::string verdict_of(const ChoiceReport& report);

/// What the bound says of the services that must be placed and are not; empty where all are.
std::string proof_of_musts(const ChoiceReport& report);

/// Why the comparison with everything asked for tells little, or why the choice comes to less than that;
/// empty where neither is so.
std::string doubt_of(const ChoiceReport& report);

/// That services withheld were not all tried once more at the end; empty where they were.
std::string remainder_of(const ChoiceReport& report);

/// How many services of the placement to be kept are in another place, where they were, or no longer placed.
std::string moves_in_figures(const MovesAgainstKept& moves, const std::string& kept);

/// What a person who waits is told of the search.
std::vector<std::string> progress_in_figures(const ChoosingProgress& progress, const Headend& headend);

/// `kept` is how the placement is called that is to be kept. By default as for a file, in UTF-8.
std::string choice_text(const ChoiceReport& report, const std::string& kept, const TextStyle& style = {},
                        Extent extent = Extent::few_of_each);

} // namespace zarven::tool

#endif
