// What is wrong with a text that should be JSON, in the words of this program and not of the library that
// reads it.

#ifndef RECALCULO_JSON_FAULT_H
#define RECALCULO_JSON_FAULT_H

#include <cstddef>
#include <string>
#include <string_view>

namespace zarven::tool {

/// "found ..., expected ...": the library's message, and where in the text its reader stopped.
std::string json_fault(std::string_view message, std::string_view text, std::size_t offset);

} // namespace zarven::tool

#endif
