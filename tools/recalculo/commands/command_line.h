// Reading the command line: what was typed becomes the options of a command, which is then performed.

#ifndef RECALCULO_COMMANDS_COMMAND_LINE_H
#define RECALCULO_COMMANDS_COMMAND_LINE_H

#include "base/failure.h"
#include "commands/program.h"

namespace zarven::tool {

/// Performs the command that was typed, or answers --help or --version. What cannot be understood is told on
/// standard error. Throws `Failure` where the command does.
ExitCode perform(const Program& program, int argc, char** argv);

} // namespace zarven::tool

#endif
