#include "records/json_writer.h"

namespace zarven::tool {

namespace {

constexpr std::size_t blanks_of_level = 2;

/// Of the text from here on, the bytes of one character that is to be escaped; 0 for none.
std::size_t escaped_length(std::string_view text) {
    const auto byte = [&](std::size_t ahead) {
        return ahead < text.size() ? static_cast<unsigned char>(text[ahead]) : 0u;
    };
    if (byte(0) < 0x20 || byte(0) == '"' || byte(0) == '\\' || byte(0) == 0x7F)
        return 1;
    if (byte(0) == 0xC2 && byte(1) >= 0x80 && byte(1) < 0xA0) // U+0080 to U+009F
        return 2;
    const bool is_turning = (byte(1) == 0x80 && byte(2) >= 0xA8 && byte(2) <= 0xAE) ||
                            (byte(1) == 0x81 && byte(2) >= 0xA6 && byte(2) <= 0xA9);
    return byte(0) == 0xE2 && is_turning ? 3 : 0;
}

std::string escape_of(std::string_view character) {
    switch (character.front()) {
    case '"':
        return "\\\"";
    case '\\':
        return "\\\\";
    case '\b':
        return "\\b";
    case '\t':
        return "\\t";
    case '\n':
        return "\\n";
    case '\f':
        return "\\f";
    case '\r':
        return "\\r";
    default:
        break;
    }
    const auto bits = [&](std::size_t place) { return static_cast<unsigned char>(character[place]) & 0x3Fu; };
    const unsigned code = character.size() == 1   ? static_cast<unsigned char>(character[0])
                          : character.size() == 2 ? 0x80 + bits(1)
                                                  : 0x2000 + (bits(1) << 6) + bits(2);
    return fmt::format("\\u{:04x}", code);
}

} // namespace

void JsonWriter::begin_line(std::size_t level) {
    text_ += '\n';
    text_.append(level * blanks_of_level, ' ');
}

void JsonWriter::open(char bracket) {
    text_ += bracket;
    ++level_;
    is_empty_ = true;
}

void JsonWriter::close(char bracket) {
    --level_;
    if (!is_empty_ && is_on_lines(level_))
        begin_line(level_);
    else if (!is_empty_ && bracket == '}' && !style_.is_dense)
        text_ += ' ';
    text_ += bracket;
    is_empty_ = false;
}

void JsonWriter::next(bool is_member) {
    if (!is_empty_)
        text_ += ',';
    if (is_on_lines(level_ - 1))
        begin_line(level_);
    else if (!style_.is_dense && (is_member || !is_empty_))
        text_ += ' ';
    is_empty_ = false;
}

void JsonWriter::key(std::string_view name) {
    next(true);
    string(name);
    text_ += style_.is_dense ? ":" : ": ";
}

void JsonWriter::entry() {
    next(false);
}

void JsonWriter::string(std::string_view value) {
    text_ += '"';
    std::size_t begin = 0;
    for (std::size_t at = 0; at < value.size();) {
        const std::size_t length = escaped_length(value.substr(at));
        if (length != 0) {
            text_.append(value, begin, at - begin);
            text_ += escape_of(value.substr(at, length));
            begin = at + length;
        }
        at += length != 0 ? length : 1;
    }
    text_.append(value, begin);
    text_ += '"';
}

} // namespace zarven::tool
