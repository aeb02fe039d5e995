// `recalculo explain`: why services are left out, and what each module answers.

#ifndef RECALCULO_COMMANDS_EXPLAIN_H
#define RECALCULO_COMMANDS_EXPLAIN_H

#include <CLI/CLI.hpp>

namespace zarven::tool {

/// Adds the command to the program. It throws `Failure`.
void add_explain(CLI::App& app);

} // namespace zarven::tool

#endif
