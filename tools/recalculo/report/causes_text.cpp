#include "report/causes_text.h"

#include <numeric>

#include <fmt/format.h>

#include "base/counted.h"
#include "report/raise_text.h"
#include "report/summary_text.h"
#include "report/table.h"

namespace zarven::tool {

static std::string heading(const std::vector<CauseCount>& causes, const Counts& counts) {
    const std::size_t kept_out =
        std::accumulate(causes.begin(), causes.end(), std::size_t{0},
                        [](std::size_t sum, const CauseCount& cause) { return sum + cause.services; });
    return fmt::format("Why {} of {} {} not placed", kept_out, counted(counts.loaded, "service"),
                       kept_out == 1 ? "is" : "are");
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
        return fmt::format("No limit raised alone lets the engine place more ({}).", tried(advice));
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
