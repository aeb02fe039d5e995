// Reading, running and reporting, in that order; each is done elsewhere.

#include "commands/run.h"

#include <memory>
#include <string>

#include "base/streams.h"
#include "commands/headend_input.h"
#include "placement/engine_run.h"
#include "placement/host.h"
#include "placement/result.h"
#include "report/report_json.h"
#include "report/report_text.h"

namespace zarven::tool {

namespace {

struct RunOptions {
    HeadendInput headend;
    bool json = false;
    bool pauses = false;
    /// Empty for no log.
    std::string log;
};

void run_command(const RunOptions& options) {
    const std::string file = input_name(options.headend.path);
    const Headend headend = read_input(options.headend);

    host::Log log(options.log);
    host::keep_pauses(options.pauses);
    EngineRun run = load_engine(headend, file);
    run_engine(run, file);
    log.finish();

    const Result result = result_of(run, headend.name);
    write_text(standard_stream, options.json ? json_report(result) : text_report(result));
}

} // namespace

void add_run(CLI::App& app) {
    const auto options = std::make_shared<RunOptions>();
    CLI::App* run = app.add_subcommand("run", "Place the services of a head-end and report where they went");
    add_headend_input(*run, options->headend);
    run->add_flag("--json", options->json, "Report as JSON");
    run->add_flag("--pauses", options->pauses,
                  "Keep the engine's pauses, which take from seconds to minutes");
    run->add_option("--log", options->log, "Write the engine's log to a file; - for standard error")
        ->type_name("FILE");
    run->callback([options] { run_command(*options); });
}

} // namespace zarven::tool
