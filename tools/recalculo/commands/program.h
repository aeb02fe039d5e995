// The command line as a whole, told once: every command with its options. What is understood and the help
// are made of it (command_line.h), and so are the man pages and the completion of the shell
// (manual/main.cpp).

#ifndef RECALCULO_COMMANDS_PROGRAM_H
#define RECALCULO_COMMANDS_PROGRAM_H

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace zarven::tool {

/// What the program answers itself.
enum class Answer { help, version };

/// Where the value of an option goes. A list takes one for each time that the option is given, and
/// as an argument all that stand there; a flag has none. An optional text tells an empty one from none given.
/// A number is never an empty text, which a shell makes of an unset variable.
using Target = std::variant<Answer, bool*, std::string*, std::optional<std::string>*,
                            std::vector<std::string>*, std::uint32_t*>;

struct Option {
    /// As they are typed. Of an argument, the one by which it is told.
    std::vector<std::string> names;
    Target target;
    std::string description;
    /// What stands for the value in the help. Empty for an argument, and where there is none.
    std::string value{};
    /// Told with the description; empty for none.
    std::string fallback{};
    bool is_required = false;
    /// Of an argument: it may be left away.
    bool may_be_missing = false;
    /// Refuses an empty name, which a shell makes of an unset variable: it must not pass for a file not
    /// wanted.
    bool is_named_file = false;
    /// The only ones that it takes; empty for any. The nearest is named for one that is mistyped.
    std::vector<std::string> words{};
    struct Range {
        int least = 0;
        int most = 0;
    };
    std::optional<Range> range{};
};

bool is_argument(const Option& option);

/// It has a list of values.
bool takes_several(const Option& option);

struct Command {
    std::string name;
    std::string description;
    /// In the order of the help.
    std::vector<Option> options;
    /// Does what the targets of the options then say. Throws `Failure`.
    std::function<void()> perform{};
};

struct Program {
    /// What is understood before a command.
    Command itself;
    std::vector<Command> commands;
    /// The answer to --version.
    std::string version;
};

/// The command that answers as --help does, and its argument: another command.
inline constexpr const char* help_command = "help";
inline constexpr const char* help_argument = "COMMAND";

Program describe_program();

} // namespace zarven::tool

#endif
