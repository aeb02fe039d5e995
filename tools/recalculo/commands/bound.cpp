// The bound is read off the engine before it runs, the number to compare it with after.

#include "commands/commands.h"

#include "base/streams.h"
#include "commands/watched_run.h"
#include "placement/bound.h"
#include "placement/documents.h"
#include "placement/one_of.h"
#include "placement/running/host.h"
#include "report/bound_text.h"

namespace zarven::tool {

void bound_command(const BoundOptions& options) {
    apply(options.limits);
    Headend headend = read_input(options.headend);
    const std::string file = input_name(options.headend.path);
    const host::Log no_log("");
    settle_variants(headend, file);
    EngineRun run = load_engine(headend, file);
    const Bound bound = bound_of(headend, file);
    run_watched(run, file);
    const Result result = result_of(run, headend.name, Reasons::omitted);
    write_text(standard_stream,
               options.json ? bound_json(bound, result) : bound_text(bound, result, style_of(options.style)));
}

} // namespace zarven::tool
