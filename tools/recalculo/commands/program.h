// The command line as a whole: every command with its options. The program reads it, and the manual is made
// of it.

#ifndef RECALCULO_COMMANDS_PROGRAM_H
#define RECALCULO_COMMANDS_PROGRAM_H

#include <CLI/CLI.hpp>

namespace zarven::tool {

/// Gives the program its name, its description and its commands. The callbacks of the commands throw
/// `Failure`.
void describe_program(CLI::App& program);

} // namespace zarven::tool

#endif
