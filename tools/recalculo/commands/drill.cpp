// The runs are made elsewhere; here they are counted for whoever waits.

#include "commands/commands.h"

#include <optional>

#include <fmt/format.h>

#include "base/interruption.h"
#include "base/streams.h"
#include "commands/standard_input.h"
#include "placement/documents.h"
#include "placement/failing/drill.h"
#include "placement/one_of.h"
#include "placement/running/host.h"
#include "report/drill_text.h"
#include "report/page/drill_page.h"
#include "report/progress_line.h"

namespace zarven::tool {

namespace {

Drill drill_input(const Headend& headend, const std::optional<Module>& spare,
                  const DrillCommandOptions& options) {
    LineOnStandardError line;
    DrillOptions drill;
    drill.has_streams = options.streams;
    drill.spare = spare;
    drill.most = options.most;
    drill.jobs = options.jobs;
    drill.progress = [&line](std::size_t done, std::size_t planned) {
        line.draw([&] { return std::vector{fmt::format("{} of {} runs", done, planned)}; });
    };
    drill.is_stopped = interruption::is_pending;
    return drill_headend(headend, input_name(options.headend.path), drill);
}

} // namespace

void drill_command(const DrillCommandOptions& options) {
    apply(options.limits);
    check(options.output);
    expect_one_standard_input(standard_inputs(options.headend.path) + standard_inputs(options.spare),
                              "the head-end and for --spare");
    const host::Log no_log("");
    Headend headend = read_input(options.headend);
    settle_variants(headend, input_name(options.headend.path));
    std::optional<Module> spare;
    if (!options.spare.empty())
        spare = read_kind(options.spare).module;
    expect_writable(options.output);
    // What has been found is told before the program ends.
    const interruption::Deferred deferred;
    const Drill drill = drill_input(headend, spare, options);
    write_reports(
        options.output, [&] { return drill_page(drill); },
        [&] {
            return options.output.json
                       ? drill_json(drill)
                       : drill_text(drill, options.all ? FailuresShown::all : FailuresShown::worst,
                                    style_of(options.style));
        });
}

} // namespace zarven::tool
