// recalculo_manual SECTIONS OUTPUT: writes the man pages of the tool and its completions into the folder
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
#include "manual/completion.h"

namespace {

using namespace zarven::tool;

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
            line += fmt::format("{}\\fI{}\\fR{}{}\n", option.may_be_missing ? "[" : "",
                                roff(option.names.front()), option.may_be_missing ? "]" : "",
                                takes_several(option) ? " ..." : "");
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
    write_text((output / "recalculo.bash").string(), bash_completion(program));
    write_text((output / "recalculo.zsh").string(), zsh_completion(program));
    write_text((output / "recalculo.fish").string(), fish_completion(program));
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
