// The runs are made elsewhere; here they are counted for whoever waits.

#include "commands/size.h"

#include <cstdio>
#include <memory>

#include <unistd.h>

#include <fmt/format.h>

#include "base/failure.h"
#include "base/streams.h"
#include "base/workers.h"
#include "commands/headend_input.h"
#include "headend/headend_json.h"
#include "placement/host.h"
#include "placement/sizing.h"
#include "report/sizing_report.h"

namespace zarven::tool {

namespace {

struct SizeOptions {
    HeadendInput headend;
    std::string add;
    std::size_t most = SizingOptions().most;
    unsigned jobs = cores();
    bool json = false;
};

/// One line on standard error, written over and over, and wiped out at the end. Nothing where nobody watches.
class ProgressLine {
public:
    ~ProgressLine() {
        if (is_terminal_)
            std::fputs("\r\033[K", stderr);
    }

    void tell(std::size_t done, std::size_t planned) const {
        if (is_terminal_)
            std::fputs(fmt::format("\r\033[K{} of {} runs", done, planned).c_str(), stderr);
    }

private:
    bool is_terminal_ = isatty(STDERR_FILENO) == 1;
};

Sizing size_input(const SizeOptions& options) {
    const Headend headend = read_input(options.headend);
    const Module kind = read_module(input_name(options.add), read_text(options.add));
    const host::Log no_log("");
    // What the engine refuses of the module is told under its own name.
    load_engine(with_modules({}, kind, 1), input_name(options.add));

    const ProgressLine line;
    SizingOptions sizing;
    sizing.most = options.most;
    sizing.jobs = options.jobs;
    sizing.progress = [&line](std::size_t done, std::size_t planned) { line.tell(done, planned); };
    return size_headend(headend, input_name(options.headend.path), kind, sizing);
}

void size_command(const SizeOptions& options) {
    if (options.headend.path == standard_stream && options.add == standard_stream)
        throw Failure("standard input: found \"-\" for the head-end and for --add, expected it once");
    const Sizing sizing = size_input(options);
    write_text(standard_stream, options.json ? sizing_json(sizing) : sizing_text(sizing));
}

} // namespace

void add_size(CLI::App& app) {
    const auto options = std::make_shared<SizeOptions>();
    CLI::App* size = app.add_subcommand("size", "Tell what to change so that all services are placed");
    add_headend_input(*size, options->headend);
    size->add_option("--add", options->add,
                     "The kind of module to add: a module, or a head-end file with one; - for standard input")
        ->type_name("FILE")
        ->required();
    size->add_option("--most", options->most, "The most modules to add")
        ->type_name("N")
        ->check(CLI::Range(0, 10000))
        ->capture_default_str();
    size->add_option("--jobs", options->jobs, "How many runs at once; as many as there are cores by default")
        ->type_name("N")
        ->check(CLI::Range(1, 256));
    size->add_flag("--json", options->json, "Report as JSON");
    size->callback([options] { size_command(*options); });
}

} // namespace zarven::tool
