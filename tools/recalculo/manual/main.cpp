// recalculo_manual SECTIONS OUTPUT: writes the man pages and the bash completion of the tool into the folder
// OUTPUT. Commands and options come from the program itself, so that they are told once; the folder SECTIONS
// has what else a page tells: for the page recalculo-run.1 the roff sections in recalculo-run.roff.

#include <algorithm>
#include <cctype>
#include <exception>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include <fmt/format.h>

#include "base/streams.h"
#include "commands/program.h"

namespace {

using namespace zarven::tool;

std::string replaced(std::string text, std::string_view from, std::string_view to) {
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
    return text;
}

/// A text for roff. A hyphen is one that can be typed, as in names of options.
std::string roff(std::string text) {
    text = replaced(std::move(text), "\\", "\\e");
    text = replaced(std::move(text), "-", "\\-");
    return text.rfind('.', 0) == 0 || text.rfind('\'', 0) == 0 ? "\\&" + text : text;
}

bool takes_value(const CLI::Option& option) {
    return option.get_items_expected_max() != 0;
}

bool is_positional(const CLI::Option& option) {
    return option.get_lnames().empty() && option.get_snames().empty();
}

/// `-o`, `--output`.
std::vector<std::string> names_of(const CLI::Option& option) {
    std::vector<std::string> names;
    for (const std::string& name : option.get_snames())
        names.push_back("-" + name);
    for (const std::string& name : option.get_lnames())
        names.push_back("--" + name);
    return names;
}

std::string page_name(const CLI::App& app, const CLI::App& program) {
    return &app == &program ? app.get_name() : program.get_name() + "-" + app.get_name();
}

std::string synopsis_of(const CLI::App& app, const CLI::App& program) {
    if (&app == &program)
        return fmt::format(".B {}\n.I COMMAND\n[\\fIoption\\fR ...]\n", roff(app.get_name()));
    std::string line = fmt::format(".B {} {}\n", roff(program.get_name()), roff(app.get_name()));
    for (const CLI::Option* option : app.get_options())
        if (is_positional(*option))
            line += fmt::format("\\fI{}\\fR{}\n", roff(option->get_name()),
                                option->get_expected_max() > 1 ? " ..." : "");
        else if (option->get_required())
            line += fmt::format("\\fB{}\\fR \\fI{}\\fR\n", roff(names_of(*option).front()),
                                roff(option->get_type_name()));
    return line + "[\\fIoption\\fR ...]\n";
}

std::string described(const CLI::Option& option) {
    const std::string fallback = takes_value(option) ? option.get_default_str() : "";
    return roff(option.get_description()) +
           (fallback.empty() ? "" : fmt::format(" (default: {})", roff(fallback))) + ".\n";
}

std::string options_of(const CLI::App& app) {
    std::string lines;
    for (const CLI::Option* option : app.get_options()) {
        std::string heading;
        if (is_positional(*option)) {
            heading = fmt::format("\\fI{}\\fR", roff(option->get_name()));
        } else {
            for (const std::string& name : names_of(*option))
                heading += fmt::format("{}\\fB{}\\fR", heading.empty() ? "" : ", ", roff(name));
            if (takes_value(*option))
                heading += fmt::format(" \\fI{}\\fR", roff(option->get_type_name()));
        }
        lines += fmt::format(".TP\n{}\n{}", heading, described(*option));
    }
    return lines;
}

std::string commands_of(const CLI::App& program) {
    std::string lines = ".SH COMMANDS\n";
    for (const CLI::App* command : program.get_subcommands({}))
        lines += fmt::format(".TP\n.BR {} (1)\n{}.\n", roff(page_name(*command, program)),
                             roff(command->get_description()));
    return lines;
}

std::string see_also(const CLI::App& app, const CLI::App& program) {
    std::vector<std::string> pages;
    if (&app != &program)
        pages.push_back(page_name(program, program));
    for (const CLI::App* command : program.get_subcommands({}))
        if (command != &app)
            pages.push_back(page_name(*command, program));
    std::string lines = ".SH SEE ALSO\n";
    for (const std::string& page : pages)
        lines += fmt::format(".BR {} (1){}\n", roff(page), page == pages.back() ? "" : ",");
    return lines;
}

std::string page_of(const CLI::App& app, const CLI::App& program, const std::string& sections) {
    const std::string name = page_name(app, program);
    std::string upper = name;
    std::transform(upper.begin(), upper.end(), upper.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::toupper(letter)); });
    std::string description = app.get_description();
    while (!description.empty() && description.back() == '.')
        description.pop_back();
    return fmt::format(".TH {} 1 \"\" \"recalculo {}\"\n.SH NAME\n{} \\- {}\n.SH SYNOPSIS\n{}", roff(upper),
                       RECALCULO_VERSION, roff(name), roff(description), synopsis_of(app, program)) +
           read_text(fmt::format("{}/{}.roff", sections, name)) +
           (&app == &program ? commands_of(program) : "") + ".SH OPTIONS\n" + options_of(app) +
           see_also(app, program);
}

/// What the shell does for the value of an option: words, nothing for numbers and the like, else files.
std::string values_of(const std::string& command, const CLI::Option& option) {
    const std::string type = option.get_type_name();
    if (!takes_value(option) || is_positional(option) || type == "FILE")
        return "";
    std::string patterns;
    for (const std::string& name : names_of(option))
        patterns += fmt::format("{}'{} {}'", patterns.empty() ? "" : " | ", command, name);
    const bool is_choice = type.find('|') != std::string::npos;
    return fmt::format("    {}) {} ;;\n", patterns,
                       is_choice ? fmt::format("words='{}'", replaced(type, "|", " ")) : "return");
}

/// The words that complete a command line: after each command its options and their values; files for the
/// rest.
std::string completion_of(const CLI::App& program) {
    std::string commands;
    std::string options;
    std::string values;
    for (const CLI::App* command : program.get_subcommands({})) {
        std::string names;
        for (const CLI::Option* option : command->get_options()) {
            for (const std::string& name : names_of(*option))
                names += (names.empty() ? "" : " ") + name;
            values += values_of(command->get_name(), *option);
        }
        commands += (commands.empty() ? "" : " ") + command->get_name();
        options += fmt::format("        {}) words='{}' ;;\n", command->get_name(), names);
    }
    std::string text = R"(# bash completion for recalculo

_recalculo() {
    local word=${COMP_WORDS[COMP_CWORD]} words=''
    COMPREPLY=()
    case "${COMP_WORDS[1]} ${COMP_WORDS[COMP_CWORD - 1]}" in
@VALUES@    esac
    if [[ $COMP_CWORD -eq 1 ]]; then
        words='@COMMANDS@ --help --version'
    elif [[ -z $words && $word == -* ]]; then
        case ${COMP_WORDS[1]} in
@OPTIONS@        esac
    fi
    if [[ -n $words ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word")
    else
        compopt -o filenames 2>/dev/null || :
        mapfile -t COMPREPLY < <(compgen -f -- "$word")
    fi
}
complete -F _recalculo recalculo
)";
    text = replaced(std::move(text), "@COMMANDS@", commands);
    text = replaced(std::move(text), "@OPTIONS@", options);
    return replaced(std::move(text), "@VALUES@", values);
}

void write_manual(const std::string& sections, const std::filesystem::path& output) {
    CLI::App program;
    describe_program(program);
    std::filesystem::create_directories(output);
    std::vector<const CLI::App*> apps = {&program};
    for (const CLI::App* command : program.get_subcommands({}))
        apps.push_back(command);
    for (const CLI::App* app : apps)
        write_text((output / (page_name(*app, program) + ".1")).string(), page_of(*app, program, sections));
    write_text((output / "recalculo.bash").string(), completion_of(program));
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        fmt::print(stderr, "usage: recalculo_manual SECTIONS OUTPUT\n");
        return 2;
    }
    try {
        write_manual(argv[1], argv[2]);
    } catch (const std::exception& error) {
        fmt::print(stderr, "recalculo_manual: {}\n", error.what());
        return 1;
    }
    return 0;
}
