// Explanations for a program: the same facts as the text, described in docs/tool.md.

#ifndef RECALCULO_EXPLANATION_JSON_H
#define RECALCULO_EXPLANATION_JSON_H

#include <string>
#include <vector>

#include "placement/explanation.h"

namespace zarven::tool {

/// All of them as indented JSON with a final line end; `name` is the head-end's.
std::string explanation_json(const std::string& name, const std::vector<Explanation>& explanations);

} // namespace zarven::tool

#endif
