// libutf8proc has the tables: how UTF-8 is decoded, where one grapheme cluster ends and how wide a code point
// is. They do not depend on the locale of the user.

#include "base/utf8.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

#include <utf8proc.h>

namespace zarven::tool {

namespace {

constexpr std::string_view replacement = "\uFFFD";
constexpr utf8proc_int32_t replacement_character = 0xFFFD;

struct Character {
    utf8proc_int32_t code = 0;
    std::string_view bytes;
    bool is_well_formed = true;
};

/// Takes the first character off a text that is not empty: U+FFFD for a byte that belongs to none.
Character take_character(std::string_view& text) {
    Character character;
    const auto* bytes = reinterpret_cast<const utf8proc_uint8_t*>(text.data());
    const utf8proc_ssize_t length =
        utf8proc_iterate(bytes, static_cast<utf8proc_ssize_t>(text.size()), &character.code);
    if (length > 0) {
        character.bytes = text.substr(0, static_cast<std::size_t>(length));
        text.remove_prefix(character.bytes.size());
    } else {
        character = {replacement_character, replacement, false};
        text.remove_prefix(1);
    }
    return character;
}

bool is_regional_indicator(utf8proc_int32_t code) {
    return code >= 0x1F1E6 && code <= 0x1F1FF;
}

/// Embeddings, overrides and isolates: one that is not closed turns round the rest of the line, figures and
/// all.
bool changes_direction(utf8proc_int32_t code) {
    return (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
}

/// A piece of text that is shown as one, and its columns.
struct Cluster {
    std::string bytes;
    int width = 0;
};

/// Takes the first cluster off a text that is not empty.
Cluster take_cluster(std::string_view& text) {
    Cluster cluster;
    utf8proc_int32_t state = 0;
    Character character = take_character(text);
    for (;;) {
        cluster.bytes += character.bytes;
        // Its widest part, not the sum: marks and what is joined stand on the same place. Two letters that
        // are shown as a flag are wide.
        cluster.width = std::max(cluster.width, utf8proc_charwidth(character.code));
        if (text.empty())
            return cluster;
        std::string_view rest = text;
        const Character next = take_character(rest);
        if (utf8proc_grapheme_break_stateful(character.code, next.code, &state))
            return cluster;
        if (is_regional_indicator(character.code) && is_regional_indicator(next.code))
            cluster.width = 2;
        character = next;
        text = rest;
    }
}

/// The line-breaking of `wrapped`, word by word.
class Wrapping {
public:
    explicit Wrapping(int width) : width_(width) {}

    void add(std::string_view word) {
        const int columns = display_width(word);
        if (used_ != 0 && used_ + 1 + columns > width_)
            end_line();
        if (used_ != 0) {
            lines_.back() += ' ';
            ++used_;
        }
        if (columns <= width_) {
            lines_.back() += word;
            used_ += columns;
        } else {
            add_in_pieces(word);
        }
    }

    std::vector<std::string> lines() && { return std::move(lines_); }

private:
    void end_line() {
        lines_.emplace_back();
        used_ = 0;
    }

    void add_in_pieces(std::string_view word) {
        while (!word.empty()) {
            Cluster cluster = take_cluster(word);
            if (cluster.width > width_)
                cluster = {"?", 1};
            if (used_ + cluster.width > width_)
                end_line();
            lines_.back() += cluster.bytes;
            used_ += cluster.width;
        }
    }

    int width_;
    int used_ = 0;
    std::vector<std::string> lines_{1};
};

} // namespace

bool is_utf8(std::string_view text) {
    while (!text.empty())
        if (!take_character(text).is_well_formed)
            return false;
    return true;
}

bool is_utf16(std::string_view text) {
    const std::string_view start = text.substr(0, 2);
    return start == "\xFF\xFE" || start == "\xFE\xFF" ||
           (start.size() == 2 && (start[0] == '\0') != (start[1] == '\0'));
}

std::string latin1_to_utf8(std::string_view text) {
    std::string utf8;
    for (const char byte : text) {
        const auto character = static_cast<unsigned char>(byte);
        if (character < 0x80) {
            utf8 += byte;
        } else {
            utf8 += static_cast<char>(0xC0 | (character >> 6));
            utf8 += static_cast<char>(0x80 | (character & 0x3F));
        }
    }
    return utf8;
}

std::string printable(std::string_view text) {
    std::string clean;
    while (!text.empty()) {
        const Character character = take_character(text);
        if (changes_direction(character.code)) {
            clean += replacement;
            continue;
        }
        switch (utf8proc_category(character.code)) {
        case UTF8PROC_CATEGORY_CC:
        case UTF8PROC_CATEGORY_ZL: // the separators of lines and paragraphs
        case UTF8PROC_CATEGORY_ZP:
            clean += replacement;
            break;
        default:
            clean += character.bytes;
        }
    }
    return clean;
}

std::string ascii(std::string_view text) {
    std::string plain;
    while (!text.empty()) {
        const Cluster cluster = take_cluster(text);
        std::array<utf8proc_int32_t, 16> parts{};
        const utf8proc_ssize_t count = utf8proc_decompose(
            reinterpret_cast<const utf8proc_uint8_t*>(cluster.bytes.data()),
            static_cast<utf8proc_ssize_t>(cluster.bytes.size()), parts.data(),
            static_cast<utf8proc_ssize_t>(parts.size()),
            static_cast<utf8proc_option_t>(UTF8PROC_DECOMPOSE | UTF8PROC_COMPAT | UTF8PROC_STRIPMARK));
        const auto end = parts.begin() + std::clamp<utf8proc_ssize_t>(count, 0, parts.size());
        if (count > 0 && end != parts.end() &&
            std::all_of(parts.begin(), end, [](utf8proc_int32_t code) { return code < 0x80; }))
            std::transform(parts.begin(), end, std::back_inserter(plain),
                           [](utf8proc_int32_t code) { return static_cast<char>(code); });
        else
            plain.append(static_cast<std::size_t>(cluster.width), '?');
    }
    return plain;
}

std::string shortened(std::string_view text) {
    const std::size_t most_bytes = 60;
    if (text.size() <= most_bytes)
        return printable(text);
    std::size_t end = most_bytes;
    while (end > 0 && (text[end] & 0xC0) == 0x80) // not in the middle of a character
        --end;
    return printable(text.substr(0, end)) + "…";
}

int display_width(std::string_view text) {
    int width = 0;
    while (!text.empty())
        width += take_cluster(text).width;
    return width;
}

std::string shortened(std::string_view text, int width, std::string_view ellipsis) {
    if (display_width(text) <= width)
        return std::string(text);
    int room = width - display_width(ellipsis);
    if (room < 0) {
        ellipsis = "";
        room = width;
    }
    std::string beginning;
    while (!text.empty()) {
        const Cluster cluster = take_cluster(text);
        room -= cluster.width;
        if (room < 0)
            break;
        beginning += cluster.bytes;
    }
    return beginning.append(ellipsis);
}

std::vector<std::string> wrapped(std::string_view text, int width) {
    if (width <= 0 || display_width(text) <= width)
        return {std::string(text)};
    Wrapping wrapping(width);
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(' '), text.size());
        if (end != 0)
            wrapping.add(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return std::move(wrapping).lines();
}

} // namespace zarven::tool
