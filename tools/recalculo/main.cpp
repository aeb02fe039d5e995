// recalculo: places the services of a head-end onto its modules, from the command line. Each command adds
// itself to the program; here they are called, and what ends them is told.

#include <algorithm>
#include <exception>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include "base/failure.h"
#include "base/interruption.h"
#include "base/streams.h"
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
            words.insert(words.end(), option->get_lnames().begin(), option->get_lnames().end());
    else if (chosen.empty())
        for (const CLI::App* candidate : app.get_subcommands({}))
            words.push_back(candidate->get_name());
    return words;
}

/// The first word typed that has no place, with what was perhaps meant.
std::string stray_word(const CLI::App& app, const std::vector<std::string>& typed) {
    const std::vector<std::string> stray = app.remaining(true);
    const auto first = std::find_first_of(typed.begin(), typed.end(), stray.begin(), stray.end());
    const std::string word = first == typed.end() ? stray.back() : *first;
    // Hyphens say nothing of what was meant.
    const std::size_t begin = std::min(word.find_first_not_of('-'), word.size());
    const std::string name = word.substr(begin, word.find('=') - begin);
    std::string question = did_you_mean(name, valid_words(app, begin != 0));
    if (begin != 0 && !question.empty())
        question.insert(question.find('"') + 1, "--");
    return fmt::format("The following argument was not expected: {}{}", word, question);
}

/// The message for a command line that cannot be understood.
std::string complaint(const CLI::App& app, const CLI::Error& error, const std::vector<std::string>& typed) {
    const bool has_stray_word = dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr;
    return fmt::format("recalculo: {}\nRun with --help for more information.\n",
                       has_stray_word ? stray_word(app, typed) : error.what());
}

int dispatch(int argc, char** argv) {
    CLI::App app;
    describe_program(app);
    app.failure_message([typed = std::vector<std::string>(argv + 1, argv + argc)](const CLI::App* program,
                                                                                  const CLI::Error& error) {
        return complaint(*program, error, typed);
    });
    try {
        app.parse(argc, argv);
        // Asked here and not by the library, which would pass over a mistyped command and say that one is
        // missing.
        if (app.get_subcommands().empty())
            throw CLI::RequiredError(fmt::format("A command ({})", fmt::join(valid_words(app, false), ", ")));
    } catch (const CLI::ParseError& answer) { // --help and --version arrive here, too
        std::ostringstream help;
        if (app.exit(answer, help, std::cerr) != 0)
            return status(ExitCode::bad_input);
        write_text(standard_stream, help.str());
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
