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
#include <tRec_Version.h>

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

std::string page_name(const Command& command, const Program& program) {
    return &command == &program.itself ? command.name : program.itself.name + "-" + command.name;
}

std::string synopsis_of(const Command& command, const Program& program) {
    if (&command == &program.itself)
        return fmt::format(".B {}\n.I COMMAND\n[\\fIoption\\fR ...]\n", roff(command.name));
    std::string line = fmt::format(".B {} {}\n", roff(program.itself.name), roff(command.name));
    for (const Option& option : command.options)
        if (is_argument(option))
            line += fmt::format("\\fI{}\\fR\n", roff(option.names.front()));
        else if (option.is_required)
            line += fmt::format("\\fB{}\\fR \\fI{}\\fR\n", roff(option.names.front()), roff(option.value));
    return line + "[\\fIoption\\fR ...]\n";
}

std::string heading_of(const Option& option) {
    if (is_argument(option))
        return fmt::format("\\fI{}\\fR", roff(option.names.front()));
    std::string heading;
    for (const std::string& name : option.names)
        heading += fmt::format("{}\\fB{}\\fR", heading.empty() ? "" : ", ", roff(name));
    return option.value.empty() ? heading : heading + fmt::format(" \\fI{}\\fR", roff(option.value));
}

std::string options_of(const Command& command) {
    std::string lines;
    for (const Option& option : command.options)
        lines +=
            fmt::format(".TP\n{}\n{}{}.\n", heading_of(option), roff(option.description),
                        option.fallback.empty() ? "" : fmt::format(" (default: {})", roff(option.fallback)));
    return lines;
}

std::string commands_of(const Program& program) {
    std::string lines = ".SH COMMANDS\n";
    for (const Command& command : program.commands)
        lines += fmt::format(".TP\n.BR {} (1)\n{}.\n", roff(page_name(command, program)),
                             roff(command.description));
    return lines;
}

std::string see_also(const Command& command, const Program& program) {
    std::vector<std::string> pages;
    if (&command != &program.itself)
        pages.push_back(page_name(program.itself, program));
    for (const Command& other : program.commands)
        if (&other != &command)
            pages.push_back(page_name(other, program));
    std::string lines = ".SH SEE ALSO\n";
    for (const std::string& page : pages)
        lines += fmt::format(".BR {} (1){}\n", roff(page), page == pages.back() ? "" : ",");
    return lines;
}

std::string page_of(const Command& command, const Program& program, const std::string& sections) {
    const std::string name = page_name(command, program);
    std::string upper = name;
    std::transform(upper.begin(), upper.end(), upper.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::toupper(letter)); });
    std::string description = command.description;
    while (!description.empty() && description.back() == '.')
        description.pop_back();
    return fmt::format(".TH {} 1 \"{}\" \"recalculo {}\"\n.SH NAME\n{} \\- {}\n.SH SYNOPSIS\n{}", roff(upper),
                       RECALCULO_RELEASED, RECALCULO_VERSION, roff(name), roff(description),
                       synopsis_of(command, program)) +
           read_text(fmt::format("{}/{}.roff", sections, name)) +
           (&command == &program.itself ? commands_of(program) : "") + ".SH OPTIONS\n" + options_of(command) +
           see_also(command, program);
}

/// What the shell does for the value of an option: words, nothing for numbers and the like, else files.
std::string values_of(const std::string& command, const Option& option) {
    if (option.value.empty() || option.value == "FILE")
        return "";
    std::string patterns;
    for (const std::string& name : option.names)
        patterns += fmt::format("{}'{} {}'", patterns.empty() ? "" : " | ", command, name);
    return fmt::format("    {}) {} ;;\n", patterns,
                       option.words.empty() ? "return"
                                            : fmt::format("words='{}'", fmt::join(option.words, " ")));
}

/// The words that complete a command line: after each command its options and their values; files for the
/// rest.
std::string completion_of(const Program& program) {
    std::string commands;
    std::string options;
    std::string values;
    for (const Command& command : program.commands) {
        std::string names;
        for (const Option& option : command.options) {
            if (!is_argument(option))
                for (const std::string& name : option.names)
                    names += (names.empty() ? "" : " ") + name;
            values += values_of(command.name, option);
        }
        commands += (commands.empty() ? "" : " ") + command.name;
        options += fmt::format("        {}) words='{}' ;;\n", command.name, names);
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
    const Program program = describe_program();
    std::filesystem::create_directories(output);
    const auto write_page = [&](const Command& command) {
        write_text((output / (page_name(command, program) + ".1")).string(),
                   page_of(command, program, sections));
    };
    write_page(program.itself);
    for (const Command& command : program.commands)
        write_page(command);
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
