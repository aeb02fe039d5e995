// Names of services come in any script. Here they are made valid UTF-8 and fitted into columns. What a reader
// takes for one character, the grapheme cluster, may be several code points; a text is never cut inside one.

#ifndef RECALCULO_UTF8_H
#define RECALCULO_UTF8_H

#include <string>
#include <string_view>
#include <vector>

namespace zarven::tool {

/// The text is well-formed UTF-8.
bool is_utf8(std::string_view text);

/// The text is UTF-16: it begins with a byte order mark, or with an ASCII character of two bytes.
bool is_utf16(std::string_view text);

/// Every byte taken as one Latin-1 character.
std::string latin1_to_utf8(std::string_view text);

/// The text for one line of a terminal: control characters, which could move its cursor, and bytes that are
/// not UTF-8 become U+FFFD.
std::string printable(std::string_view text);

/// The text, or its first characters and an ellipsis where it is too long to stand in a message.
std::string shortened(std::string_view text);

/// The text in ASCII: Latin letters lose their marks, anything else becomes a question mark per column, so
/// that the width stays nearly always the same.
std::string ascii(std::string_view text);

/// Columns that a printable text takes on a terminal: 2 for wide East Asian characters and pictures, 0 for
/// combining marks.
int display_width(std::string_view text);

/// The text itself where it fits into `width` columns, else its beginning with `ellipsis`; without the
/// ellipsis where not even that fits.
std::string shortened(std::string_view text, int width, std::string_view ellipsis);

/// The text as lines of at most `width` columns, broken at blanks and inside longer words. A width of 0 is
/// no limit. At least one line.
std::vector<std::string> wrapped(std::string_view text, int width);

} // namespace zarven::tool

#endif
