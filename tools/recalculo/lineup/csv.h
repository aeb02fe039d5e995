// Tables as text: a heading that names the columns, then a record a line. Commas, semicolons or tabs stand
// between the fields, whichever the heading has; a field in quotes may hold them, and doubled quotes for one.
// A field has no line break. Some ten thousand lines.

#ifndef RECALCULO_CSV_H
#define RECALCULO_CSV_H

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "lineup/text_lines.h"

namespace zarven::tool {

class CsvHeading {
public:
    explicit CsvHeading(std::string_view line);

    bool has(std::string_view column) const;
    /// In small letters, with _ for blanks and hyphens between words.
    const std::vector<std::string>& columns() const { return columns_; }

    /// The fields of a line, without blanks around them. Throws `BadLine` for a quote that is not closed.
    std::vector<std::string> fields_of(std::string_view line) const;
    /// That of a column; empty where the line does not reach it, or there is no such column.
    std::string_view field(const std::vector<std::string>& fields, std::string_view column) const;

private:
    char separator_ = ',';
    std::vector<std::string> columns_;
};

/// A line below the heading.
class CsvRecord {
public:
    /// Throws `BadLine`.
    CsvRecord(const CsvHeading& heading, const Line& line, std::size_t place);

    /// That of a column; empty where there is none.
    std::string_view field(std::string_view column) const { return heading_.field(fields_, column); }
    const Line& line() const { return line_; }
    /// Among the records, from 1; those that cannot be read have one, too.
    std::size_t place() const { return place_; }

private:
    const CsvHeading& heading_;
    const Line& line_;
    std::vector<std::string> fields_;
    std::size_t place_;
};

/// A table: the first line that has something on it is the heading, and each further one a record.
class CsvTable {
public:
    /// `file` is for messages.
    CsvTable(std::string file, std::string_view text);

    /// Nothing for a text without lines.
    const std::optional<CsvHeading>& heading() const { return heading_; }
    /// Throws `Failure` for a heading that does not have what is expected.
    [[noreturn]] void reject_heading(std::string_view expected) const;

    std::size_t records() const { return lines_.empty() ? 0 : lines_.size() - 1; }
    /// Hands over each record. Returns for each that cannot be read, and of which `take` throws `BadLine`,
    /// where it stands and why.
    std::vector<std::string> read(const std::function<void(const CsvRecord&)>& take) const;

private:
    std::string file_;
    std::vector<Line> lines_;
    std::optional<CsvHeading> heading_;
};

} // namespace zarven::tool

#endif
