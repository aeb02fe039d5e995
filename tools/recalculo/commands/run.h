// `recalculo run`: a head-end in, its placement out.

#ifndef RECALCULO_COMMANDS_RUN_H
#define RECALCULO_COMMANDS_RUN_H

#include <CLI/CLI.hpp>

namespace zarven::tool {

/// Adds the command to the program. It throws `Failure`.
void add_run(CLI::App& app);

} // namespace zarven::tool

#endif
