// The runs are made elsewhere; here they are counted for whoever waits.

#include "commands/commands.h"

#include <optional>
#include <vector>

#include <unistd.h>

#include "base/failure.h"
#include "base/streams.h"
#include "base/workers.h"
#include "headend/headend_json.h"
#include "placement/documents.h"
#include "placement/host.h"
#include "placement/sizing.h"
#include "placement/sizing/further_modules.h"
#include "report/progress_line.h"
#include "report/sizing_text.h"

namespace zarven::tool {

namespace {

Sizing size_input(const SizeOptions& options) {
    const Headend headend = read_input(options.headend);
    const Module kind = read_module(input_name(options.add), read_text(options.add));
    const host::Log no_log("");
    // What the engine refuses of the module is told under its own name.
    load_engine(with_modules({}, kind, 1), input_name(options.add));

    const Surroundings surroundings = surroundings_of(STDERR_FILENO);
    std::optional<DrawnLine> line;
    if (can_redraw(surroundings))
        line.emplace(means_of_standard_error(surroundings));
    SizingOptions sizing;
    sizing.most = options.most;
    sizing.jobs = options.jobs;
    sizing.progress = [&line](std::size_t done, std::size_t planned) {
        if (line)
            line->draw([&] { return std::vector{runs_in_figures(done, planned)}; });
    };
    return size_headend(headend, input_name(options.headend.path), kind, sizing);
}

} // namespace

void size_command(const SizeOptions& options) {
    if (options.headend.path == standard_stream && options.add == standard_stream)
        throw Failure("standard input: found \"-\" for the head-end and for --add, expected it once");
    const Sizing sizing = size_input(options);
    write_text(standard_stream,
               options.json ? sizing_json(sizing) : sizing_text(sizing, style_of(options.style)));
}

} // namespace zarven::tool
