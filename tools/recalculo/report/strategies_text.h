// The strategies for a person: a table, a row each, and the services on which they differ.

#ifndef RECALCULO_STRATEGIES_TEXT_H
#define RECALCULO_STRATEGIES_TEXT_H

#include <string>

#include "placement/strategies.h"
#include "report/terminal.h"

namespace zarven::tool {

/// The whole section; by default as for a file, in UTF-8.
std::string strategies_text(const Strategies& strategies, const TextStyle& style = {});

} // namespace zarven::tool

#endif
