// Reading, running and reporting, in that order; each is done elsewhere.

#include "commands/commands.h"

#include <optional>
#include <string>

#include "base/failure.h"
#include "base/streams.h"
#include "commands/fail_on.h"
#include "commands/live_output.h"
#include "commands/standard_input.h"
#include "commands/watched_run.h"
#include "placement/one_of.h"
#include "placement/result.h"
#include "placement/result_json.h"
#include "placement/running/engine_run.h"
#include "placement/running/host.h"
#include "placement/sizing/advising.h"
#include "placement/strategies.h"
#include "report/page/result_page.h"
#include "report/result_text.h"
#include "report/strategies_text.h"

namespace zarven::tool {

namespace {

Result run_driver(const RunOptions& options, const Headend& headend, const std::string& file) {
    host::Log log(options.log);
    host::keep_pauses(options.pauses);
    EngineRun run = load_engine(headend, file);
    run_watched(run, file, options.log);
    log.finish();
    const bool are_reasons_told = !options.summary || !options.output.html.empty();
    return result_of(run, headend.name, are_reasons_told ? Reasons::told : Reasons::omitted);
}

/// The log tells the driver's run alone, and only that pauses.
Advice look_for_advice(const Headend& headend, const std::string& file, const Result& result,
                       std::uint32_t trials) {
    const host::Log no_log("");
    host::keep_pauses(false);
    return advice_for(headend, file, result, trials);
}

void settle(Headend& headend, const std::string& file) {
    const host::Log no_log("");
    host::keep_pauses(false);
    settle_variants(headend, file);
}

Strategies run_strategies(const Headend& headend, const std::string& file) {
    const host::Log no_log("");
    host::keep_pauses(false);
    return strategies_of(headend, file);
}

std::string text_of(const Result& result, const Strategies* strategies, const RunOptions& options) {
    const TextStyle style = style_of(options.style);
    return (strategies == nullptr ? "" : strategies_text(*strategies, style) + "\n") +
           (options.summary ? result_summary_text(result, style)
                            : result_text(result, style, extent_of(options.wishes.verbose)));
}

} // namespace

void run_command(const RunOptions& options) {
    apply(options.limits);
    const Reserve reserve = reserve_of(options.reserve);
    // The log's "-" is standard error.
    check(options.output,
          {{"--log", options.log == standard_stream ? "" : options.log}, {"--live", options.live}});
    if (options.summary && options.output.json)
        throw Failure(
            "--summary and --json are two reports; expected one of them: that of --json has the summary");
    if (options.summary && options.output.html == standard_stream)
        throw Failure("--summary and --html - both write to standard output; expected a file for --html");
    if (options.strategies && options.output.html == standard_stream)
        throw Failure(
            "--strategies shows nothing on the page that --html - writes in the place of the report; expected "
            "a file for --html");
    expect_one_standard_input(is_standard_input_in(options.filter.selections) +
                                  is_standard_input_in(options.wishes.files),
                              "--select and for --wish");
    const std::string file = input_name(options.headend.path);
    Headend headend = read_input(options.headend);
    ask_for_wishes(options.wishes, options.headend.path, headend);
    withhold_unwanted(options.filter, options.headend.path, headend);
    settle(headend, file);
    if (!options.live.empty())
        write_live_page(options.live, headend);
    Result result = run_driver(options, headend, file);
    set_reserve(result, reserve);
    result.advice = look_for_advice(headend, file, result, options.trials);
    std::optional<Strategies> run_alone;
    if (options.strategies)
        run_alone = run_strategies(headend, file);
    const Strategies* strategies = run_alone ? &*run_alone : nullptr;
    write_reports(
        options.output, [&] { return result_page(result); },
        [&] {
            return options.output.json ? result_json(result, strategies)
                                       : text_of(result, strategies, options);
        });
    fail_on(options.fail_on, result.counts, result.findings, file);
}

} // namespace zarven::tool
