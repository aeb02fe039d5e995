// Widths are decided once for all rows, and a line is cut at the edge of the terminal as the last resort, so
// that no line is ever longer.

#include "report/table.h"

#include <algorithm>
#include <utility>

#include "base/utf8.h"

namespace zarven::tool {

namespace {

constexpr int gap = 2;
/// What is moved beneath its row gets so many columns, or the whole width.
constexpr int least_beneath = 12;

std::string blanks(int count) {
    return std::string(static_cast<std::size_t>(std::max(count, 0)), ' ');
}

} // namespace

Table::Table(std::vector<Column> columns, int indent, const TextStyle& style)
    : indent_(indent), style_(style) {
    for (Column& column : columns)
        columns_.emplace_back(std::move(column));
}

void Table::measure(const Row& row) {
    for (std::size_t n = 0; n < row.size(); ++n) {
        Fitted& column = columns_[n];
        const int columns = display_width(row[n].text);
        const bool is_bounded = style_.width == 0 && column.most != 0;
        column.needed = std::max(column.needed, is_bounded ? std::min(columns, column.most) : columns);
        column.width = std::max(column.least, column.needed);
    }
}

int Table::excess() const {
    if (style_.width == 0)
        return 0;
    int end = indent_;
    for (std::size_t n = 0; n < columns_.size(); ++n)
        if (width(n) != 0)
            end = begin(n) + width(n);
    return end - style_.width;
}

int Table::width(std::size_t column) const {
    const bool is_beneath = wrapped_is_beneath_ && is_last(column);
    return columns_[column].is_shown && !is_beneath ? columns_[column].width : 0;
}

int Table::begin(std::size_t column) const {
    int place = indent_;
    for (std::size_t n = 0; n < column; ++n)
        if (width(n) != 0)
            place += width(n) + gap;
    return place;
}

void Table::give_up_spare_room() {
    for (Fitted& column : columns_)
        if (excess() > 0 && column.narrowest == 0)
            column.width = column.needed;
}

void Table::shorten(int Column::*limit) {
    for (Fitted& column : columns_)
        if (column.*limit != 0)
            column.width =
                std::max(column.width - std::max(excess(), 0), std::min(column.width, column.*limit));
}

void Table::wrap_last() {
    Fitted& last = columns_.back();
    if (last.wrapped_at != 0)
        last.width = std::max(last.width - std::max(excess(), 0), std::min(last.width, last.wrapped_at));
}

void Table::put_last_beneath() {
    if (columns_.back().wrapped_at != 0 && excess() > 0)
        wrapped_is_beneath_ = true;
}

bool Table::leave_one_away() {
    Fitted* next = nullptr;
    for (Fitted& column : columns_)
        if (column.is_shown && column.dispensable > (next == nullptr ? 0 : next->dispensable))
            next = &column;
    if (next != nullptr)
        next->is_shown = false;
    return next != nullptr;
}

void Table::fit() {
    give_up_spare_room();
    const std::vector<Fitted> wanted = columns_;
    const auto start_again = [&] {
        for (std::size_t n = 0; n < columns_.size(); ++n)
            columns_[n].width = wanted[n].width;
    };
    shorten(&Column::readable);
    wrap_last();
    put_last_beneath();
    // Names may have the room back that this has made.
    if (wrapped_is_beneath_)
        start_again();
    shorten(&Column::narrowest);
    while (excess() > 0 && leave_one_away()) {
        start_again();
        shorten(&Column::narrowest);
    }
}

int Table::end_within(int end) const {
    return style_.width == 0 ? end : std::min(end, style_.width);
}

bool Table::is_last(std::size_t column) const {
    return column + 1 == columns_.size();
}

bool Table::is_beside(const Cell& cell, std::size_t column, int start) const {
    if (wrapped_is_beneath_ && is_last(column))
        return start + display_width(cell.text) <= style_.width;
    return width(column) != 0 && (style_.width == 0 || start < style_.width);
}

std::vector<std::string> Table::pieces_of(const Cell& cell, std::size_t column, int start) const {
    if (style_.width == 0)
        return {cell.text};
    if (wrapped_is_beneath_ && is_last(column))
        return {cell.text};
    const int room = end_within(start + width(column)) - start;
    if (columns_[column].wrapped_at != 0)
        return wrapped(cell.text, room);
    return {shortened(cell.text, room, symbols_of(style_).ellipsis)};
}

std::string Table::beneath(const Cell& cell) const {
    if (cell.text.empty())
        return "";
    const auto named = std::find_if(columns_.begin(), columns_.end(),
                                    [](const Fitted& column) { return column.narrowest != 0; });
    int margin = begin(named == columns_.end() ? 0 : static_cast<std::size_t>(named - columns_.begin()));
    if (style_.width - margin < least_beneath)
        margin = 0;
    std::string text;
    for (const std::string& line : wrapped(cell.text, style_.width - margin))
        text += blanks(margin) + painted(line, cell.paint, style_) + '\n';
    return text;
}

std::string Table::lines(const Row& row) const {
    std::string text;
    std::string below;
    int used = 0;
    for (std::size_t n = 0; n < row.size(); ++n) {
        const Cell& cell = row[n];
        // A cell that is wider than its column has pushed this one.
        const int start = used == 0 ? begin(n) : std::max(begin(n), used + gap);
        if (cell.text.empty() || !is_beside(cell, n, start)) {
            below += is_last(n) && wrapped_is_beneath_ ? beneath(cell) : "";
            continue;
        }
        const std::vector<std::string> pieces = pieces_of(cell, n, start);
        const int columns = display_width(pieces.front());
        const int begin_of_text = columns_[n].align == Align::right
                                      ? std::max(start, end_within(start + width(n)) - columns)
                                      : start;
        text += blanks(begin_of_text - used) + painted(pieces.front(), cell.paint, style_);
        used = begin_of_text + columns;
        for (std::size_t piece = 1; piece < pieces.size(); ++piece)
            below += blanks(start) + painted(pieces[piece], cell.paint, style_) + '\n';
    }
    return text + '\n' + below;
}

std::string Table::headings() const {
    Row row;
    bool is_needed = false;
    for (const Fitted& column : columns_) {
        row.emplace_back(column.heading, Paint::bold);
        is_needed = is_needed || !column.heading.empty();
    }
    return is_needed ? lines(row) : "";
}

namespace {

Table measured(std::vector<Column> columns, const std::vector<Row>& rows, int indent,
               const TextStyle& style) {
    Row headings;
    for (const Column& column : columns)
        headings.emplace_back(column.heading);
    Table table(std::move(columns), indent, style);
    table.measure(headings);
    for (const Row& row : rows)
        table.measure(row);
    return table;
}

std::string text_of(Table table, const std::vector<Row>& rows) {
    table.fit();
    std::string text = table.headings();
    for (const Row& row : rows)
        text += table.lines(row);
    return text;
}

} // namespace

std::string table_text(std::vector<Column> columns, const std::vector<Row>& rows, int indent,
                       const TextStyle& style) {
    return text_of(measured(std::move(columns), rows, indent, style), rows);
}

std::optional<std::string> table_as_it_is(std::vector<Column> columns, const std::vector<Row>& rows,
                                          int indent, const TextStyle& style) {
    Table table = measured(std::move(columns), rows, indent, style);
    if (!table.has_room())
        return std::nullopt;
    return text_of(std::move(table), rows);
}

} // namespace zarven::tool
