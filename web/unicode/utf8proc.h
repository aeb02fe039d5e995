/* What the tool asks of libutf8proc, answered by the browser, which has the tables of Unicode already. The
   names are those of the library, so that the tool's source is the same. Texts are drawn by the browser as
   well: nothing but the tables of the text reports hangs on widths here. */

#ifndef RECALCULO_WEB_UTF8PROC_H
#define RECALCULO_WEB_UTF8PROC_H

#include <cstddef>
#include <cstdint>

using utf8proc_int32_t = std::int32_t;
using utf8proc_uint8_t = std::uint8_t;
using utf8proc_ssize_t = std::ptrdiff_t;

enum utf8proc_category_t {
    UTF8PROC_CATEGORY_CN,
    UTF8PROC_CATEGORY_CC,
    UTF8PROC_CATEGORY_ZL,
    UTF8PROC_CATEGORY_ZP
};

enum utf8proc_option_t : int { UTF8PROC_DECOMPOSE = 1, UTF8PROC_COMPAT = 2, UTF8PROC_STRIPMARK = 4 };

/* Decodes one code point and returns its bytes; below 1 for bytes that are not UTF-8. */
utf8proc_ssize_t utf8proc_iterate(const utf8proc_uint8_t* text, utf8proc_ssize_t size,
                                  utf8proc_int32_t* code);

/* Any category but control characters and separators of lines and paragraphs is told as CN. */
utf8proc_category_t utf8proc_category(utf8proc_int32_t code);

int utf8proc_charwidth(utf8proc_int32_t code);

bool utf8proc_grapheme_break_stateful(utf8proc_int32_t code, utf8proc_int32_t next, utf8proc_int32_t* state);

/* Compatible parts without marks, whatever the options: gives their number, and writes `most` of them. */
utf8proc_ssize_t utf8proc_decompose(const utf8proc_uint8_t* text, utf8proc_ssize_t size,
                                    utf8proc_int32_t* parts, utf8proc_ssize_t most,
                                    utf8proc_option_t options);

#endif
