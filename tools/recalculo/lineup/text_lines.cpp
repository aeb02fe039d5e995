#include "lineup/text_lines.h"

#include <limits>

#include <fmt/format.h>

#include "base/numbers.h"
#include "base/utf8.h"

namespace zarven::tool {

void reject(std::string_view field, std::string_view found, std::string_view expected) {
    throw BadLine(fmt::format("{}: found \"{}\", expected {}", field, shortened(found), expected));
}

std::string line_of_file(const std::string& file, std::size_t number) {
    return fmt::format("{}: line {}", file, number);
}

std::string_view without_byte_order_mark(std::string_view text) {
    const std::string_view byte_order_mark = "\xEF\xBB\xBF";
    if (starts_with(text, byte_order_mark))
        text.remove_prefix(byte_order_mark.size());
    return text;
}

std::vector<Line> lines_of(std::string_view text) {
    std::vector<Line> lines;
    std::size_t number = 0;
    for (std::string_view line : split(without_byte_order_mark(text), "\n")) {
        ++number;
        if (!line.empty() && line.back() == '\r')
            line.remove_suffix(1);
        lines.push_back({number, is_utf8(line) ? std::string(line) : latin1_to_utf8(line)});
    }
    return lines;
}

bool is_blank(std::string_view text) {
    return trimmed(text).empty();
}

bool is_blank_or_remark(std::string_view line) {
    return is_blank(line) || trimmed(line).front() == '#';
}

std::vector<std::string_view> split(std::string_view text, std::string_view separators) {
    std::vector<std::string_view> parts;
    for (;;) {
        const std::size_t end = text.find_first_of(separators);
        parts.push_back(text.substr(0, end));
        if (end == text.npos)
            return parts;
        text.remove_prefix(end + 1);
    }
}

std::string_view trimmed(std::string_view text) {
    const std::string_view blanks = " \t";
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == text.npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

bool starts_with(std::string_view text, std::string_view start) {
    return text.substr(0, start.size()) == start;
}

bool is_number(std::string_view text, std::uint32_t most, std::uint32_t& number, int base) {
    return is_whole_number(text, number, base) && number <= most;
}

std::uint16_t read_number(std::string_view field, std::string_view text, std::uint16_t least,
                          std::uint16_t most) {
    std::uint32_t number = 0;
    if (!is_number(text, most, number) || number < least)
        reject(field, text, fmt::format("a whole number from {} to {}", least, most));
    return static_cast<std::uint16_t>(number);
}

std::uint16_t read_id(std::string_view field, std::string_view text, int base) {
    const std::uint16_t most = 65535;
    if (base == 10)
        return read_number(field, text, 0, most);
    std::uint32_t number = 0;
    if (!is_number(text, most, number, base))
        reject(field, text, fmt::format("a hexadecimal number from 0 to {:X}", most));
    return static_cast<std::uint16_t>(number);
}

std::uint32_t number_or_0(std::string_view text) {
    std::uint32_t number = 0;
    return is_number(text, std::numeric_limits<std::uint32_t>::max(), number) ? number : 0;
}

std::uint32_t read_frequency(std::string_view field, std::string_view text) {
    std::uint32_t frequency = 0;
    if (!is_number(text, std::numeric_limits<std::uint32_t>::max(), frequency) || frequency == 0)
        reject(field, text, "a whole number from 1");
    return frequency;
}

} // namespace zarven::tool
