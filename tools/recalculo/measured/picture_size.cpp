// A size is two numbers with an x between them, and nothing else there looks like that.

#include "measured/picture_size.h"

#include <cstdint>

#include "lineup/text_lines.h"

namespace zarven::tool {

namespace {

constexpr std::uint32_t most_lines = 100000;
constexpr std::string_view digits = "0123456789";

ChannelKind kind_of(std::uint32_t width, std::uint32_t height) {
    if (width >= 3840 || height >= 2160)
        return ChannelKind::uhd;
    return width >= 1280 || height >= 720 ? ChannelKind::hd : ChannelKind::sd;
}

} // namespace

std::optional<ChannelKind> kind_by_size(std::string_view description) {
    for (std::size_t at = description.find('x'); at != description.npos; at = description.find('x', at + 1)) {
        const std::string_view before = description.substr(0, at);
        const std::string_view after = description.substr(at + 1);
        // One behind the last that is no digit; 0 where there is none.
        const std::size_t begin = before.find_last_not_of(digits) + 1;
        std::uint32_t width = 0;
        std::uint32_t height = 0;
        if (is_number(before.substr(begin), most_lines, width) &&
            is_number(after.substr(0, after.find_first_not_of(digits)), most_lines, height))
            return kind_of(width, height);
    }
    return std::nullopt;
}

} // namespace zarven::tool
