// Names of services come in any script. Here they are made valid UTF-8 and measured for columns.

#ifndef RECALCULO_UTF8_H
#define RECALCULO_UTF8_H

#include <string>
#include <string_view>

namespace zarven::tool {

/// The text is well-formed UTF-8.
bool is_utf8(std::string_view text);

/// Every byte taken as one Latin-1 character.
std::string latin1_to_utf8(std::string_view text);

/// The text for one line of a terminal: control characters, which could move its cursor, and bytes that are
/// not UTF-8 become U+FFFD.
std::string printable(std::string_view text);

/// The text, or its first characters and an ellipsis where it is too long to stand in a message.
std::string shortened(std::string_view text);

/// Columns that a printable text takes on a terminal: 2 for wide East Asian characters, 0 for combining ones.
int display_width(std::string_view text);

/// The text filled with blanks up to `width` columns; a longer text stays whole.
std::string pad_right(std::string_view text, int width);

} // namespace zarven::tool

#endif
