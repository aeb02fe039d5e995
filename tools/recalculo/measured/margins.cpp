// The sign of percent may be left out.

#include "measured/margins.h"

#include <algorithm>
#include <limits>

#include <fmt/format.h>

#include "base/failure.h"
#include "base/utf8.h"
#include "lineup/text_lines.h"

namespace zarven::tool {

Margins read_margins(const std::vector<std::string>& texts) {
    Margins margins;
    for (const std::string& text : texts) {
        constexpr std::string_view measured = "measured=";
        constexpr std::string_view estimated = "estimated=";
        std::string_view number = text;
        const bool only_measured = starts_with(text, measured);
        const bool only_estimated = starts_with(text, estimated);
        if (only_measured || only_estimated)
            number.remove_prefix(only_measured ? measured.size() : estimated.size());
        if (!number.empty() && number.back() == '%')
            number.remove_suffix(1);
        std::uint32_t percent = 0;
        if (!is_number(number, most_margin, percent))
            throw Failure(
                fmt::format("--margin: found \"{}\", expected a whole number of percent up to {} as "
                            "10%, measured=10% or estimated=10%",
                            shortened(text), most_margin));
        if (!only_estimated)
            margins.measured = percent;
        if (!only_measured)
            margins.estimated = percent;
    }
    return margins;
}

std::uint32_t with_margin(std::uint32_t bitrate, std::uint32_t percent) {
    const std::uint64_t hundredths = std::uint64_t{bitrate} * (100 + percent);
    return static_cast<std::uint32_t>(
        std::min<std::uint64_t>((hundredths + 99) / 100, std::numeric_limits<std::uint32_t>::max()));
}

} // namespace zarven::tool
