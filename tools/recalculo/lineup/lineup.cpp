// A list may be damaged anywhere, so that every line is asked until one shows the format of all.

#include "lineup/lineup.h"

#include <algorithm>
#include <utility>

#include <fmt/format.h>

#include "base/failure.h"
#include "lineup/channels_conf.h"
#include "lineup/dvbv5.h"
#include "lineup/lamedb.h"
#include "lineup/text_lines.h"

namespace zarven::tool {

namespace {

std::optional<LineupFormat> format_of_line(std::string_view line) {
    if (line.front() == '#')
        return std::nullopt; // a comment in two of them
    if (starts_with(line, lamedb_header))
        return LineupFormat::lamedb;
    if (is_channels_conf_line(line))
        return LineupFormat::channels_conf;
    if (line.front() == '[' && line.back() == ']')
        return LineupFormat::dvbv5;
    return std::nullopt;
}

ChannelList read_list(std::string_view text, LineupFormat format) {
    switch (format) {
    case LineupFormat::channels_conf:
        break;
    case LineupFormat::dvbv5:
        return read_dvbv5(text);
    case LineupFormat::lamedb:
        return read_lamedb(text);
    }
    return read_channels_conf(text);
}

} // namespace

const std::vector<std::string>& lineup_format_names() {
    static const std::vector<std::string> names = {"channels.conf", "dvbv5", "lamedb"};
    return names;
}

const std::string& to_string(LineupFormat format) {
    return lineup_format_names().at(static_cast<std::size_t>(format));
}

LineupFormat lineup_format(std::string_view name) {
    const auto& names = lineup_format_names();
    return static_cast<LineupFormat>(std::find(names.begin(), names.end(), name) - names.begin());
}

std::optional<LineupFormat> format_of(std::string_view text) {
    for (const Line& line : lines_of(text)) {
        const std::string_view content = trimmed(line.text);
        const auto format = content.empty() ? std::nullopt : format_of_line(content);
        if (format)
            return format;
    }
    return std::nullopt;
}

Lineup read_lineup(const std::string& file, std::string_view text, std::optional<LineupFormat> format) {
    if (!format)
        format = format_of(text);
    if (!format)
        throw Failure(
            fmt::format("{}: found no line of a channel list, expected channels.conf (13 fields with "
                        "colons between them), dvbv5 ([Name] and KEY = VALUE) or lamedb ({}4/ or 5/)",
                        file, lamedb_header));
    try {
        return {*format, read_list(text, *format)};
    } catch (const BadLine& bad) {
        throw Failure(fmt::format("{}: {}", file, bad.what()));
    }
}

void append(ChannelList& lists, ChannelList list, std::size_t number) {
    const auto append_to = [number](auto& all, auto& more) {
        for (auto& one : more) {
            one.list = number;
            all.push_back(std::move(one));
        }
    };
    append_to(lists.channels, list.channels);
    append_to(lists.unreadable, list.unreadable);
    append_to(lists.remarks, list.remarks);
    lists.numbered_by_place += list.numbered_by_place;
}

} // namespace zarven::tool
