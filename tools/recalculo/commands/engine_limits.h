// What a run of the engine may take: the options --max-seconds, of every command that runs it, and --max-log.

#ifndef RECALCULO_COMMANDS_ENGINE_LIMITS_H
#define RECALCULO_COMMANDS_ENGINE_LIMITS_H

#include <cstdint>

namespace zarven::tool {

/// 0 for no limit.
struct EngineLimits {
    std::uint32_t seconds = 60;
    /// In millions of bytes.
    std::uint32_t log_megabytes = 1000;
};

/// For all runs of the command.
void apply(const EngineLimits& limits);

} // namespace zarven::tool

#endif
