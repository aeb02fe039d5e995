// The head-end of a command line: the file, and what is changed in it for one run. Every command that takes a
// head-end takes it this way.

#ifndef RECALCULO_COMMANDS_HEADEND_INPUT_H
#define RECALCULO_COMMANDS_HEADEND_INPUT_H

#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "headend/headend.h"

namespace zarven::tool {

struct HeadendInput {
    std::string path;
    /// Each PATH=VALUE.
    std::vector<std::string> settings;
};

/// Adds the argument HEADEND and the option --set to a command; `input` must outlive the parsing.
void add_headend_input(CLI::App& command, HeadendInput& input);

/// Reads the head-end with its changes. Throws `Failure`.
Headend read_input(const HeadendInput& input);

} // namespace zarven::tool

#endif
