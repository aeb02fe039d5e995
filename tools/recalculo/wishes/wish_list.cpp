// A file that is something else is told what it is, so that nobody looks for a fault in it.

#include "wishes/wish_list.h"

#include <algorithm>

#include <fmt/format.h>

#include "base/counted.h"
#include "base/failure.h"
#include "lineup/lineup.h"
#include "lineup/text_lines.h"

namespace zarven::tool {

namespace {

constexpr const char* expected_forms =
    "a bouquet (#SERVICE 1:0:...), a table with a heading such as name,lcn or onid,tsid,sid, or a name or LCN "
    "on each line";

/// dvbv5 is not looked for: its headings are those of a list of names.
void complain_of_other_files(const std::string& file, std::string_view text) {
    const std::size_t begin = text.find_first_not_of(" \t\r\n");
    if (begin != text.npos && text[begin] == '{')
        throw Failure(fmt::format("{}: found JSON, expected a wish list: {}", file, expected_forms));
    const auto format = format_of(text);
    if (format == LineupFormat::channels_conf || format == LineupFormat::lamedb)
        throw Failure(fmt::format("{}: found a channel list ({}), expected a wish list: {}", file,
                                  to_string(*format), expected_forms));
}

WishList read_any(const std::string& file, std::string_view text) {
    if (is_bouquet(text))
        return read_bouquet(file, text);
    if (is_wish_table(text))
        return read_wish_table(file, text);
    complain_of_other_files(file, text);
    return read_wished_names(file, text);
}

} // namespace

const char* to_string(WishFormat format) {
    switch (format) {
    case WishFormat::bouquet:
        return "bouquet";
    case WishFormat::csv:
        return "table";
    case WishFormat::names:
        break;
    }
    return "names";
}

WishList read_wish_list(const std::string& file, std::string_view text) {
    WishList list = read_any(file, text);
    if (!list.wishes.empty())
        return list;
    std::string found = "nothing that is a wish";
    if (!list.unreadable.empty())
        found += fmt::format("; {} cannot be read, the first: {}", counted(list.unreadable.size(), "line"),
                             list.unreadable.front());
    for (const auto& [kind, number] : list.skipped)
        found += fmt::format("; {} skipped: {}", number, kind);
    throw Failure(fmt::format("{}: found {}; expected {}", file, found, expected_forms));
}

} // namespace zarven::tool
