// Options whose value is one of a few words. The words are told in the help, completed by the shell, and the
// nearest is named for one that is mistyped.

#ifndef RECALCULO_COMMANDS_CHOICE_H
#define RECALCULO_COMMANDS_CHOICE_H

#include <string>
#include <vector>

#include <CLI/CLI.hpp>

namespace zarven::tool {

/// Binds an option to the words that it takes.
CLI::Option* one_of(CLI::Option* option, const std::vector<std::string>& words);

} // namespace zarven::tool

#endif
