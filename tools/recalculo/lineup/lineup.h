// Channel lists of any form: which one a file has, and how it is read.

#ifndef RECALCULO_LINEUP_H
#define RECALCULO_LINEUP_H

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "lineup/channel.h"

namespace zarven::tool {

enum class LineupFormat { channels_conf, dvbv5, lamedb };

/// The names of the formats, as the command line takes them, in the order of the values.
const std::vector<std::string>& lineup_format_names();

const std::string& to_string(LineupFormat format);

/// The format of that name, which is one of them.
LineupFormat lineup_format(std::string_view name);

/// The format of a text by the first line that shows one; nothing where no line does.
std::optional<LineupFormat> format_of(std::string_view text);

struct Lineup {
    LineupFormat format = LineupFormat::channels_conf;
    ChannelList list;
};

/// Reads a list, of the format if one is given, else of the one that the text shows. `file` is for messages.
/// Throws `Failure` where it shows none.
Lineup read_lineup(const std::string& file, std::string_view text, std::optional<LineupFormat> format);

/// Puts a list behind others; `number` is its own, from 0.
void append(ChannelList& lists, ChannelList list, std::size_t number);

} // namespace zarven::tool

#endif
