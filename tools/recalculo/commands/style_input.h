// The style of a text report: what the command line says, and what standard output can show. Every command
// with a text report takes it this way.

#ifndef RECALCULO_COMMANDS_STYLE_INPUT_H
#define RECALCULO_COMMANDS_STYLE_INPUT_H

#include <string>

#include "report/terminal.h"

namespace zarven::tool {

struct StyleInput {
    /// One of `colour_choices`.
    std::string colour = "auto";
};

/// The style of a report on standard output.
TextStyle style_of(const StyleInput& input);

} // namespace zarven::tool

#endif
