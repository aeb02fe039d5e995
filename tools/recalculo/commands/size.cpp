// The runs are made elsewhere; here they are counted for whoever waits.

#include "commands/commands.h"

#include <string>
#include <vector>

#include <fmt/format.h>

#include "base/interruption.h"
#include "base/streams.h"
#include "base/workers.h"
#include "commands/standard_input.h"
#include "placement/documents.h"
#include "placement/one_of.h"
#include "placement/running/host.h"
#include "placement/sizing/sizing.h"
#include "report/progress_line.h"
#include "report/sizing_text.h"
#include "report/terminal.h"

namespace zarven::tool {

namespace {

struct SizeInput {
    Headend headend;
    std::vector<Module> kinds;
};

SizeInput read_inputs(const SizeOptions& options) {
    SizeInput input{read_input(options.headend), {}};
    std::vector<std::string> without_price;
    for (const std::string& path : options.add) {
        const KindInput kind = read_kind(path);
        input.kinds.push_back(kind.module);
        if (!kind.has_price)
            without_price.push_back(input_name(path));
    }
    // Without any each module counts as one, and the mix of the fewest is looked for.
    if (without_price.size() != options.add.size())
        for (const std::string& file : without_price)
            write_message(fmt::format(
                "{}: the kind has no price, and one of it counts as {} beside kinds that have one", file,
                Module().price));
    return input;
}

Sizing size_input(const SizeInput& input, const SizeOptions& options) {
    LineOnStandardError line;
    SizingOptions sizing;
    sizing.most = options.most;
    sizing.jobs = options.jobs;
    sizing.are_chosen = options.choose;
    sizing.progress = [&line](std::size_t done, std::size_t planned) {
        line.draw([&] { return std::vector{runs_in_figures(done, planned)}; });
    };
    sizing.is_stopped = interruption::is_pending;
    return size_headend(input.headend, input_name(options.headend.path), input.kinds, sizing);
}

} // namespace

void size_command(const SizeOptions& options) {
    apply(options.limits);
    expect_one_standard_input(standard_inputs(options.headend.path) + standard_inputs(options.add),
                              "the head-end and for --add");
    const host::Log no_log("");
    SizeInput input = read_inputs(options);
    settle_variants(input.headend, input_name(options.headend.path));
    // What has been found is told before the program ends.
    const interruption::Deferred deferred;
    const Sizing sizing = size_input(input, options);
    write_text(standard_stream,
               options.json ? sizing_json(sizing) : sizing_text(sizing, style_of(options.style)));
}

} // namespace zarven::tool
