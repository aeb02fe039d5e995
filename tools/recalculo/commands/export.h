// `recalculo export`: the result of a run in, a channel list or a table out.

#ifndef RECALCULO_COMMANDS_EXPORT_H
#define RECALCULO_COMMANDS_EXPORT_H

#include <CLI/CLI.hpp>

namespace zarven::tool {

/// Adds the command to the program. It throws `Failure`; what a channel list cannot hold is told on standard
/// error.
void add_export(CLI::App& app);

} // namespace zarven::tool

#endif
