// Standard input can be read once: how often "-" stands on a command line, and the complaint of a second
// time.

#ifndef RECALCULO_COMMANDS_STANDARD_INPUT_H
#define RECALCULO_COMMANDS_STANDARD_INPUT_H

#include <cstddef>
#include <string>
#include <vector>

namespace zarven::tool {

std::size_t standard_inputs(const std::string& path);
std::size_t standard_inputs(const std::vector<std::string>& paths);

/// True for once or oftener.
bool is_standard_input_in(const std::vector<std::string>& paths);

/// Throws `Failure` for more than one; `readers` are those that would read it.
void expect_one_standard_input(std::size_t found, const std::string& readers);

} // namespace zarven::tool

#endif
