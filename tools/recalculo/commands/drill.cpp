// The runs are made elsewhere; here they are counted for whoever waits.

#include "commands/commands.h"

#include <optional>

#include <fmt/format.h>
#include <unistd.h>

#include "base/failure.h"
#include "base/interruption.h"
#include "base/streams.h"
#include "headend/headend_json.h"
#include "placement/documents.h"
#include "placement/failing/drill.h"
#include "placement/one_of.h"
#include "placement/running/host.h"
#include "placement/sizing/further_modules.h"
#include "report/drill_text.h"
#include "report/page/drill_page.h"
#include "report/progress_line.h"

namespace zarven::tool {

namespace {

std::optional<Module> read_spare(const std::string& path) {
    if (path.empty())
        return {};
    const Module kind = read_json_file(path, read_module);
    // What the engine refuses of the module is told under its own name.
    load_engine(with_modules({}, kind, 1), input_name(path));
    return kind;
}

Drill drill_input(const Headend& headend, const std::optional<Module>& spare,
                  const DrillCommandOptions& options) {
    const Surroundings surroundings = surroundings_of(STDERR_FILENO);
    std::optional<DrawnLine> line;
    if (can_redraw(surroundings))
        line.emplace(means_of_standard_error(surroundings));
    DrillOptions drill;
    drill.has_streams = options.streams;
    drill.spare = spare;
    drill.most = options.most;
    drill.jobs = options.jobs;
    drill.progress = [&line](std::size_t done, std::size_t planned) {
        if (line)
            line->draw([&] { return std::vector{fmt::format("{} of {} runs", done, planned)}; });
    };
    drill.is_stopped = interruption::is_pending;
    return drill_headend(headend, input_name(options.headend.path), drill);
}

} // namespace

void drill_command(const DrillCommandOptions& options) {
    apply(options.limits);
    check(options.output);
    if (options.headend.path == standard_stream && options.spare == standard_stream)
        throw Failure("standard input: found \"-\" for the head-end and for --spare, expected it once");
    const host::Log no_log("");
    Headend headend = read_input(options.headend);
    settle_variants(headend, input_name(options.headend.path));
    const std::optional<Module> spare = read_spare(options.spare);
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
