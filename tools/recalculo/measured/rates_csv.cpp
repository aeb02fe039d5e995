// The separator is the one of the heading. Fields are numbers, so that quotes need not be understood, only
// passed over.

#include "measured/rates_csv.h"

#include <algorithm>
#include <array>
#include <limits>

#include <fmt/format.h>

#include "base/failure.h"
#include "base/utf8.h"
#include "lineup/text_lines.h"

namespace zarven::tool {

namespace {

constexpr std::string_view expected_heading = "onid,tsid,sid,kbit_s";
constexpr std::size_t no_column = std::string_view::npos;

bool is_passed_over(std::string_view line) {
    return is_blank(line) || trimmed(line).front() == '#';
}

std::string_view unquoted(std::string_view field) {
    field = trimmed(field);
    if (field.size() >= 2 && field.front() == '"' && field.back() == '"')
        return field.substr(1, field.size() - 2);
    return field;
}

char lower(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

/// Where the columns stand.
class Heading {
public:
    explicit Heading(std::string_view line) {
        for (const std::string_view candidate : {",", ";", "\t"})
            if (line.find(candidate) != line.npos) {
                separator_ = candidate;
                break;
            }
        for (const std::string_view field : split(line, separator_)) {
            std::string name(unquoted(field));
            std::transform(name.begin(), name.end(), name.begin(), lower);
            names_.push_back(std::move(name));
        }
    }

    std::size_t column(std::string_view name) const {
        const auto found = std::find(names_.begin(), names_.end(), name);
        return found == names_.end() ? no_column : static_cast<std::size_t>(found - names_.begin());
    }

    bool has(std::string_view name) const { return column(name) != no_column; }

    /// The field of a line in that column; empty where the line has none.
    std::string_view field(std::string_view line, std::string_view name) const {
        const auto fields = split(line, separator_);
        return column(name) < fields.size() ? unquoted(fields[column(name)]) : std::string_view();
    }

private:
    std::string_view separator_ = ",";
    std::vector<std::string> names_;
};

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

MeasuredService read_row(const Heading& heading, std::string_view line) {
    MeasuredService service;
    const std::string_view onid = heading.field(line, "onid");
    if (!onid.empty())
        service.onid = read_id("onid", onid);
    service.tsid = read_id("tsid", heading.field(line, "tsid"));
    service.sid = read_id("sid", heading.field(line, "sid"));
    service.rate = read_rate(heading.field(line, "kbit_s"));
    return service;
}

} // namespace

bool is_rates_csv(std::string_view text) {
    for (const Line& line : lines_of(text))
        if (!is_passed_over(line.text)) {
            const Heading heading(line.text);
            return heading.has("tsid") || heading.has("sid") || heading.has("kbit_s");
        }
    return false;
}

MeasuredFile read_rates_csv(const std::string& file, std::string_view text) {
    MeasuredFile read{file, {{}}, {}};
    std::optional<Heading> heading;
    for (const Line& line : lines_of(text)) {
        if (is_passed_over(line.text))
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
