// The library tells in a message of its own what it was reading, what it met and what it wanted. Two tables
// translate these; a message that stands in none is one of another version, and is told as far as it goes.

#include "records/json_fault.h"

#include <algorithm>

#include <fmt/format.h>

#include "base/utf8.h"

namespace zarven::tool {

namespace {

struct Translation {
    std::string_view part;
    std::string_view found;
    std::string_view expected;
};

/// By what was being read.
constexpr Translation wishes[] = {
    {"parsing array - ", "", "',' or ']'"},
    {"parsing object - ", "", "',' or '}'"},
    {"parsing object key - ", "", "a key in double quotes"},
    {"parsing object separator - ", "", "':'"},
    {"; expected end of input", "", "nothing more"},
    {"parsing value - ", "", "a value"},
};

/// What is wrong within a text or number; the first that fits.
constexpr Translation slips[] = {
    {"missing closing quote", "the end in a text", "'\"'"},
    {"U+000A (LF) must be escaped", "a line end in a text", "'\"', or \\n for a line end"},
    {"U+000D (CR) must be escaped", "a line end in a text", "'\"', or \\r for a line end"},
    {"U+0009 (HT) must be escaped", "a tab in a text", "\\t for a tab"},
    {"must be escaped", "a control character in a text", "\\u and its four digits"},
    {"ill-formed UTF-8", "a byte that is not UTF-8", "UTF-8"},
    {"forbidden character after backslash", "an unknown character after \\", "one of \" \\ / b f n r t u"},
    {"4 hex digits", "\\u without four hexadecimal digits", "them"},
    {"surrogate", "half of a character behind \\u", "its other half"},
    {"invalid number", "a number that breaks off", "a digit"},
    {"invalid BOM", "a damaged byte order mark", "EF BB BF or none"},
};

/// What the library calls the things that it meets.
constexpr Translation things[] = {
    {"unexpected end of input", "the end", ""},
    {"unexpected string literal", "a text", ""},
    {"unexpected number literal", "a number", ""},
    {"unexpected true literal", "true", ""},
    {"unexpected false literal", "false", ""},
    {"unexpected null literal", "null", ""},
    {"unexpected '['", "'['", ""},
    {"unexpected ']'", "']'", ""},
    {"unexpected '{'", "'{'", ""},
    {"unexpected '}'", "'}'", ""},
    {"unexpected ':'", "':'", ""},
    {"unexpected ','", "','", ""},
};

template <std::size_t size>
const Translation* find(const Translation (&table)[size], std::string_view message) {
    const auto found = std::find_if(std::begin(table), std::end(table), [message](const Translation& one) {
        return message.find(one.part) != message.npos;
    });
    return found == std::end(table) ? nullptr : found;
}

bool is_of_word(char byte) {
    return (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z') ||
           byte == '_' || byte == '.' || byte == '+' || byte == '-' || (byte & 0x80) != 0;
}

/// The word that the reader stopped in or behind, or the one character.
std::string_view word_at(std::string_view text, std::size_t offset) {
    std::size_t begin = std::min(offset, text.size());
    if (begin == text.size() || !is_of_word(text[begin]))
        begin -= begin != 0 && is_of_word(text[begin - 1]) ? 1 : 0;
    std::size_t end = begin;
    while (begin != 0 && is_of_word(text[begin - 1]))
        --begin;
    while (end != text.size() && is_of_word(text[end]))
        ++end;
    return text.substr(begin, std::max<std::size_t>(end - begin, 1));
}

} // namespace

std::string json_fault(std::string_view message, std::string_view text, std::size_t offset) {
    if (message.find("number overflow") != message.npos)
        return fmt::format("found \"{}\", expected a number that is not so large",
                           shortened(word_at(text, offset)));
    // The text that was read last is quoted in the message, and could look like any part of one.
    message = message.substr(0, message.find("; last read: "));
    if (const Translation* slip = find(slips, message))
        return fmt::format("found {}, expected {}", slip->found, slip->expected);
    const Translation* wish = find(wishes, message);
    const Translation* thing = find(things, message);
    const std::string found = thing != nullptr ? std::string(thing->found)
                                               : fmt::format("\"{}\"", shortened(word_at(text, offset)));
    return fmt::format("found {}, expected {}", found, wish != nullptr ? wish->expected : "JSON");
}

} // namespace zarven::tool
