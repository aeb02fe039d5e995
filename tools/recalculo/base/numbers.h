// Whole numbers as people and other programs write them. They are read with std::from_chars, which knows no
// locale and takes no sign or blank that is not asked for.

#ifndef RECALCULO_BASE_NUMBERS_H
#define RECALCULO_BASE_NUMBERS_H

#include <charconv>
#include <string_view>
#include <system_error>

namespace zarven::tool {

/// All of the text is one number that the type can hold.
template <class Number> bool is_whole_number(std::string_view text, Number& number, int base = 10) {
    const char* const end = text.data() + text.size();
    const auto [stopped, error] = std::from_chars(text.data(), end, number, base);
    return error == std::errc() && stopped == end;
}

} // namespace zarven::tool

#endif
