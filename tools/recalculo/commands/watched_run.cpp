// The line goes to standard error, so that a report can be sent elsewhere meanwhile.

#include "commands/watched_run.h"

#include <optional>

#include <unistd.h>

#include "base/streams.h"
#include "placement/result.h"
#include "placement/running/host.h"
#include "report/progress_line.h"
#include "report/terminal.h"

namespace zarven::tool {

void run_watched(EngineRun& run, const std::string& file, const std::string& log) {
    const Surroundings surroundings = surroundings_of(STDERR_FILENO);
    std::optional<ProgressLine> line;
    // A log on standard error tells more, and two cannot write there.
    if (can_redraw(surroundings) && log != standard_stream)
        line.emplace(means_of_standard_error(surroundings), [&run] { return services_left(run.engine); });
    const host::Watching watching(line ? &*line : nullptr);
    run_engine(run, file);
}

} // namespace zarven::tool
