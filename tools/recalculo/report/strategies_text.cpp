// Two tables: the figures of the strategies, then the services that not all of them place, a column each.

#include "report/strategies_text.h"

#include <algorithm>

#include <fmt/format.h>

#include "base/utf8.h"

namespace zarven::tool {

namespace {

/// Rows of the second table; the JSON report has them all.
constexpr std::size_t services_shown = 10;
constexpr int narrowest_name = 16;
constexpr int widest_name = 34;

std::string verdict_of(const Strategies& strategies, const Strategy& strategy) {
    const std::string& rival = strategies.list[strategy.rival].name;
    switch (strategy.verdict) {
    case Verdict::kept:
        return strategy.left_out_counted == 0 ? "kept: places everything" : "kept: leaves the fewest out";
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

std::string table_of(const Strategies& strategies) {
    const std::string heading = "Left out";
    std::size_t left_out_width = heading.size();
    for (const Strategy& strategy : strategies.list)
        left_out_width = std::max(left_out_width, left_out_of(strategy).size());
    std::string text = fmt::format("  {:<8}  {:>6}  {:<{}}  {:>11}  {:>5}   {}\n", "Strategy", "Placed",
                                   heading, left_out_width, "Inputs used", "Audit", "Verdict");
    for (const Strategy& strategy : strategies.list) {
        const std::string inputs = fmt::format("{} of {}", strategy.inputs_used, strategy.inputs);
        text += fmt::format("  {:<8}  {:>6}  {:>{}}  {:>11}  {:>5}   {}\n", strategy.name, strategy.placed,
                            left_out_of(strategy), left_out_width, inputs, strategy.findings,
                            verdict_of(strategies, strategy));
    }
    return text;
}

int name_width_of(const std::vector<Contested>& contested, std::size_t shown) {
    int width = narrowest_name;
    for (std::size_t index = 0; index < shown; ++index)
        width = std::clamp(display_width(printable(contested[index].service.name)), width, widest_name);
    return width;
}

std::string row_of(const Strategies& strategies, const Contested& contested, int name_width) {
    std::string row = fmt::format("  {:>5}  {}  {:>11}", contested.service.lcn,
                                  pad_right(printable(contested.service.name), name_width),
                                  to_string(contested.service.stream));
    for (std::size_t index = 0; index < strategy_count; ++index)
        row += fmt::format("  {:>{}}", contested.is_placed_by[index] ? "●" : "–",
                           strategies.list[index].name.size());
    return row + "\n";
}

std::string contested_text(const Strategies& strategies) {
    const std::size_t number = strategies.contested.size();
    if (number == 0)
        return "  Placed by some of them only: none\n";
    const std::size_t shown = std::min(number, services_shown);
    const int name_width = name_width_of(strategies.contested, shown);
    const std::size_t kept = index_of_kept(strategies.list);
    const auto missed = std::count_if(strategies.contested.begin(), strategies.contested.end(),
                                      [kept](const Contested& one) { return !one.is_placed_by[kept]; });
    std::string text =
        fmt::format("  Placed by some of them only: {} {}, {} of them left out by {}{}\n", number,
                    number == 1 ? "service" : "services", missed == 0 ? "none" : fmt::format("{}", missed),
                    strategies.list[kept].name, shown < number ? fmt::format("; the first {}:", shown) : ":");
    text += fmt::format("  {:>5}  {}  {:>11}", "LCN", pad_right("Service", name_width), "Stream");
    for (const Strategy& strategy : strategies.list)
        text += "  " + strategy.name;
    text += "\n";
    for (std::size_t index = 0; index < shown; ++index)
        text += row_of(strategies, strategies.contested[index], name_width);
    return text;
}

} // namespace

std::string strategies_text(const Strategies& strategies) {
    return "Strategies, each alone on the head-end, without clones\n" + table_of(strategies) + "\n" +
           contested_text(strategies);
}

} // namespace zarven::tool
