// An argument and an option, read together.

#include "commands/headend_input.h"

#include <fmt/format.h>

#include "headend/override.h"
#include "lineup/lineup.h"

namespace zarven::tool {

Headend read_input(const HeadendInput& input) {
    return read_json_file(input.path, [&](const std::string& name, const std::string& text) {
        return read_headend(name, text, input.settings);
    });
}

void complain_of_channel_list(const std::string& name, const std::string& text) {
    // JSON that is damaged may have any line in it.
    const std::size_t begin = text.find_first_not_of(" \t\r\n");
    if (begin == text.npos || text[begin] == '{')
        return;
    if (const auto format = format_of(text))
        throw Failure(
            fmt::format("{}: this is a channel list ({}); use `recalculo import` to make a head-end "
                        "of it",
                        name, to_string(*format)));
}

} // namespace zarven::tool
