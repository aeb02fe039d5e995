#include "report/bound_text.h"

#include <utility>

#include <fmt/format.h>

#include "base/counted.h"
#include "report/service_list.h"
#include "report/summary_text.h"
#include "report/table.h"

namespace zarven::tool {

namespace {

std::string verdict(const Bound& bound, std::size_t placed) {
    if (placed > bound.most)
        return "its result breaks a limit";
    if (placed == bound.most)
        return "none can do better";
    return fmt::format("at most {} more", bound.most - placed);
}

Column figures(const std::string& heading, int least, int dispensable) {
    Column column;
    column.heading = heading;
    column.align = Align::right;
    column.least = least;
    column.dispensable = dispensable;
    return column;
}

std::string table_of_limits(const Bound& bound, const TextStyle& style) {
    Column name;
    name.heading = "Limit";
    name.least = 28;
    name.narrowest = 17;
    std::vector<Row> rows;
    for (const BoundKind& kind : bound_kinds) {
        const BoundLimit& limit = bound.*kind.member;
        rows.push_back({kind.heading, std::to_string(limit.capacity), std::to_string(limit.wanted),
                        std::to_string(limit.allows)});
    }
    rows.push_back({"All together", "", "", std::to_string(bound.most)});
    return table_text({name, figures("usable", 10, 2), figures("wanted", 10, 1), figures("allows", 8, 0)},
                      rows, 2, style);
}

} // namespace

std::string bound_text(const Bound& bound, const Result& result, const TextStyle& style) {
    const std::size_t placed = result.counts.placed;
    const std::string sentence =
        fmt::format("{}: no arrangement places more than {}, the engine placed {}: {}{}",
                    services_loaded(bound.loaded, result.counts.not_asked_for), bound.most, placed,
                    verdict(bound, placed), broken_in_figures(broken_in(result)));
    std::string text = title_text(result.name, style) + broken_text(result.findings, style) +
                       paragraph_text(sentence, 0, Paint::none, style) + "\n" + table_of_limits(bound, style);
    if (!bound.impossible.empty())
        text += "\n" + services_with_reasons("No module can take", bound.impossible, style);
    return text + closing_notes_text(result.findings, style);
}

} // namespace zarven::tool
