// An explanation for a person: what service it is, one sentence, and a table of what the modules answer.

#ifndef RECALCULO_EXPLANATION_TEXT_H
#define RECALCULO_EXPLANATION_TEXT_H

#include <string>

#include "placement/explanation.h"
#include "report/terminal.h"

namespace zarven::tool {

/// By default as for a file, in UTF-8.
std::string explanation_text(const Explanation& explanation, const TextStyle& style = {});

} // namespace zarven::tool

#endif
