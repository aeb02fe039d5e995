// A rate is read as two whole numbers: not every standard library reads a decimal one without a locale.

#include "measured/rates_csv.h"

#include <algorithm>
#include <limits>

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

MeasuredService service_of(const CsvRecord& record) {
    MeasuredService service;
    const std::string_view onid = record.field("onid");
    if (!onid.empty())
        service.onid = read_id("onid", onid);
    service.tsid = read_id("tsid", record.field("tsid"));
    service.sid = read_id("sid", record.field("sid"));
    service.rate = read_rate(record.field("kbit_s"));
    return service;
}

} // namespace

bool is_rates_csv(std::string_view text) {
    const CsvTable table("", text);
    const auto& heading = table.heading();
    return heading && (heading->has("tsid") || heading->has("sid") || heading->has("kbit_s"));
}

MeasuredFile read_rates_csv(const std::string& file, std::string_view text) {
    MeasuredFile read{file, {{}}, {}};
    const CsvTable table(file, text);
    const auto& heading = table.heading();
    if (heading && (!heading->has("tsid") || !heading->has("sid") || !heading->has("kbit_s")))
        table.reject_heading(expected_heading);
    read.unreadable = table.read([&read](const CsvRecord& record) {
        read.measurements.front().services.push_back(service_of(record));
    });
    return read;
}

} // namespace zarven::tool
