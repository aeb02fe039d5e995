// `recalculo bound`: how many services any arrangement could place.

#ifndef RECALCULO_COMMANDS_BOUND_H
#define RECALCULO_COMMANDS_BOUND_H

#include <CLI/CLI.hpp>

namespace zarven::tool {

/// Adds the command to the program. It throws `Failure`.
void add_bound(CLI::App& app);

} // namespace zarven::tool

#endif
