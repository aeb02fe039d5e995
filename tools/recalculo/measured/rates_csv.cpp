// A rate is read as two whole numbers: not every standard library reads a decimal one without a locale.

#include "measured/rates_csv.h"

#include <algorithm>
#include <limits>

#include <fmt/format.h>

#include "base/failure.h"
#include "base/utf8.h"
#include "lineup/csv.h"
#include "lineup/text_lines.h"

namespace zarven::tool {

namespace {

constexpr std::string_view expected_heading = "onid,tsid,sid,kbit_s";

/// In bit/s.
double read_rate(std::string_view text) {
    const std::size_t point = std::min(text.find('.'), text.size());
    const std::string_view decimals = text.substr(std::min(point + 1, text.size()));
    std::uint32_t whole = 0;
    std::uint32_t fraction = 0;
    constexpr std::size_t most_decimals = 9;
    if (!is_number(text.substr(0, point), std::numeric_limits<std::uint32_t>::max(), whole) ||
        (point != text.size() && (decimals.size() > most_decimals ||
                                  !is_number(decimals, std::numeric_limits<std::uint32_t>::max(), fraction))))
        reject("kbit_s", text, "a number of kbit/s such as 4200 or 4200.5");
    double part = fraction;
    for (std::size_t digit = 0; digit < decimals.size(); ++digit)
        part /= 10;
    return (whole + part) * 1000;
}

MeasuredService read_row(const CsvHeading& heading, std::string_view line) {
    MeasuredService service;
    const std::vector<std::string> fields = heading.fields_of(line);
    const std::string_view onid = heading.field(fields, "onid");
    if (!onid.empty())
        service.onid = read_id("onid", onid);
    service.tsid = read_id("tsid", heading.field(fields, "tsid"));
    service.sid = read_id("sid", heading.field(fields, "sid"));
    service.rate = read_rate(heading.field(fields, "kbit_s"));
    return service;
}

} // namespace

bool is_rates_csv(std::string_view text) {
    for (const Line& line : lines_of(text))
        if (!is_passed_over_in_csv(line.text)) {
            const CsvHeading heading(line.text);
            return heading.has("tsid") || heading.has("sid") || heading.has("kbit_s");
        }
    return false;
}

MeasuredFile read_rates_csv(const std::string& file, std::string_view text) {
    MeasuredFile read{file, {{}}, {}};
    std::optional<CsvHeading> heading;
    for (const Line& line : lines_of(text)) {
        if (is_passed_over_in_csv(line.text))
            continue;
        if (!heading) {
            heading.emplace(line.text);
            if (!heading->has("tsid") || !heading->has("sid") || !heading->has("kbit_s"))
                throw Failure(fmt::format("{}: line {}: found the heading \"{}\", expected {}", file,
                                          line.number, shortened(line.text), expected_heading));
            continue;
        }
        try {
            read.measurements.front().services.push_back(read_row(*heading, line.text));
        } catch (const BadLine& reason) {
            read.unreadable.push_back(fmt::format("{}: line {}: {}", file, line.number, reason.what()));
        }
    }
    return read;
}

} // namespace zarven::tool
