// A table for the terminal: columns as wide as their widest cell on the screen, fitted to the terminal when
// it is narrower. First names are shortened as far as they stay readable, then the last column is wrapped,
// then it goes beneath its row where it does not fit beside it, then names are shortened further, and then
// columns are left away. Some thousands of rows; only their widths are kept.

#ifndef RECALCULO_TABLE_H
#define RECALCULO_TABLE_H

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "report/terminal.h"

namespace zarven::tool {

enum class Align { left, right };

struct Column {
    std::string heading;
    Align align = Align::left;
    /// So wide at least, where there is room for it.
    int least = 0;
    /// Cells beyond that width push their own line only, where the width has no limit; 0 for no such bound.
    int most = 0;
    /// May be shortened to that width; 0 for never.
    int narrowest = 0;
    /// May be shortened to that width so that the last column stays beside it.
    int readable = 0;
    /// The last column only: may be broken into lines of that width; 0 for never.
    int wrapped_at = 0;
    /// Columns are left away beginning with the highest number; 0 for never.
    int dispensable = 0;
};

/// A text as `shown` gives it.
struct Cell {
    Cell() = default;
    Cell(std::string content, Paint colour = Paint::none) : text(std::move(content)), paint(colour) {}
    Cell(const char* content) : text(content) {}

    std::string text;
    Paint paint = Paint::none;
};
using Row = std::vector<Cell>;

class Table {
public:
    /// Each line begins with `indent` blanks. The style must outlive the table.
    Table(std::vector<Column> columns, int indent, const TextStyle& style);

    /// Has a column widened, if need be, so that the rows have room; before `fit`.
    void measure(const Row& row);

    /// All of the rows that were measured has room as it is.
    bool has_room() const { return excess() <= 0; }

    /// Decides on the widths; after the last row is measured.
    void fit();

    /// Columns that a column has in the end; 0 for one that is left away.
    int width(std::size_t column) const;

    /// Where the text of a column begins.
    int begin(std::size_t column) const;

    /// The row as lines, each with its line end.
    std::string lines(const Row& row) const;

    /// The headings as a row, in bold; empty if no column has one.
    std::string headings() const;

private:
    struct Fitted : Column {
        explicit Fitted(Column column) : Column(std::move(column)), width(least) {}
        int needed = 0;
        int width;
        bool is_shown = true;
    };

    int excess() const;
    void give_up_spare_room();
    void shorten(int Column::*limit);
    void wrap_last();
    void put_last_beneath();
    bool leave_one_away();
    /// The place, or the edge of the terminal if that comes first.
    int end_within(int end) const;
    bool is_last(std::size_t column) const;
    /// A cell that would begin there stands in the line of its row.
    bool is_beside(const Cell& cell, std::size_t column, int start) const;
    /// The lines of such a cell.
    std::vector<std::string> pieces_of(const Cell& cell, std::size_t column, int start) const;
    std::string beneath(const Cell& cell) const;

    std::vector<Fitted> columns_;
    int indent_;
    const TextStyle& style_;
    bool wrapped_is_beneath_ = false;
};

/// A whole table: headings, if there are some, then the rows.
std::string table_text(std::vector<Column> columns, const std::vector<Row>& rows, int indent,
                       const TextStyle& style);

/// The same, or nothing where it would have to be fitted to the terminal.
std::optional<std::string> table_as_it_is(std::vector<Column> columns, const std::vector<Row>& rows,
                                          int indent, const TextStyle& style);

} // namespace zarven::tool

#endif
