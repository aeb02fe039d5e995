// recalculo: places the services of a head-end onto its modules, from the command line. Each command adds
// itself to the program; here they are called, and what ends them is told.

#include <csignal>
#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include "base/failure.h"
#include "base/utf8.h"
#include "commands/explain.h"
#include "commands/import.h"
#include "commands/run.h"

namespace {

using namespace zarven::tool;

int status(ExitCode code) {
    return static_cast<int>(code);
}

/// The message for a command line that cannot be understood.
std::string complaint(const CLI::App*, const CLI::Error& error) {
    return fmt::format("recalculo: {}\nRun with --help for more information.\n", error.what());
}

int dispatch(int argc, char** argv) {
    CLI::App app("Places the television services of a head-end onto its modules.", "recalculo");
    add_run(app);
    add_explain(app);
    add_import(app);
    const std::string version = "recalculo " RECALCULO_VERSION;
    app.set_version_flag("--version", version);
    std::vector<std::string> names;
    for (CLI::App* command : app.get_subcommands({})) {
        command->set_version_flag("--version", version);
        names.push_back(command->get_name());
    }
    app.failure_message(complaint);
    try {
        app.parse(argc, argv);
        // Asked here and not by the library, which would pass over a mistyped command and say that one is
        // missing.
        if (app.get_subcommands().empty())
            throw CLI::RequiredError(fmt::format("A command ({})", fmt::join(names, ", ")));
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
