#include "manual/completion.h"

#include <utility>
#include <vector>

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace zarven::tool {

std::string replaced(std::string text, std::string_view from, std::string_view to) {
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
    return text;
}

namespace {

/// What the shell does for the value of an option: words, nothing for numbers and the like, else files.
std::string values_of(const std::string& command, const Option& option) {
    if (is_argument(option) && !option.words.empty())
        return fmt::format("    '{0} {0}') words='{1}' ;;\n", command, fmt::join(option.words, " "));
    if (option.value.empty() || option.value == "FILE")
        return "";
    std::string patterns;
    for (const std::string& name : option.names)
        patterns += fmt::format("{}'{} {}'", patterns.empty() ? "" : " | ", command, name);
    return fmt::format("    {}) {} ;;\n", patterns,
                       option.words.empty() ? "return"
                                            : fmt::format("words='{}'", fmt::join(option.words, " ")));
}

} // namespace

std::string bash_completion(const Program& program) {
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

namespace {

bool takes_files(const Option& option) {
    return is_argument(option) || option.value == "FILE";
}

/// In single quotes, as zsh and fish read them.
std::string quoted(const std::string& text, std::string_view quote) {
    return "'" + replaced(text, "'", quote) + "'";
}

/// What `_arguments` of zsh is told of the option by this name.
std::string zsh_option(const Option& option, const std::string& name) {
    std::string description = option.description;
    for (const char* special : {"\\", "[", "]", ":"})
        description = replaced(std::move(description), special, std::string("\\") + special);
    std::string text = fmt::format("{}{}[{}]", takes_several(option) ? "*" : "", name, description);
    if (!option.words.empty())
        text += fmt::format(":{}:({})", "value", fmt::join(option.words, " "));
    else if (!option.value.empty())
        text += fmt::format(":{}:{}", option.value.substr(0, option.value.find(':')),
                            takes_files(option) ? "_files" : " ");
    return quoted(text, "'\\''");
}

std::string zsh_case(const Command& command) {
    std::string text = fmt::format("    {})\n        _arguments -S", command.name);
    for (const Option& option : command.options)
        if (is_argument(option))
            text += fmt::format(" \\\n            '*:{}:{}'", option.names.front(),
                                option.words.empty() ? "_files"
                                                     : fmt::format("({})", fmt::join(option.words, " ")));
        else
            for (const std::string& name : option.names)
                text += " \\\n            " + zsh_option(option, name);
    return text + "\n        ;;\n";
}

/// `-l output -s o -r -F`
std::string fish_option(const Option& option) {
    if (is_argument(option))
        return fmt::format(" -f -a '{}'", fmt::join(option.words, " "));
    std::string text;
    for (const std::string& name : option.names)
        text += name.rfind("--", 0) == 0 ? " -l " + name.substr(2) : " -s " + name.substr(1);
    if (option.value.empty())
        return text;
    if (takes_files(option))
        return text + " -r -F";
    return text + " -x" + (option.words.empty() ? "" : fmt::format(" -a '{}'", fmt::join(option.words, " ")));
}

} // namespace

std::string zsh_completion(const Program& program) {
    std::string commands;
    std::string cases;
    for (const Command& command : program.commands) {
        commands += fmt::format(
            "        {}\n", quoted(command.name + ":" + replaced(command.description, ":", "\\:"), "'\\''"));
        cases += zsh_case(command);
    }
    std::string options;
    for (const Option& option : program.itself.options)
        for (const std::string& name : option.names)
            options += " \\\n            " + zsh_option(option, name);
    return fmt::format(R"(#compdef recalculo

_recalculo() {{
    local -a commands=(
{}    )
    if (( CURRENT == 2 )); then
        _describe -t commands command commands
        _arguments -S{}
        return
    fi
    shift words
    (( CURRENT-- ))
    case $words[1] in
{}    esac
}}

_recalculo "$@"
)",
                       commands, options, cases);
}

std::string fish_completion(const Program& program) {
    std::string text =
        "# fish completion for recalculo\n\ncomplete -c recalculo -n __fish_use_subcommand -f\n";
    const auto add = [&text](const std::string& condition, const std::string& what,
                             const std::string& description) {
        text += fmt::format("complete -c recalculo -n {}{} -d {}\n", condition, what,
                            quoted(replaced(description, "\\", "\\\\"), "\\'"));
    };
    for (const Option& option : program.itself.options)
        add("__fish_use_subcommand", fish_option(option), option.description);
    for (const Command& command : program.commands)
        add("__fish_use_subcommand", " -a " + command.name, command.description);
    for (const Command& command : program.commands)
        for (const Option& option : command.options)
            if (!is_argument(option) || !option.words.empty())
                add("'__fish_seen_subcommand_from " + command.name + "'", fish_option(option),
                    option.description);
    return text;
}

} // namespace zarven::tool
