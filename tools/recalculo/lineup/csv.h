// Tables as text: a heading that names the columns, then a record a line. Commas, semicolons or tabs stand
// between the fields, whichever the heading has; a field in quotes may hold them, and doubled quotes for one.
// A field has no line break. Some ten thousand lines.

#ifndef RECALCULO_CSV_H
#define RECALCULO_CSV_H

#include <string>
#include <string_view>
#include <vector>

namespace zarven::tool {

/// Nothing on it, or a remark that begins with #.
bool is_passed_over_in_csv(std::string_view line);

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

} // namespace zarven::tool

#endif
