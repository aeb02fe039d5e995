// Every answer says what it was found by, because the engine may place less where there is more room.

#include "report/sizing_text.h"

#include <algorithm>
#include <utility>

#include <fmt/format.h>

#include "base/counted.h"
#include "report/service_list.h"
#include "report/summary_text.h"
#include "report/table.h"

namespace zarven::tool {

namespace {

std::string more_modules(std::size_t number) {
    return counted(number, "more module");
}

std::string describe_kind(const Module& kind) {
    return fmt::format("{}, outputs {} kbit/s, {}, transcoders SD {} HD {}", counted(kind.inputs, "input"),
                       kind.outputs.empty() ? "none" : fmt::format("{}", fmt::join(kind.outputs, " + ")),
                       counted(kind.pids_max, "PID"), kind.sd_transcoders, kind.hd_transcoders);
}

/// What there is to place at all.
std::string everything(const Addition& addition) {
    return addition.impossible.empty() ? "everything" : "everything that can be placed";
}

/// What is wanted and what there is.
std::string figures_of(const Shortage& shortage) {
    const BoundKind& kind = kind_of(shortage.which);
    return fmt::format("{} {} where there are {}", shortage.limit.wanted,
                       shortage.limit.wanted == 1 ? kind.one : kind.several, shortage.limit.capacity);
}

/// Why more modules do not help.
std::string answer(const std::vector<Shortage>& shortages, const std::string& everything) {
    std::vector<std::string> figures;
    for (const Shortage& shortage : shortages)
        figures.push_back(figures_of(shortage));
    return fmt::format("No number of these modules is enough: to place {} takes {}; these modules add none.",
                       everything, fmt::join(figures, ", and "));
}

std::string answer(const Addition& addition, std::size_t most) {
    if (addition.number == std::size_t{0})
        return fmt::format("None is needed: the engine places {}.", everything(addition));
    if (addition.number)
        return fmt::format("{}: the engine then places {}.", more_modules(*addition.number),
                           everything(addition));
    if (!addition.shortages.empty())
        return answer(addition.shortages, everything(addition));
    if (addition.attempts.empty())
        return fmt::format("Up to {} are too few: no arrangement could then place {}; nothing was tried.",
                           more_modules(most), everything(addition));
    return fmt::format("No number of further modules up to {} is enough.", most);
}

/// Where the search began, and why there.
std::string beginning(const Addition& addition) {
    if (addition.at_least == 0 || addition.attempts.empty())
        return "";
    if (addition.at_least == 1)
        return "Without one no arrangement could; from there on each number was tried.";
    return fmt::format("With fewer than {} no arrangement could; from there on each number was tried.",
                       addition.at_least);
}

Column figure_column(const char* heading, int least) {
    Column column;
    column.heading = heading;
    column.align = Align::right;
    column.least = least;
    return column;
}

bool is_same_outcome(const Attempt& one, const Attempt& other) {
    return one.placed == other.placed && one.left_out == other.left_out && one.broken == other.broken;
}

/// One line for a row of numbers with the same outcome.
std::string attempts_text(const std::vector<Attempt>& attempts, const TextStyle& style) {
    std::vector<Column> columns = {figure_column("more", 10), figure_column("placed", 8),
                                   figure_column("left out", 8)};
    const bool any_broken = std::any_of(attempts.begin(), attempts.end(),
                                        [](const Attempt& attempt) { return attempt.broken != 0; });
    if (any_broken)
        columns.push_back(figure_column("broken", 6));
    std::vector<Row> rows;
    for (std::size_t first = 0; first < attempts.size();) {
        const Attempt& attempt = attempts[first];
        std::size_t next = first + 1;
        while (next < attempts.size() && is_same_outcome(attempts[next], attempt))
            ++next;
        const std::size_t last = attempts[next - 1].number;
        rows.push_back(
            {last == attempt.number ? fmt::format("{}", last) : fmt::format("{} to {}", attempt.number, last),
             std::to_string(attempt.placed), std::to_string(attempt.left_out)});
        if (any_broken)
            rows.back().emplace_back(std::to_string(attempt.broken));
        first = next;
    }
    return table_text(std::move(columns), rows, body_indent, style);
}

std::string addition_text(const Addition& addition, std::size_t most, const TextStyle& style) {
    std::string text = paragraph_text(fmt::format("Further modules ({})", describe_kind(addition.kind)), 0,
                                      Paint::bold, style) +
                       paragraph_text(answer(addition, most), body_indent, Paint::none, style);
    if (!beginning(addition).empty())
        text += paragraph_text(beginning(addition), body_indent, Paint::none, style);
    return addition.attempts.empty() ? text : text + "\n" + attempts_text(addition.attempts, style);
}

const char* name_of(LimitKind kind) {
    switch (kind) {
    case LimitKind::pids:
        return "PID budget";
    case LimitKind::bitrate:
        return "bitrate of output";
    case LimitKind::inputs:
        return "number of inputs";
    case LimitKind::sd_transcoders:
        return "SD transcoders";
    case LimitKind::hd_transcoders:
        return "HD transcoders";
    case LimitKind::one_more_output:
        break;
    }
    return "one more output";
}

std::string change_of(const Raise& raise) {
    if (raise.kind == LimitKind::one_more_output)
        return fmt::format("one more output of {} kbit/s", raise.to);
    const std::string name = name_of(raise.kind);
    return fmt::format("{} from {} to {}",
                       raise.output == 0 ? name : fmt::format("{} {}", name, raise.output), raise.from,
                       raise.to);
}

std::string table_of_raises(const Sizing& sizing, const TextStyle& style) {
    Column change;
    // The value stands at the end; what does not fit goes beneath this column.
    change.narrowest = 40;
    Column mac;
    mac.dispensable = 1;
    Column setting;
    // For copying: in one piece as long as the terminal has room for it.
    setting.wrapped_at = 1000;
    std::vector<Row> rows;
    for (const Raise& raise : sizing.raises)
        rows.push_back(
            {fmt::format("{} more", raise.placed - sizing.now.placed),
             change_of(raise) + (raise.broken == 0 ? "" : fmt::format("; {} broken", raise.broken)),
             shown(module_name(raise.mac, raise.label), style), fmt::format("--set '{}'", raise.setting)});
    return table_text({figure_column("", 9), change, mac, setting}, rows, body_indent, style);
}

std::string raises_text(const Sizing& sizing, const TextStyle& style) {
    if (sizing.now.placed >= sizing.now.loaded)
        return "";
    const std::string text = "\n" + paragraph_text("One limit of one module raised, with no further module",
                                                   0, Paint::bold, style);
    if (sizing.raises.empty())
        return text +
               paragraph_text("None that alone lets the engine place more.", body_indent, Paint::none, style);
    return text + table_of_raises(sizing, style) +
           paragraph_text("Each value was run, and so was one less, which places fewer.", body_indent,
                          Paint::none, style);
}

std::string remaining_text(const Addition& addition, const TextStyle& style) {
    if (addition.remaining.empty())
        return "";
    return "\n" +
           (addition.shortages.empty()
                ? services_list("Left out by the best of these", addition.remaining, style)
                : services_with_reasons("Left out by the head-end as it is", addition.remaining, style));
}

} // namespace

std::string sizing_text(const Sizing& sizing, const TextStyle& style) {
    const std::string sentence =
        services_in_figures(sizing.now) + broken_in_figures(broken_among(sizing.findings));
    std::string text = title_text(sizing.name, style) +
                       broken_text(sizing.findings, style, " in the head-end as it is") +
                       paragraph_text(sentence, 0, Paint::none, style) + "\n" +
                       addition_text(sizing.addition, sizing.most, style);
    text += remaining_text(sizing.addition, style);
    if (!sizing.addition.impossible.empty())
        text +=
            "\n" + services_with_reasons("Placed by no number of modules", sizing.addition.impossible, style);
    text += raises_text(sizing, style);
    return text + closing_notes_text(sizing.findings, style, " on the head-end as it is");
}

std::string runs_in_figures(std::size_t done, std::size_t planned) {
    return fmt::format("{} of {} runs", done, planned);
}

} // namespace zarven::tool
