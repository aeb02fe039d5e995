// An analysis alone is written over many lines, all but the first and the last of them indented, so that a
// brace at the beginning of a second line shows one analysis a line.

#include "measured/measured_file.h"

#include <fmt/format.h>

#include "base/failure.h"
#include "lineup/text_lines.h"
#include "measured/analysis_json.h"
#include "measured/rates_csv.h"

namespace zarven::tool {

namespace {

/// The analysis on a line of a log; empty where there is none. Before it stands what its user has chosen.
std::string_view analysis_on(std::string_view line) {
    constexpr std::string_view mark = "analyze:";
    if (starts_with(line, "{"))
        return line;
    const std::size_t at = line.find(mark);
    if (at == line.npos)
        return {};
    const std::size_t brace = line.find('{', at + mark.size());
    return brace == line.npos ? std::string_view() : line.substr(brace);
}

MeasuredFile read_log(const std::string& file, const std::vector<Line>& lines) {
    MeasuredFile read{file, {}, {}};
    for (const Line& line : lines) {
        const std::string_view analysis = analysis_on(line.text);
        if (analysis.empty())
            continue;
        try {
            read.measurements.push_back(
                read_analysis(line_of_file(file, line.number), std::string(analysis)));
        } catch (const Failure& reason) {
            read.unreadable.emplace_back(reason.what());
        }
    }
    if (read.measurements.empty() && read.unreadable.empty())
        throw Failure(
            fmt::format("{}: found no measurement, expected the analysis of a stream as JSON, a log "
                        "with such, or a table with the heading onid,tsid,sid,kbit_s",
                        file));
    return read;
}

bool is_one_analysis(const std::vector<Line>& lines) {
    std::size_t braces = 0;
    bool is_first = true;
    for (const Line& line : lines) {
        if (is_first && is_blank(line.text))
            continue;
        if (is_first && trimmed(line.text).front() != '{')
            return false;
        is_first = false;
        braces += starts_with(line.text, "{") ? 1 : 0;
    }
    return !is_first && braces <= 1;
}

} // namespace

MeasuredFile read_measured_file(const std::string& file, const std::string& text) {
    const std::vector<Line> lines = lines_of(text);
    if (is_one_analysis(lines))
        return {file, {read_analysis(file, text)}, {}};
    if (is_rates_csv(text))
        return read_rates_csv(file, text);
    return read_log(file, lines);
}

} // namespace zarven::tool
