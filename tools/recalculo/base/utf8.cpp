// The C library knows how to decode UTF-8 and how wide each character is, whatever locale the user has: we
// put its C.UTF-8 in force for as long as a text is walked.

#include "base/utf8.h"

#include <algorithm>
#include <clocale>
#include <cwchar>

#include <locale.h>
#include <wchar.h>
#include <wctype.h>

namespace zarven::tool {

namespace {

constexpr std::string_view replacement = "\uFFFD";

/// The UTF-8 locale in force for the life of the object, in this thread only.
class Utf8Locale {
public:
    Utf8Locale() : previous_(uselocale(shared())) {}
    ~Utf8Locale() { uselocale(previous_); }
    Utf8Locale(const Utf8Locale&) = delete;
    Utf8Locale& operator=(const Utf8Locale&) = delete;

private:
    static locale_t shared() {
        static const locale_t utf8 = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
        return utf8;
    }

    locale_t previous_;
};

/// Calls `visit(character, bytes)` for each character, with U+FFFD for a byte that belongs to none. False if
/// there was such a byte.
template <class Visit> bool for_each_character(std::string_view text, Visit visit) {
    const Utf8Locale in_force;
    bool is_well_formed = true;
    while (!text.empty()) {
        std::mbstate_t state{};
        wchar_t character = 0;
        std::size_t length = std::mbrtowc(&character, text.data(), text.size(), &state);
        if (length > text.size()) { // the two error values are above all lengths
            is_well_formed = false;
            visit(L'\uFFFD', replacement);
            length = 1;
        } else {
            length = std::max(length, std::size_t{1}); // NUL is told as a length of 0
            visit(character, text.substr(0, length));
        }
        text.remove_prefix(length);
    }
    return is_well_formed;
}

} // namespace

bool is_utf8(std::string_view text) {
    return for_each_character(text, [](wchar_t, std::string_view) {});
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
    for_each_character(text, [&clean](wchar_t character, std::string_view bytes) {
        clean += iswcntrl(static_cast<wint_t>(character)) != 0 ? replacement : bytes;
    });
    return clean;
}

std::string shortened(std::string_view text) {
    const std::size_t most_bytes = 60;
    if (text.size() <= most_bytes)
        return std::string(text);
    std::size_t end = most_bytes;
    while (end > 0 && (text[end] & 0xC0) == 0x80) // not in the middle of a character
        --end;
    return std::string(text.substr(0, end)) + "…";
}

int display_width(std::string_view text) {
    int width = 0;
    for_each_character(text, [&width](wchar_t character, std::string_view) {
        const int columns = wcwidth(character);
        width += columns < 0 ? 1 : columns;
    });
    return width;
}

std::string pad_right(std::string_view text, int width) {
    std::string padded(text);
    const int missing = width - display_width(text);
    if (missing > 0)
        padded.append(static_cast<std::size_t>(missing), ' ');
    return padded;
}

} // namespace zarven::tool
