#include "commands/engine_limits.h"

#include <chrono>

#include "placement/running/host.h"

namespace zarven::tool {

void apply(const EngineLimits& limits) {
    host::RunLimits of_runs;
    if (limits.seconds != 0)
        of_runs.time = std::chrono::seconds(limits.seconds);
    if (limits.log_megabytes != 0)
        of_runs.log_bytes = std::uint64_t{limits.log_megabytes} * 1000000;
    host::limit_runs(of_runs);
}

} // namespace zarven::tool
