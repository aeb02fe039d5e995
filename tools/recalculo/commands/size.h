// `recalculo size`: what to change so that everything fits.

#ifndef RECALCULO_COMMANDS_SIZE_H
#define RECALCULO_COMMANDS_SIZE_H

#include <CLI/CLI.hpp>

namespace zarven::tool {

/// Adds the command to the program. It throws `Failure`; progress is told on a terminal.
void add_size(CLI::App& app);

} // namespace zarven::tool

#endif
