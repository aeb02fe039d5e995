// An explanation for a person: what service it is, one sentence, and a table of what the modules answer.

#ifndef RECALCULO_EXPLANATION_TEXT_H
#define RECALCULO_EXPLANATION_TEXT_H

#include <cstddef>
#include <string>

#include "placement/reasons/explanation.h"
#include "report/terminal.h"

namespace zarven::tool {

/// By default as for a file, in UTF-8.
std::string explanation_text(const Explanation& explanation, const TextStyle& style = {});

/// What stands after explanations of services that are on no output: what the figures hold for.
std::string explanations_caveat_text(const TextStyle& style);

/// What stands after explanations of single services: what is broken in the whole head-end, in numbers; empty
/// if nothing.
std::string broken_elsewhere_text(const Broken& broken, const TextStyle& style);

} // namespace zarven::tool

#endif
