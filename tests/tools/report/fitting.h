// What every text report keeps to, whatever it tells.

#ifndef RECALCULO_FITTING_H
#define RECALCULO_FITTING_H

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "base/utf8.h"
#include "report/terminal.h"

namespace zarven::tool {

inline std::vector<std::string> lines_of(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

/// `report` gives the text in a style. Of these, no line is longer than the terminal is wide.
template <class Report> void expect_to_fit(Report report) {
    for (const bool is_utf8 : {true, false})
        for (int width = 1; width <= 130; ++width)
            for (const std::string& line : lines_of(report(TextStyle{false, is_utf8, width})))
                ASSERT_LE(display_width(line), width) << line;
}

/// Without UTF-8 there is ASCII only, and colours come on demand.
template <class Report> void expect_plain_characters(Report report) {
    const std::string text = report(TextStyle{false, false, 0});
    EXPECT_TRUE(std::all_of(text.begin(), text.end(), [](char byte) {
        return byte == '\n' || (byte >= ' ' && byte <= '~');
    })) << text;
    std::string coloured = report(TextStyle{true, false, 0});
    EXPECT_NE(coloured, text);
    for (std::size_t begin; (begin = coloured.find('\x1B')) != std::string::npos;)
        coloured.erase(begin, coloured.find('m', begin) + 1 - begin);
    EXPECT_EQ(coloured, text);
}

} // namespace zarven::tool

#endif
