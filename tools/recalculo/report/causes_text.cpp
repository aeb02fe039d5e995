#include "report/causes_text.h"

#include <fmt/format.h>

#include "base/counted.h"
#include "report/raise_text.h"
#include "report/summary_text.h"
#include "report/table.h"

namespace zarven::tool {

/// What is placed and left out at once is not kept out.
static std::string heading(const std::vector<CauseCount>& causes, const Counts& counts) {
    std::size_t kept_out = 0;
    std::size_t placed_too = 0;
    for (const CauseCount& cause : causes)
        (cause.cause == Cause::contradictory ? placed_too : kept_out) += cause.services;
    const auto are = [](std::size_t number) { return number == 1 ? "is" : "are"; };
    if (kept_out == 0)
        return fmt::format("Why {} of {} {} left out and placed", placed_too,
                           counted(counts.loaded, "service"), are(placed_too));
    return fmt::format(
        "Why {} of {} {} not placed{}", kept_out, counted(counts.loaded, "service"), are(kept_out),
        placed_too == 0 ? "" : fmt::format(", and {} {} left out and placed", placed_too, are(placed_too)));
}

static std::string tried(const Advice& advice) {
    return advice.limits_tried == advice.limits
               ? counted(advice.limits, "limit") + " tried"
               : fmt::format("{} of {} tried", advice.limits_tried, counted(advice.limits, "limit"));
}

std::string advice_sentence(const Result& result) {
    const Advice& advice = result.advice;
    if (advice.limits_tried == 0)
        return "";
    if (advice.raises.empty())
        return fmt::format(
            "No limit raised alone to what modules are sold with lets the engine place more ({}).",
            tried(advice));
    const Raise& best = advice.raises.front();
    return fmt::format("Of the limits, this one raised alone helps most: {} on module {}, {} more placed{}; "
                       "--set '{}' ({}).",
                       change_of(best), module_name(best.mac, best.label), best.placed - result.counts.placed,
                       best.broken == 0 ? "" : fmt::format("; {} broken", best.broken), best.setting,
                       tried(advice));
}

std::string causes_text(const Result& result, const TextStyle& style) {
    const std::vector<CauseCount> causes = causes_of(result);
    if (causes.empty())
        return "";
    Column number;
    number.align = Align::right;
    number.least = 4;
    Column sentence;
    sentence.wrapped_at = 30;
    std::vector<Row> rows;
    for (const CauseCount& cause : causes)
        rows.push_back({std::to_string(cause.services), shown(cause.sentence, style)});
    std::string text = paragraph_text(heading(causes, result.counts), 0, Paint::bold, style) +
                       table_text({number, sentence}, rows, body_indent, style);
    const std::string advice = advice_sentence(result);
    if (!advice.empty())
        text += paragraph_text(shown(advice, style), body_indent, Paint::none, style);
    return text + "\n";
}

} // namespace zarven::tool
