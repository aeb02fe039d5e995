// `recalculo compare`: two placements side by side.

#ifndef RECALCULO_COMMANDS_COMPARE_H
#define RECALCULO_COMMANDS_COMPARE_H

#include <CLI/CLI.hpp>

namespace zarven::tool {

/// Adds the command to the program. It throws `Failure`.
void add_compare(CLI::App& app);

} // namespace zarven::tool

#endif
