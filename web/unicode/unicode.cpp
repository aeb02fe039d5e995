// UTF-8 is decoded here, as strictly as the library does it; what needs tables is asked of JavaScript.
// Letters of Western scripts, which nearly all names are made of, are answered without asking.

#include "utf8proc.h"

/// In engine/library.js.
extern "C" {
int recalculo_char_width(int code);
int recalculo_is_one_cluster(int code, int next);
std::ptrdiff_t recalculo_decompose(const std::uint8_t* text, std::ptrdiff_t size, std::int32_t* parts,
                                   std::ptrdiff_t most);
}

namespace {

/// The first of the combining marks: before it each code point stands for itself.
constexpr utf8proc_int32_t first_mark = 0x300;

bool is_surrogate(utf8proc_int32_t code) {
    return code >= 0xD800 && code <= 0xDFFF;
}

} // namespace

utf8proc_ssize_t utf8proc_iterate(const utf8proc_uint8_t* text, utf8proc_ssize_t size,
                                  utf8proc_int32_t* code) {
    *code = -1;
    if (size < 1)
        return 0;
    const unsigned first = text[0];
    if (first < 0x80) {
        *code = static_cast<utf8proc_int32_t>(first);
        return 1;
    }
    const utf8proc_ssize_t length = first < 0xC2   ? 0
                                    : first < 0xE0 ? 2
                                    : first < 0xF0 ? 3
                                    : first < 0xF5 ? 4
                                                   : 0;
    if (length == 0 || length > size)
        return -1;
    auto value = static_cast<utf8proc_int32_t>(first & (0xFFU >> (length + 1)));
    for (utf8proc_ssize_t place = 1; place < length; ++place) {
        if ((text[place] & 0xC0U) != 0x80)
            return -1;
        value = (value << 6) | (text[place] & 0x3F);
    }
    const bool is_longer_than_needed = (length == 3 && value < 0x800) || (length == 4 && value < 0x10000);
    if (is_longer_than_needed || is_surrogate(value) || value > 0x10FFFF)
        return -1;
    *code = value;
    return length;
}

utf8proc_category_t utf8proc_category(utf8proc_int32_t code) {
    if (code < 0x20 || (code >= 0x7F && code < 0xA0))
        return UTF8PROC_CATEGORY_CC;
    return code == 0x2028   ? UTF8PROC_CATEGORY_ZL
           : code == 0x2029 ? UTF8PROC_CATEGORY_ZP
                            : UTF8PROC_CATEGORY_CN;
}

int utf8proc_charwidth(utf8proc_int32_t code) {
    if (code < first_mark)
        return utf8proc_category(code) == UTF8PROC_CATEGORY_CC || code == 0xAD ? 0 : 1;

    if (code >= 0x2010 && code < 0x231A)
        return code == 0x2028 || code == 0x2029 || (code >= 0x202A && code <= 0x202E) ? 0 : 1;
    return recalculo_char_width(code);
}

bool utf8proc_grapheme_break_stateful(utf8proc_int32_t code, utf8proc_int32_t next, utf8proc_int32_t*) {
    if (code < first_mark && next < first_mark)
        return code != '\r' || next != '\n';
    return recalculo_is_one_cluster(code, next) == 0;
}

utf8proc_ssize_t utf8proc_decompose(const utf8proc_uint8_t* text, utf8proc_ssize_t size,
                                    utf8proc_int32_t* parts, utf8proc_ssize_t most, utf8proc_option_t) {
    return recalculo_decompose(text, size, parts, most);
}
