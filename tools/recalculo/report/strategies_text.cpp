// Two tables: the figures of the strategies, then the services that not all of them place, a column each.

#include "report/strategies_text.h"

#include <algorithm>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "base/counted.h"
#include "report/table.h"

namespace zarven::tool {

namespace {

/// Rows of the second table; the JSON report has them all.
constexpr std::size_t services_shown = 10;
/// Stands here in the first table if there is anything to tell.
constexpr int neither_column = 3;

std::string verdict_of(const Strategies& strategies, const Strategy& strategy) {
    const std::string& rival = strategies.list[strategy.rival].name;
    switch (strategy.verdict) {
    case Verdict::kept:
        return strategy.places_everything ? "kept: places everything" : "kept: leaves the fewest out";
    case Verdict::surpassed:
        return fmt::format("the fewest so far, but {} leaves fewer out", rival);
    case Verdict::tie:
        return fmt::format("tie with {}, which came first", rival);
    case Verdict::worse:
        return fmt::format("worse than {}", rival);
    case Verdict::not_tried:
        break;
    }
    return fmt::format("not tried: {} placed everything", rival);
}

std::string left_out_of(const Strategy& strategy) {
    if (strategy.left_out == strategy.left_out_counted)
        return fmt::format("{}", strategy.left_out);
    return fmt::format("{} ({} by the engine's count)", strategy.left_out, strategy.left_out_counted);
}

Column numbers(const std::string& heading) {
    Column column;
    column.heading = heading;
    column.align = Align::right;
    return column;
}

std::string table_of(const Strategies& strategies, const TextStyle& style) {
    Column name;
    name.heading = "Strategy";
    Column left_out = numbers("Left out");
    left_out.narrowest = 8;
    Column inputs = numbers("Inputs used");
    inputs.dispensable = 1;
    Column verdict;
    verdict.heading = "Verdict";
    verdict.wrapped_at = 20;
    const bool any_neither = std::any_of(strategies.list.begin(), strategies.list.end(),
                                         [](const Strategy& strategy) { return strategy.neither != 0; });
    std::vector<Column> columns = {name, numbers("Placed"), left_out, inputs, numbers("Audit"), verdict};
    if (any_neither)
        columns.insert(columns.begin() + neither_column, numbers("Neither"));
    std::vector<Row> rows;
    for (const Strategy& strategy : strategies.list) {
        rows.push_back({strategy.name, std::to_string(strategy.placed), left_out_of(strategy),
                        fmt::format("{} of {}", strategy.inputs_used, strategy.inputs),
                        std::to_string(strategy.findings), verdict_of(strategies, strategy)});
        if (any_neither)
            rows.back().insert(rows.back().begin() + neither_column, std::to_string(strategy.neither));
    }
    return table_text(std::move(columns), rows, body_indent, style);
}

std::string table_of_contested(const Strategies& strategies, std::size_t rows_shown, const TextStyle& style) {
    const Symbols& symbols = symbols_of(style);
    Column name;
    name.heading = "Service";
    name.least = 16;
    name.most = 34;
    name.narrowest = 12;
    Column lcn = numbers("LCN");
    lcn.least = 5;
    Column stream = numbers("Stream");
    stream.least = 11;
    stream.dispensable = 1;
    std::vector<Column> columns = {lcn, name, stream};
    for (const Strategy& strategy : strategies.list)
        columns.push_back(numbers(strategy.name));
    std::vector<Row> rows;
    for (std::size_t index = 0; index < rows_shown; ++index) {
        const Contested& one = strategies.contested[index];
        Row row = {std::to_string(one.service.lcn), shown(one.service.name, style),
                   to_string(one.service.stream)};
        for (const bool is_placed : one.is_placed_by)
            row.emplace_back(std::string(is_placed ? symbols.mark : symbols.dash));
        rows.push_back(std::move(row));
    }
    return table_text(std::move(columns), rows, body_indent, style);
}

std::string contested_text(const Strategies& strategies, const TextStyle& style) {
    const std::size_t number = strategies.contested.size();
    if (number == 0)
        return paragraph_text("Placed by some of them only: none", body_indent, Paint::none, style);
    const std::size_t rows_shown = std::min(number, services_shown);
    const std::size_t kept = index_of_kept(strategies.list);
    const auto missed = std::count_if(strategies.contested.begin(), strategies.contested.end(),
                                      [kept](const Contested& one) { return !one.is_placed_by[kept]; });
    const std::string sentence = fmt::format(
        "Placed by some of them only: {}, {} of them {} {}{}", counted(number, "service"),
        missed == 0 ? "all" : std::to_string(missed), missed == 0 ? "by" : "not by",
        strategies.list[kept].name, rows_shown < number ? fmt::format("; the first {}:", rows_shown) : ":");
    return paragraph_text(sentence, body_indent, Paint::none, style) +
           table_of_contested(strategies, rows_shown, style);
}

} // namespace

std::string strategies_text(const Strategies& strategies, const TextStyle& style) {
    return paragraph_text("Strategies, each alone on the head-end, without clones", 0, Paint::none, style) +
           table_of(strategies, style) + "\n" + contested_text(strategies, style);
}

} // namespace zarven::tool
