// What the readers of channel lists and other texts share: lines whatever their ends and encoding, numbers,
// and complaints.

#ifndef RECALCULO_TEXT_LINES_H
#define RECALCULO_TEXT_LINES_H

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace zarven::tool {

/// The reason why what is in hand cannot be read. It does not leave the readers.
struct BadLine : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Throws `BadLine`. What was found is cut where it is too long for a message.
[[noreturn]] void reject(std::string_view field, std::string_view found, std::string_view expected);

/// A line without its end, in UTF-8, and its number from 1.
struct Line {
    std::size_t number = 0;
    std::string text;
};

/// How messages name a line.
std::string line_of_file(const std::string& file, std::size_t number);

std::string_view without_byte_order_mark(std::string_view text);

/// The lines of a file. Lists of mixed origin change the encoding from line to line: one that is not UTF-8 is
/// taken as Latin-1.
std::vector<Line> lines_of(std::string_view text);

/// Nothing but blanks and tabs.
bool is_blank(std::string_view text);

/// The same, or a remark that begins with #.
bool is_blank_or_remark(std::string_view line);

std::vector<std::string_view> split(std::string_view text, std::string_view separators);

/// Without the blanks and tabs at both ends.
std::string_view trimmed(std::string_view text);

bool starts_with(std::string_view text, std::string_view start);

/// All of the text is one number without sign, in the base, and not above `most`.
bool is_number(std::string_view text, std::uint32_t most, std::uint32_t& number, int base = 10);

/// A whole number from `least` to `most`; `field` is for the complaint.
std::uint16_t read_number(std::string_view field, std::string_view text, std::uint16_t least,
                          std::uint16_t most);

/// A 16-bit id; `field` is for the complaint.
std::uint16_t read_id(std::string_view field, std::string_view text, int base = 10);

/// The same where a fault may pass: 0 then.
std::uint32_t number_or_0(std::string_view text);

/// A frequency, which tells streams apart and is in any unit.
std::uint32_t read_frequency(std::string_view field, std::string_view text);

} // namespace zarven::tool

#endif
