// Reading, running and reporting, in that order; each is done elsewhere.

#include "commands/run.h"

#include <memory>
#include <optional>
#include <string>

#include "base/failure.h"
#include "base/streams.h"
#include "commands/headend_input.h"
#include "commands/report_output.h"
#include "commands/style_input.h"
#include "commands/watched_run.h"
#include "placement/engine_run.h"
#include "placement/host.h"
#include "placement/result.h"
#include "placement/strategies.h"
#include "report/page.h"
#include "report/report_json.h"
#include "report/report_text.h"
#include "report/strategies_text.h"

namespace zarven::tool {

namespace {

struct RunOptions {
    HeadendInput headend;
    ReportOutput output;
    StyleInput style;
    bool pauses = false;
    bool strategies = false;
    /// Empty for no log.
    std::string log;
};

Result run_driver(const RunOptions& options, const Headend& headend, const std::string& file) {
    host::Log log(options.log);
    host::keep_pauses(options.pauses);
    EngineRun run = load_engine(headend, file);
    run_watched(run, file, options.log);
    log.finish();
    return result_of(run, headend.name);
}

/// The log tells the driver's run alone, and only that pauses.
Strategies run_strategies(const Headend& headend, const std::string& file) {
    const host::Log no_log("");
    host::keep_pauses(false);
    return strategies_of(headend, file);
}

std::string text_of(const Result& result, const Strategies* strategies, const TextStyle& style) {
    return (strategies == nullptr ? "" : strategies_text(*strategies, style) + "\n") +
           text_report(result, style);
}

void run_command(const RunOptions& options) {
    check(options.output);
    if (options.strategies && options.output.html == standard_stream)
        throw Failure(
            "--strategies shows nothing on the page that --html - writes in the place of the report; expected "
            "a file for --html");
    if (!options.log.empty() && options.log != standard_stream && options.log == options.output.html)
        throw Failure("--html and --log both write to " + options.log + "; expected two files");
    const std::string file = input_name(options.headend.path);
    const Headend headend = read_input(options.headend);

    const Result result = run_driver(options, headend, file);
    std::optional<Strategies> run_alone;
    if (options.strategies)
        run_alone = run_strategies(headend, file);
    const Strategies* strategies = run_alone ? &*run_alone : nullptr;
    write_reports(
        options.output, [&] { return html_page(result); },
        [&] {
            return options.output.json ? json_report(result, strategies)
                                       : text_of(result, strategies, style_of(options.style));
        });
}

} // namespace

void add_run(CLI::App& app) {
    const auto options = std::make_shared<RunOptions>();
    CLI::App* run = app.add_subcommand("run", "Place the services of a head-end and report where they went");
    add_headend_input(*run, options->headend);
    add_report_output(*run, options->output, "result");
    run->add_flag("--strategies", options->strategies,
                  "Show first what each of the engine's four strategies alone would leave out");
    run->add_flag("--pauses", options->pauses,
                  "Keep the engine's pauses, which take from seconds to minutes");
    run->add_option("--log", options->log, "Write the engine's log to a file; - for standard error")
        ->check(named_file())
        ->type_name("FILE");
    add_style_input(*run, options->style);
    run->callback([options] { run_command(*options); });
}

} // namespace zarven::tool
