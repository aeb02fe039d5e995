// recalculo: places the services of a head-end onto its modules, from the command line. Each command adds
// itself to the program; here they are called, and what ends them is told.

#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include "base/failure.h"
#include "base/interruption.h"
#include "base/words.h"
#include "commands/program.h"
#include "report/terminal.h"

namespace {

using namespace zarven::tool;

int status(ExitCode code) {
    return static_cast<int>(code);
}

/// Words that could stand where a word was not expected: the options of the command, or the commands.
std::vector<std::string> valid_words(const CLI::App& app, bool options) {
    std::vector<std::string> words;
    const auto chosen = app.get_subcommands();
    const CLI::App& command = chosen.empty() ? app : *chosen.front();
    if (options)
        for (const CLI::Option* option : command.get_options())
            for (const std::string& name : option->get_lnames())
                words.push_back("--" + name);
    else if (chosen.empty())
        for (const CLI::App* candidate : app.get_subcommands({}))
            words.push_back(candidate->get_name());
    return words;
}

/// The message for a command line that cannot be understood.
std::string complaint(const CLI::App* app, const CLI::Error& error) {
    const std::vector<std::string> unexpected = app->remaining(true);
    std::string question;
    if (!unexpected.empty()) {
        const std::string& word = unexpected.front();
        question = did_you_mean(word.substr(0, word.find('=')), valid_words(*app, word.front() == '-'));
    }
    return fmt::format("recalculo: {}{}\nRun with --help for more information.\n", error.what(), question);
}

int dispatch(int argc, char** argv) {
    CLI::App app;
    describe_program(app);
    app.failure_message(complaint);
    try {
        app.parse(argc, argv);
        // Asked here and not by the library, which would pass over a mistyped command and say that one is
        // missing.
        if (app.get_subcommands().empty())
            throw CLI::RequiredError(fmt::format("A command ({})", fmt::join(valid_words(app, false), ", ")));
    } catch (const CLI::ParseError& answer) { // --help and --version arrive here, too
        return app.exit(answer) == 0 ? status(ExitCode::done) : status(ExitCode::bad_input);
    }
    return status(ExitCode::done);
}

} // namespace

int main(int argc, char** argv) {
    interruption::install();
    try {
        return dispatch(argc, argv);
    } catch (const Failure& failure) {
        write_message(fmt::format("recalculo: {}", failure.what()));
        return status(failure.code);
    } catch (const std::exception& error) {
        write_message(fmt::format("recalculo: the engine could not run: {}", error.what()));
        return status(ExitCode::engine_did_not_run);
    }
}
