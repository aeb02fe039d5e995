// The bound is read off the engine before it runs, the number to compare it with after.

#include "commands/bound.h"

#include <memory>

#include "base/streams.h"
#include "commands/headend_input.h"
#include "commands/style_input.h"
#include "commands/watched_run.h"
#include "placement/bound.h"
#include "placement/host.h"
#include "report/bound_report.h"

namespace zarven::tool {

namespace {

struct BoundOptions {
    HeadendInput headend;
    StyleInput style;
    bool json = false;
};

void bound_command(const BoundOptions& options) {
    const Headend headend = read_input(options.headend);
    const std::string file = input_name(options.headend.path);
    const host::Log no_log("");
    EngineRun run = load_engine(headend, file);
    const Bound bound = bound_of(run, capacities_of(run));
    run_watched(run, file);
    const Result result = result_of(run, headend.name, Reasons::omitted);
    write_text(standard_stream,
               options.json ? bound_json(bound, result) : bound_text(bound, result, style_of(options.style)));
}

} // namespace

void add_bound(CLI::App& app) {
    const auto options = std::make_shared<BoundOptions>();
    CLI::App* bound =
        app.add_subcommand("bound", "Tell how many services any arrangement of a head-end could place");
    add_headend_input(*bound, options->headend);
    bound->add_flag("--json", options->json, "Report as JSON");
    add_style_input(*bound, options->style);
    bound->callback([options] { bound_command(*options); });
}

} // namespace zarven::tool
