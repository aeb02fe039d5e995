// An explanation for a person: what service it is, one sentence, and a table of what the modules answer.

#ifndef RECALCULO_EXPLANATION_TEXT_H
#define RECALCULO_EXPLANATION_TEXT_H

#include <string>

#include "placement/explanation.h"

namespace zarven::tool {

/// The explanation in lines of UTF-8.
std::string explanation_text(const Explanation& explanation);

} // namespace zarven::tool

#endif
