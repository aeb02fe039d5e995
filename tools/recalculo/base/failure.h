// Failure: what ends a command before its work is done. It carries the one message for standard error and the
// exit code that the shell sees.

#ifndef RECALCULO_FAILURE_H
#define RECALCULO_FAILURE_H

#include <stdexcept>
#include <string>

namespace zarven::tool {

enum class ExitCode : int {
    /// The command did its work; services left out are a result, not a failure.
    done = 0,
    /// The input was read, and the work could not be done with it: the engine could not run, or there is
    /// nothing to import.
    engine_did_not_run = 1,
    /// The command line, a file or its contents are at fault.
    bad_input = 2,
    /// `--fail-on broken`: the work is done, and something in the placement is broken.
    broken = 3,
    /// `--fail-on left-out`: the work is done, and services or clones have no place.
    left_out = 4,
};

struct Failure : std::runtime_error {
    explicit Failure(const std::string& message, ExitCode exit_code = ExitCode::bad_input)
        : std::runtime_error(message), code(exit_code) {}

    ExitCode code;
};

} // namespace zarven::tool

#endif
