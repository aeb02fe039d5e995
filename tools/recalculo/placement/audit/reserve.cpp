// Hundredths of a percent are whole numbers, so that a limit is met exactly.

#include "placement/audit/reserve.h"

#include <string_view>

#include <fmt/format.h>

#include "base/failure.h"
#include "base/utf8.h"
#include "lineup/text_lines.h"
#include "placement/result.h"

namespace zarven::tool {

namespace {

constexpr std::uint32_t whole = 100 * 100;

[[noreturn]] void complain(const std::string& text) {
    throw Failure(
        fmt::format("--reserve: found \"{}\", expected percent from 0 to {} with at most two decimals, "
                    "as 2.5%",
                    shortened(text), most_reserve_percent));
}

} // namespace

Reserve read_reserve(const std::string& text) {
    std::string_view number = text;
    if (!number.empty() && number.back() == '%')
        number.remove_suffix(1);
    const std::size_t point = number.find('.');
    std::uint32_t percent = 0;
    if (!is_number(number.substr(0, point), most_reserve_percent, percent))
        complain(text);
    std::uint32_t hundredths = 0;
    if (point != number.npos) {
        const std::string_view decimals = number.substr(point + 1);
        if (decimals.size() > 2 || !is_number(decimals, 99, hundredths))
            complain(text);
        if (decimals.size() == 1)
            hundredths *= 10;
    }
    const Reserve reserve{percent * 100 + hundredths};
    if (reserve.hundredths > most_reserve_percent * 100)
        complain(text);
    return reserve;
}

std::uint32_t reserve_of(std::uint32_t bitrate_max, Reserve reserve) {
    return static_cast<std::uint32_t>((std::uint64_t{bitrate_max} * reserve.hundredths + whole - 1) / whole);
}

void set_reserve(Result& result, Reserve reserve) {
    for (ModuleResult& module : result.modules)
        for (OutputResult& output : module.outputs)
            output.reserve = reserve_of(output.bitrate_max, reserve);
}

} // namespace zarven::tool
