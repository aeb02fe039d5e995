// The completions of the shells, made of the table of commands: after each command its options and their
// values, files for the rest.

#ifndef RECALCULO_MANUAL_COMPLETION_H
#define RECALCULO_MANUAL_COMPLETION_H

#include <string>
#include <string_view>

#include "commands/program.h"

namespace zarven::tool {

std::string bash_completion(const Program& program);
std::string zsh_completion(const Program& program);
std::string fish_completion(const Program& program);

/// The text with every `from` as `to`.
std::string replaced(std::string text, std::string_view from, std::string_view to);

} // namespace zarven::tool

#endif
