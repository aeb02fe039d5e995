// recalculo: places the services of a head-end onto its modules, from the command line. Here the command line
// is read and handed to its command.

#include <csignal>
#include <cstdio>
#include <exception>
#include <string>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include "command_import.h"
#include "command_run.h"
#include "failure.h"
#include "utf8.h"

namespace {

using namespace zarven::tool;

void describe_run(CLI::App& app, RunOptions& options) {
    CLI::App* run = app.add_subcommand("run", "Place the services of a head-end and report where they went");
    run->add_option("HEADEND", options.headend, "The head-end, a JSON file; - for standard input")
        ->required();
    run->add_flag("--json", options.json, "Report as JSON");
    run->add_flag("--pauses", options.pauses, "Keep the engine's pauses, which take from seconds to minutes");
    run->add_option("--log", options.log, "Write the engine's log to a file; - for standard error")
        ->type_name("FILE");
    run->callback([&options] { run_command(options); });
}

void describe_import(CLI::App& app, ImportOptions& options) {
    CLI::App* import = app.add_subcommand("import", "Make a head-end of a channel list and modules");
    import->add_option("CHANNELS", options.channels, "The list, a channels.conf file; - for standard input")
        ->type_name("")
        ->required();
    import
        ->add_option("--modules", options.modules,
                     "A head-end file whose modules to take; - for standard input")
        ->type_name("FILE")
        ->required();
    import->add_option("-o,--output", options.output, "Where to write the head-end; - for standard output")
        ->type_name("FILE")
        ->capture_default_str();
    const auto add_estimate = [import](const char* name, std::uint32_t& bitrate, const char* description) {
        import->add_option(name, bitrate, description)->type_name("KBITS")->capture_default_str();
    };
    add_estimate("--radio-bitrate", options.estimates.radio,
                 "Bitrate to assume for a radio service, in kbit/s");
    add_estimate("--sd-bitrate", options.estimates.sd, "Bitrate to assume for an SD service, in kbit/s");
    add_estimate("--hd-bitrate", options.estimates.hd, "Bitrate to assume for an HD service, in kbit/s");
    import->callback([&options] { import_command(options);
});
} // namespace

int status(ExitCode code) {
    return static_cast<int>(code);
}

/// The message for a command line that cannot be understood.
std::string complaint(const CLI::App*, const CLI::Error& error) {
    return fmt::format("recalculo: {}\nRun with --help for more information.\n", error.what());
}

int dispatch(int argc, char** argv) {
    CLI::App app("Places the television services of a head-end onto its modules.", "recalculo");
    RunOptions run_options;
    describe_run(app, run_options);
    ImportOptions import_options;
    describe_import(app, import_options);
    const std::string version = "recalculo " RECALCULO_VERSION;
    app.set_version_flag("--version", version);
    for (CLI::App* command : app.get_subcommands({}))
        command->set_version_flag("--version", version);
    app.failure_message(complaint);
    try {
        app.parse(argc, argv);
        // Asked here and not by the library, which would pass over a mistyped command and say that one is
        // missing.
        if (app.get_subcommands().empty())
            throw CLI::RequiredError("A command, run or import,");
    } catch (const CLI::ParseError& answer) { // --help and --version arrive here, too
        return app.exit(answer) == 0 ? status(ExitCode::done) : status(ExitCode::bad_input);
    }
    return status(ExitCode::done);
}

} // namespace

int main(int argc, char** argv) {
    // A reader that goes away is told like any other failure to write.
    std::signal(SIGPIPE, SIG_IGN);
    try {
        return dispatch(argc, argv);
    } catch (const Failure& failure) {
        fmt::print(stderr, "recalculo: {}\n", printable(failure.what()));
        return status(failure.code);
    } catch (const std::exception& error) {
        fmt::print(stderr, "recalculo: the engine could not run: {}\n", error.what());
        return status(ExitCode::engine_did_not_run);
    }
}
