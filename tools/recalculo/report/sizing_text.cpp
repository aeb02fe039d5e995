// Every answer says what it was found by, because the engine may place less where there is more room.

#include "report/sizing_text.h"

#include <algorithm>
#include <utility>

#include <fmt/format.h>

#include "base/counted.h"
#include "report/raise_text.h"
#include "report/service_list.h"
#include "report/summary_text.h"
#include "report/table.h"

namespace zarven::tool {

namespace {

std::string more_modules(std::size_t number) {
    return counted(number, "more module");
}

/// What there is to place at all.
std::string everything(const Addition& addition) {
    const std::string wanted = addition.musts == 0
                                   ? "everything"
                                   : fmt::format("{} marked as must", counted(addition.musts, "service"));
    if (addition.impossible.empty())
        return wanted;
    return addition.musts == 0 ? "everything that can be placed"
                               : fmt::format("all but {} of the {}", addition.impossible.size(), wanted);
}

/// What is wanted and what there is.
std::string figures_of(const Shortage& shortage) {
    const BoundKind& kind = kind_of(shortage.which);
    return fmt::format("{} {} where there are {}", shortage.limit.wanted,
                       shortage.limit.wanted == 1 ? kind.one : kind.several, shortage.limit.capacity);
}

/// What the answer asks for, where that is not everything.
std::string asking(const Attempt& attempt) {
    return attempt.withheld == 0 ? ""
                                 : fmt::format(", with {} withheld", counted(attempt.withheld, "service"));
}

/// Why more modules do not help.
std::string answer(const std::vector<Shortage>& shortages, const std::string& everything) {
    std::vector<std::string> figures;
    for (const Shortage& shortage : shortages)
        figures.push_back(figures_of(shortage));
    return fmt::format("No number of these modules is enough: to place {} takes {}; these modules add none.",
                       everything, fmt::join(figures, ", and "));
}

std::string answer(const Sizing& sizing) {
    const Addition& addition = sizing.addition;
    if (addition.number == std::size_t{0})
        return fmt::format("None is needed: the engine places {}{}.", everything(addition),
                           asking(addition.attempts.back()));
    if (addition.number)
        return fmt::format("{}: the engine then places {}{}.", more_modules(*addition.number),
                           everything(addition), asking(addition.attempts.back()));
    if (!addition.shortages.empty())
        return answer(addition.shortages, everything(addition));
    if (addition.at_least > sizing.most)
        return fmt::format(
            "Up to {} are too few: with fewer than {} no arrangement could place {}; nothing was "
            "tried.",
            more_modules(sizing.most), addition.at_least, everything(addition));
    if (sizing.is_partial)
        return fmt::format(
            "None of the numbers tried before the interruption is enough; with fewer than {} no "
            "arrangement could place {}.",
            addition.at_least, everything(addition));
    return fmt::format("No number of further modules up to {} {}.", sizing.most,
                       sizing.are_chosen ? "was found to be enough" : "is enough");
}

/// What the numbers were tried with. A search proves nothing.
std::string searching(const Sizing& sizing) {
    const Addition& addition = sizing.addition;
    const bool is_as_it_was = addition.number == std::size_t{0} && !addition.one_more;
    if (!sizing.are_chosen || addition.attempts.empty() || is_as_it_was)
        return "";
    return fmt::format("What to ask for was searched for with each number, in {} states{}.", sizing_states,
                       addition.musts == 0     ? "; what is withheld is missing, too"
                       : addition.number == 0U ? ""
                                               : "; a longer search may do with fewer modules");
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
    return one.placed == other.placed && one.left_out == other.left_out && one.missing == other.missing &&
           one.broken == other.broken && one.withheld == other.withheld && one.is_stopped == other.is_stopped;
}

bool any_broken(const std::vector<Attempt>& attempts) {
    return std::any_of(attempts.begin(), attempts.end(),
                       [](const Attempt& attempt) { return attempt.broken != 0; });
}

/// What a reader of the table would ask.
std::string about_broken(const Addition& addition) {
    return any_broken(addition.attempts) ? "A run that breaks a limit is no answer." : "";
}

std::string about_stopped(const Addition& addition) {
    std::vector<std::size_t> numbers;
    for (const Attempt& attempt : addition.attempts)
        if (attempt.is_stopped)
            numbers.push_back(attempt.number);
    return numbers.empty() ? ""
                           : fmt::format("With {} the engine was stopped, because it did not end within its "
                                         "limits; that is no answer.",
                                         fmt::join(numbers, ", "));
}

/// The numbers with which the engine places less than with one module fewer.
std::string drops(const Addition& addition) {
    std::vector<Attempt> runs = addition.attempts;
    if (addition.one_more)
        runs.push_back(*addition.one_more);
    std::vector<std::size_t> numbers;
    for (std::size_t at = 1; at < runs.size(); ++at)
        if (runs[at].placed < runs[at - 1].placed && !runs[at].is_stopped)
            numbers.push_back(runs[at].number);
    return numbers.empty()
               ? ""
               : fmt::format("With {} it places less than with one fewer.", fmt::join(numbers, ", "));
}

/// One line for a row of numbers with the same outcome.
std::string attempts_text(const Addition& addition, const TextStyle& style) {
    std::vector<Attempt> attempts = addition.attempts;
    if (addition.one_more)
        attempts.push_back(*addition.one_more);
    std::vector<Column> columns = {figure_column("more", 10), figure_column("placed", 8),
                                   figure_column("left out", 8)};
    if (addition.musts != 0)
        columns.push_back(figure_column("musts", 8));
    const bool tells_withheld = std::any_of(attempts.begin(), attempts.end(),
                                            [](const Attempt& attempt) { return attempt.withheld != 0; });
    if (tells_withheld)
        columns.push_back(figure_column("withheld", 8));
    const bool tells_broken = any_broken(attempts);
    if (tells_broken)
        columns.push_back(figure_column("broken", 6));
    std::vector<Row> rows;
    for (std::size_t first = 0; first < attempts.size();) {
        const Attempt& attempt = attempts[first];
        std::size_t next = first + 1;
        while (next < attempts.size() && is_same_outcome(attempts[next], attempt))
            ++next;
        const std::size_t last = attempts[next - 1].number;
        const auto figure = [&attempt](std::size_t number) {
            return attempt.is_stopped ? std::string("-") : std::to_string(number);
        };
        rows.push_back(
            {last == attempt.number ? fmt::format("{}", last) : fmt::format("{} to {}", attempt.number, last),
             figure(attempt.placed), figure(attempt.left_out)});
        if (addition.musts != 0)
            rows.back().emplace_back(figure(addition.musts - addition.impossible.size() - attempt.missing));
        if (tells_withheld)
            rows.back().emplace_back(figure(attempt.withheld));
        if (tells_broken)
            rows.back().emplace_back(figure(attempt.broken));
        first = next;
    }
    return table_text(std::move(columns), rows, body_indent, style);
}

std::string addition_text(const Sizing& sizing, const TextStyle& style) {
    const Addition& addition = sizing.addition;
    std::string text = paragraph_text(fmt::format("Further modules ({})", describe_kind(addition.kind)), 0,
                                      Paint::bold, style);
    for (const std::string& sentence : {answer(sizing), beginning(addition), searching(sizing),
                                        about_broken(addition), about_stopped(addition), drops(addition)})
        if (!sentence.empty())
            text += paragraph_text(sentence, body_indent, Paint::none, style);
    return addition.attempts.empty() ? text : text + "\n" + attempts_text(addition, style);
}

std::string mix_answer(const Mix& mix, const Sizing& sizing) {
    if (!mix.outcome)
        return sizing.is_partial ? "None of the mixes tried before the interruption is enough."
               : mix.at_least    ? fmt::format("No mix of up to {} {} enough.", more_modules(sizing.most),
                                            sizing.are_chosen ? "was found to be" : "is")
                                 : fmt::format("No mix of up to {} could be enough; nothing was tried.",
                                               more_modules(sizing.most));
    std::vector<std::string> parts;
    for (std::size_t kind = 0; kind < mix.kinds.size(); ++kind)
        if (const std::size_t number = mix.kinds[kind].number.value_or(0); number != 0)
            parts.push_back(fmt::format("{} of kind {}", number, kind + 1));
    if (parts.empty())
        return fmt::format("None is needed{}.", asking(*mix.outcome));
    return fmt::format("{}: {}, for {} in all; the engine then places all that is wanted{}.",
                       parts.size() == 1 ? "The cheapest found is of one kind alone"
                                         : "The cheapest mix found",
                       fmt::join(parts, " and "), mix.price, asking(*mix.outcome));
}

/// The kinds are told apart by their place on the command line.
std::string mix_text(const Sizing& sizing, const TextStyle& style) {
    if (!sizing.mix)
        return "";
    const Mix& mix = *sizing.mix;
    std::string text =
        "\n" + paragraph_text(fmt::format("A mix of {} kinds", mix.kinds.size()), 0, Paint::bold, style);
    for (std::size_t kind = 0; kind < mix.kinds.size(); ++kind)
        text += paragraph_text(fmt::format("Kind {}, {} each: {}", kind + 1, mix.kinds[kind].module.price,
                                           describe_kind(mix.kinds[kind].module)),
                               body_indent, Paint::none, style);
    text += paragraph_text(mix_answer(mix, sizing), body_indent, Paint::none, style);
    if (mix.at_least)
        text += paragraph_text(
            fmt::format("{} was tried by its price, {} in all, with the kinds in this order.",
                        *mix.at_least == 0
                            ? "Each"
                            : fmt::format("For less than {} no mix could; from there on each", *mix.at_least),
                        mix.tried),
            body_indent, Paint::none, style);
    return text;
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
        rows.push_back({fmt::format("{} more", raise.placed - sizing.now.placed), change_of(raise),
                        shown(module_name(raise.mac, raise.label), style),
                        fmt::format("--set '{}'", raise.setting)});
    return table_text({figure_column("", 9), change, mac, setting}, rows, body_indent, style);
}

std::string raises_text(const Sizing& sizing, const TextStyle& style) {
    if (sizing.now.placed >= sizing.now.loaded)
        return "";
    const std::string text = "\n" + paragraph_text("One limit of one module raised, with no further module",
                                                   0, Paint::bold, style);
    if (sizing.raises.empty())
        return text +
               paragraph_text("None of those tried lets the engine place more without breaking a limit.",
                              body_indent, Paint::none, style);
    return text + table_of_raises(sizing, style) +
           paragraph_text("Each value was run, and so was one less than is enough, which places fewer or "
                          "breaks a limit.",
                          body_indent, Paint::none, style);
}

/// With `"ask": false` for these the engine places what the answer says.
std::string withheld_text(const char* title, const std::vector<ServiceResult>& withheld,
                          const TextStyle& style) {
    return withheld.empty() ? "" : "\n" + services_list(title, withheld, style);
}

std::string remaining_text(const Addition& addition, const TextStyle& style) {
    if (addition.remaining.empty())
        return "";
    return "\n" +
           (!addition.attempts.empty()
                ? services_list("Left out by the best of these", addition.remaining, style)
                : services_with_reasons("Left out by the head-end as it is", addition.remaining, style));
}

} // namespace

std::string describe_kind(const Module& kind) {
    return fmt::format("{}, outputs {} kbit/s, {}, transcoders SD {} HD {}", counted(kind.inputs, "input"),
                       kind.outputs.empty() ? "none" : fmt::format("{}", fmt::join(kind.outputs, " + ")),
                       counted(kind.pids_max, "PID"), kind.sd_transcoders, kind.hd_transcoders);
}

std::string sizing_text(const Sizing& sizing, const TextStyle& style) {
    const std::string sentence =
        services_in_figures(sizing.now) + broken_in_figures(broken_among(sizing.findings));
    std::string text = title_text(sizing.name, style) +
                       broken_text(sizing.findings, style, " in the head-end as it is") +
                       paragraph_text(sentence, 0, Paint::none, style) + "\n";
    if (sizing.is_partial)
        text += interrupted_text(style) + "\n";
    text += addition_text(sizing, style);
    text += withheld_text("Withheld", sizing.addition.withheld, style);
    text += remaining_text(sizing.addition, style);
    if (!sizing.addition.impossible.empty())
        text +=
            "\n" + services_with_reasons("Placed by no number of modules", sizing.addition.impossible, style);
    text += mix_text(sizing, style);
    if (sizing.mix)
        text += withheld_text("Withheld with the mix", sizing.mix->withheld, style);
    text += raises_text(sizing, style);
    return text + closing_notes_text(sizing.findings, style, " on the head-end as it is");
}

std::string runs_in_figures(std::size_t done, std::size_t planned) {
    return fmt::format("{} of {} runs", done, planned);
}

} // namespace zarven::tool
