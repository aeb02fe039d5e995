// The text of pages, for their tests.

#ifndef RECALCULO_PAGE_TEXT_H
#define RECALCULO_PAGE_TEXT_H

#include <gtest/gtest.h>

#include "report/page/page_files.h"

namespace zarven::tool {

inline std::size_t occurrences(const std::string& text, const std::string& part) {
    std::size_t number = 0;
    for (std::size_t place = text.find(part); place != std::string::npos; place = text.find(part, place + 1))
        ++number;
    return number;
}

inline bool has(const std::string& text, const std::string& part) {
    return occurrences(text, part) != 0;
}

/// The page without its style and script, where a text might be found that the page does not show.
inline std::string body_of_page(const std::string& page) {
    const std::size_t begin = page.find("<body>");
    return page.substr(begin, page.find("<script>") - begin);
}

inline void expect_nothing_from_outside(const std::string& page) {
    EXPECT_TRUE(has(page, "default-src 'none'"));
    EXPECT_TRUE(has(page, "<style>" + std::string(page_style) + "</style>"));
    EXPECT_TRUE(has(page, "<script>" + std::string(page_script) + "</script>"));
    for (const char* outside : {"http:", "https:", "src=", "@import", "<link", "style=", "onclick"})
        EXPECT_FALSE(has(page, outside)) << outside;
}

} // namespace zarven::tool

#endif
