// The strategies for a person: a table, a row each, and the services on which they differ.

#ifndef RECALCULO_STRATEGIES_TEXT_H
#define RECALCULO_STRATEGIES_TEXT_H

#include <string>

#include "placement/strategies.h"

namespace zarven::tool {

/// The whole section, lines in UTF-8.
std::string strategies_text(const Strategies& strategies);

} // namespace zarven::tool

#endif
