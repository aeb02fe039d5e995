// A quote has its meaning at the beginning of a field only; within a text it is a character as any other.

#include "lineup/csv.h"

#include <algorithm>
#include <utility>

#include <fmt/format.h>

#include "base/failure.h"
#include "base/utf8.h"
#include "base/words.h"

namespace zarven::tool {

namespace {

/// Takes the first field off the line, and the separator behind it. False where there was none.
bool take_field(std::string_view& line, char separator, std::string& field) {
    field.clear();
    const std::size_t first = std::min(line.find_first_not_of(separator == '\t' ? " " : " \t"), line.size());
    if (first == line.size() || line[first] != '"') {
        const std::size_t end = line.find(separator);
        field = trimmed(line.substr(0, end));
        line.remove_prefix(std::min(end, line.size()));
    } else {
        const std::string_view whole = line;
        line.remove_prefix(first + 1);
        for (;; line.remove_prefix(1)) {
            const std::size_t quote = line.find('"');
            if (quote == line.npos)
                reject("quotes", whole, "a second quote where the field ends");
            field += line.substr(0, quote);
            line.remove_prefix(quote + 1);
            if (line.empty() || line.front() != '"')
                break;
            field += '"';
        }
        const std::size_t end = line.find(separator);
        if (!is_blank(line.substr(0, end)))
            reject("quotes", whole, "nothing behind the quotes but the next field");
        field = trimmed(field);
        line.remove_prefix(std::min(end, line.size()));
    }
    if (line.empty())
        return false;
    line.remove_prefix(1);
    return true;
}

std::vector<std::string> split_fields(std::string_view line, char separator) {
    std::vector<std::string> fields;
    bool is_more = true;
    while (is_more) {
        fields.emplace_back();
        is_more = take_field(line, separator, fields.back());
    }
    return fields;
}

std::string column_name(std::string_view written) {
    std::string name = in_small_letters(written);
    std::replace_if(
        name.begin(), name.end(), [](char letter) { return letter == ' ' || letter == '-'; }, '_');
    return name;
}

} // namespace

CsvHeading::CsvHeading(std::string_view line) {
    for (const char candidate : {',', ';', '\t'})
        if (line.find(candidate) != line.npos) {
            separator_ = candidate;
            break;
        }
    try {
        for (const std::string& field : split_fields(line, separator_))
            columns_.push_back(column_name(field));
    } catch (const BadLine&) {
        columns_.clear(); // then it is none
    }
}

bool CsvHeading::has(std::string_view column) const {
    return std::find(columns_.begin(), columns_.end(), column) != columns_.end();
}

std::vector<std::string> CsvHeading::fields_of(std::string_view line) const {
    return split_fields(line, separator_);
}

std::string_view CsvHeading::field(const std::vector<std::string>& fields, std::string_view column) const {
    const auto place =
        static_cast<std::size_t>(std::find(columns_.begin(), columns_.end(), column) - columns_.begin());
    return place < std::min(fields.size(), columns_.size()) ? std::string_view(fields[place])
                                                            : std::string_view();
}

CsvRecord::CsvRecord(const CsvHeading& heading, const Line& line, std::size_t place)
    : heading_(heading), line_(line), fields_(heading.fields_of(line.text)), place_(place) {}

CsvTable::CsvTable(std::string file, std::string_view text) : file_(std::move(file)), lines_(lines_of(text)) {
    const auto is_passed_over = [](const Line& line) { return is_blank_or_remark(line.text); };
    lines_.erase(std::remove_if(lines_.begin(), lines_.end(), is_passed_over), lines_.end());
    if (!lines_.empty())
        heading_.emplace(lines_.front().text);
}

void CsvTable::reject_heading(std::string_view expected) const {
    throw Failure(fmt::format("{}: found the heading \"{}\", expected {}",
                              line_of_file(file_, lines_.front().number), shortened(lines_.front().text),
                              expected));
}

std::vector<std::string> CsvTable::read(const std::function<void(const CsvRecord&)>& take) const {
    std::vector<std::string> unreadable;
    for (std::size_t place = 1; place <= records(); ++place) {
        const Line& line = lines_[place];
        try {
            take(CsvRecord(*heading_, line, place));
        } catch (const BadLine& reason) {
            unreadable.push_back(fmt::format("{}: {}", line_of_file(file_, line.number), reason.what()));
        }
    }
    return unreadable;
}

} // namespace zarven::tool
