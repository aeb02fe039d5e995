// `recalculo import`: a channel list and modules in, a head-end out.

#ifndef RECALCULO_COMMANDS_IMPORT_H
#define RECALCULO_COMMANDS_IMPORT_H

#include <CLI/CLI.hpp>

namespace zarven::tool {

/// Adds the command to the program. It throws `Failure`; lines left aside are told on standard error.
void add_import(CLI::App& app);

} // namespace zarven::tool

#endif
