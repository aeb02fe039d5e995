// Explanations for a person: what service it is, one sentence, and a table of what the modules answer.

#ifndef RECALCULO_EXPLANATION_TEXT_H
#define RECALCULO_EXPLANATION_TEXT_H

#include <string>
#include <vector>

#include "placement/explanation.h"

namespace zarven::tool {

/// All of them with an empty line between, in UTF-8.
std::string explanation_text(const std::vector<Explanation>& explanations);

} // namespace zarven::tool

#endif
