// `recalculo run`: a head-end in, its placement out.

#ifndef RECALCULO_COMMAND_RUN_H
#define RECALCULO_COMMAND_RUN_H

#include <string>

namespace zarven::tool {

struct RunOptions {
    std::string headend;
    bool json = false;
    bool pauses = false;
    /// Empty for no log.
    std::string log;
};

/// Throws `Failure`.
void run_command(const RunOptions& options);

} // namespace zarven::tool

#endif
