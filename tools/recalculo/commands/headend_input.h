// The head-end of a command line: the file, and what is changed in it for one run. Every command that takes a
// head-end takes it this way.

#ifndef RECALCULO_COMMANDS_HEADEND_INPUT_H
#define RECALCULO_COMMANDS_HEADEND_INPUT_H

#include <string>
#include <vector>

#include "headend/headend.h"

namespace zarven::tool {

struct HeadendInput {
    std::string path;
    /// Each PATH=VALUE.
    std::vector<std::string> settings;
};

/// Reads the head-end with its changes. Throws `Failure`.
Headend read_input(const HeadendInput& input);

} // namespace zarven::tool

#endif
