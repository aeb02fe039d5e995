// The only file that knows CLI11, which takes longer to compile than all else that the commands need.

#include "commands/command_line.h"

#include <algorithm>
#include <iostream>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include "base/streams.h"
#include "base/words.h"
#include "report/terminal.h"

namespace zarven::tool {

namespace {

/// The library would take an empty text for 0.
CLI::Validator is_no_empty_number(const std::optional<Option::Range>& range) {
    return {[range](std::string& number) -> std::string {
                if (!number.empty())
                    return "";
                return "found \"\", expected a whole number" +
                       (range ? fmt::format(" from {} to {}", range->least, range->most) : "");
            },
            ""};
}

/// Adds an option to the program or to one of its commands.
class OptionAdder {
public:
    OptionAdder(CLI::App& app, const Option& option, const std::string& version)
        : app_(app), option_(option), version_(version),
          names_(fmt::format("{}", fmt::join(option.names, ","))) {}

    void operator()(Answer answer) const {
        if (answer == Answer::help)
            app_.set_help_flag(names_, option_.description);
        else
            app_.set_version_flag(names_, version_, option_.description);
    }
    void operator()(bool* target) const { app_.add_flag(names_, *target, option_.description); }
    /// Of an option one value each time, so that an argument may follow.
    void operator()(std::vector<std::string>* target) const {
        restrict(app_.add_option(names_, *target, option_.description))
            ->allow_extra_args(is_argument(option_));
    }
    /// The library would take an empty text for none.
    void operator()(std::optional<std::string>* target) const {
        restrict(app_.add_option_function<std::string>(
            names_, [target](const std::string& text) { *target = text; }, option_.description));
    }
    void operator()(std::string* target) const {
        restrict(app_.add_option(names_, *target, option_.description));
    }
    void operator()(std::uint32_t* target) const {
        restrict(
            app_.add_option(names_, *target, option_.description)->check(is_no_empty_number(option_.range)));
    }

private:
    CLI::Option* restrict(CLI::Option* added) const;

    CLI::App& app_;
    const Option& option_;
    const std::string& version_;
    std::string names_;
};

CLI::Validator is_one_of(const std::vector<std::string>& words) {
    return {[words](std::string& word) -> std::string {
                if (std::find(words.begin(), words.end(), word) != words.end())
                    return "";
                return fmt::format("found \"{}\", expected one of {}{}", word, fmt::join(words, ", "),
                                   did_you_mean(word, words));
            },
            ""};
}

CLI::Validator is_named() {
    return {[](std::string& path) -> std::string {
                return path.empty() ? "found an empty name, expected that of a file" : "";
            },
            ""};
}

CLI::Option* OptionAdder::restrict(CLI::Option* added) const {
    added->type_name(option_.value)->default_str(option_.fallback);
    added->required(option_.is_required || (is_argument(option_) && !option_.may_be_missing));
    if (!option_.words.empty())
        added->check(is_one_of(option_.words));
    if (option_.is_named_file)
        added->check(is_named());
    // Without a description, which the option's value tells.
    if (option_.range)
        added->check(CLI::Range(option_.range->least, option_.range->most).description(""));
    return added;
}

void add_options(CLI::App& app, const Command& command, const std::string& version) {
    for (const Option& option : command.options)
        std::visit(OptionAdder(app, option, version), option.target);
}

void add_program(CLI::App& app, const Program& program) {
    app.name(program.itself.name);
    app.description(program.itself.description);
    // A second one would run after the first, and take a file of its name for a command.
    app.require_subcommand(0, 1);
    add_options(app, program.itself, program.version);
    for (const Command& command : program.commands)
        add_options(*app.add_subcommand(command.name, command.description), command, program.version);
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
                       shown_as_message(has_stray_word ? stray_word(app, typed) : error.what()));
}

/// The help of the command that `help` is asked about, or of the program.
std::string help_of(const Program& program, const CLI::App& asked) {
    const std::vector<std::string> about = asked.get_option(help_argument)->results();
    CLI::App app; // of its own, in which no command is chosen
    add_program(app, program);
    return about.empty() ? app.help() : app.get_subcommand(about.front())->help(app.get_name());
}

} // namespace

ExitCode perform(const Program& program, int argc, char** argv) {
    CLI::App app;
    add_program(app, program);
    app.failure_message([typed = std::vector<std::string>(argv + 1, argv + argc)](const CLI::App* parsed,
                                                                                  const CLI::Error& error) {
        return complaint(*parsed, error, typed);
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
            return ExitCode::bad_input;
        write_text(standard_stream, help.str());
        return ExitCode::done;
    }
    const std::string chosen = app.get_subcommands().front()->get_name();
    if (chosen == help_command) {
        write_text(standard_stream, help_of(program, *app.get_subcommand(chosen)));
        return ExitCode::done;
    }
    for (const Command& command : program.commands)
        if (command.name == chosen)
            command.perform();
    return ExitCode::done;
}

} // namespace zarven::tool
