// Figures are shown as "in use + needed of most", so that a planner can follow the test. Where the terminal
// has no room for all of them, each answer tells its own.

#include "report/explanation_text.h"

#include <optional>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "Reglas.h"
#include "base/counted.h"
#include "report/remedy_text.h"
#include "report/service_marks.h"
#include "report/summary_text.h"
#include "report/table.h"

namespace zarven::tool {

namespace {

constexpr int table_indent = 4;

/// A transcoding that the engine does not count is no mark of the service, but to be seen.
std::vector<std::string> marks_with_transcoding(ServiceResult service, std::uint16_t transcoding) {
    service.is_transcoded = reglas::ocupaTranscoder(transcoding);
    std::vector<std::string> marks = marks_of(service);
    if (reglas::necesitaTranscoding(transcoding) && !service.is_transcoded)
        marks.push_back(fmt::format("transcoding {}", transcoding));
    return marks;
}

std::string heading(const Explanation& explanation, const TextStyle& style) {
    const ServiceResult& service = explanation.service;
    std::vector<std::string> facts = {fmt::format("LCN {} \"{}\"", service.lcn, shown(service.name, style)),
                                      "stream " + to_string(service.stream)};
    // A clone costs nothing.
    if (!service.is_clone)
        facts.push_back(fmt::format("{} kbit/s", service.bitrate));
    for (std::string& mark : marks_with_transcoding(service, explanation.transcoding))
        facts.push_back(std::move(mark));
    return joined(facts, style);
}

std::string verdict_of_limit(const ModuleRefusal& refusal, const ServiceResult& service) {
    const Room& room = refusal.room;
    const bool can_be_freed = room.can_be_freed(service.ca_pids);
    switch (refusal.limit) {
    case Limit::no_input:
        return refusal.inputs == 0 ? "has no input" : "no input free";
    case Limit::no_output:
        return "has no output";
    case Limit::service_count:
        return "full by number of services";
    case Limit::bitrate:
        return can_be_freed ? fmt::format("{} kbit/s short", room.short_by()) : "outputs too small";
    case Limit::pids:
        return can_be_freed ? counted(room.pids_short_by, "PID") + " short" : "PID budget too small";
    case Limit::transcoders:
        return can_be_freed ? "no transcoder left" : "has no transcoder";
    case Limit::stream_not_chosen:
        return "stream not chosen";
    case Limit::none:
        break;
    }
    return "has room";
}

/// Freeing something would help in such a case, if the module is large enough.
bool is_about_room(Limit limit) {
    return limit == Limit::service_count || limit == Limit::bitrate || limit == Limit::pids ||
           limit == Limit::transcoders;
}

/// `figures` stand behind the words.
std::string answer_text(const ModuleRefusal& refusal, const ServiceResult& service,
                        const std::string& figures) {
    std::string words = verdict_of_limit(refusal, service);
    if (!refusal.carried_on.empty())
        words = fmt::format("carries it on output {}", fmt::join(refusal.carried_on, ", "));
    else if (!figures.empty())
        words += fmt::format(" ({})", figures);
    if (refusal.carried_on.empty() && !refusal.could_ever && is_about_room(refusal.limit) &&
        refusal.room.can_be_freed(service.ca_pids))
        words += "; too small even when empty";
    return words;
}

std::string inputs(const ModuleRefusal& refusal) {
    if (!refusal.inputs_receiving.empty())
        return fmt::format("{} receive{} it", fmt::join(refusal.inputs_receiving, ", "),
                           refusal.inputs_receiving.size() == 1 ? "s" : "");
    if (refusal.inputs_free.empty())
        return fmt::format("0 of {} free", refusal.inputs);
    return fmt::format("{} free", fmt::join(refusal.inputs_free, ", "));
}

std::string bitrates(const Room& room, const ServiceResult& service) {
    return fmt::format("{} + {} of {}", room.output.bitrate, service.bitrate, room.output.bitrate_max);
}

std::string pids_of_room(const Room& room, const ServiceResult& service) {
    return fmt::format("{} + {} of {}", room.pids_used, service.ca_pids, room.pids_max);
}

std::string transcoders_of_room(const Room& room) {
    return fmt::format("{} + 1 of {}", room.transcoders_used, room.transcoders_max);
}

Column headed(const char* heading, Align align = Align::left) {
    Column column;
    column.heading = heading;
    column.align = align;
    return column;
}

/// With a column for each kind of figure.
std::optional<std::string> wide_table(const Explanation& explanation, const TextStyle& style) {
    const bool is_transcoded = reglas::ocupaTranscoder(explanation.transcoding);
    std::vector<Column> columns = {headed("Module"),
                                   headed("Answer"),
                                   headed("Inputs"),
                                   headed("Output", Align::right),
                                   headed("kbit/s", Align::right),
                                   headed("PIDs", Align::right)};
    if (is_transcoded)
        columns.push_back(headed("Transcoders", Align::right));
    std::vector<Row> rows;
    for (const ModuleRefusal& refusal : explanation.modules) {
        const Room& room = refusal.room;
        rows.push_back(
            {shown(refusal.name(), style), answer_text(refusal, explanation.service, ""), inputs(refusal)});
        if (!refusal.carried_on.empty())
            continue;
        const std::string dash(symbols_of(style).dash);
        const bool has_output = room.outputs_full < room.outputs;
        rows.back().emplace_back(has_output ? std::to_string(room.output.number) : dash);
        rows.back().emplace_back(has_output ? bitrates(room, explanation.service) : dash);
        rows.back().emplace_back(pids_of_room(room, explanation.service));
        if (is_transcoded)
            rows.back().emplace_back(transcoders_of_room(room));
    }
    return table_as_it_is(std::move(columns), rows, table_indent, style);
}

/// The figures of the limit that refuses.
std::string refusal_figures(const ModuleRefusal& refusal, const ServiceResult& service) {
    const Room& room = refusal.room;
    switch (refusal.limit) {
    case Limit::no_input:
        return refusal.inputs == 0 ? "" : fmt::format("0 of {}", refusal.inputs);
    case Limit::service_count:
        return fmt::format("{} of {}", room.outputs_full, counted(room.outputs, "output"));
    case Limit::bitrate:
        return fmt::format("output {}, {}", room.output.number, bitrates(room, service));
    case Limit::pids:
        return pids_of_room(room, service);
    case Limit::transcoders:
        return transcoders_of_room(room);
    default:
        return "";
    }
}

/// Of those that `inputs` tells.
bool is_one_input(const ModuleRefusal& refusal) {
    return (refusal.inputs_receiving.empty() ? refusal.inputs_free : refusal.inputs_receiving).size() == 1;
}

/// With the figures in the answer.
std::string narrow_table(const Explanation& explanation, const TextStyle& style) {
    Column answer_column = headed("Answer");
    answer_column.wrapped_at = 20;
    std::vector<Row> rows;
    for (const ModuleRefusal& refusal : explanation.modules) {
        std::string text =
            answer_text(refusal, explanation.service, refusal_figures(refusal, explanation.service));
        if (refusal.has_input())
            text += (is_one_input(refusal) ? "; input " : "; inputs ") + inputs(refusal);
        rows.push_back({shown(refusal.name(), style), std::move(text)});
    }
    return table_text({headed("Module"), answer_column}, rows, table_indent, style);
}

std::string table(const Explanation& explanation, const TextStyle& style) {
    const std::optional<std::string> wide = wide_table(explanation, style);
    return wide ? *wide : narrow_table(explanation, style);
}

std::string unlisted_text(const Explanation& explanation, const TextStyle& style) {
    const std::string modules =
        counted(explanation.unlisted, explanation.modules.empty() ? "module" : "other module");
    return paragraph_text(
        fmt::format("{} {} no input free", modules, explanation.unlisted == 1 ? "has" : "have"), table_indent,
        Paint::none, style);
}

} // namespace

std::string explanation_text(const Explanation& explanation, const TextStyle& style) {
    std::string text = paragraph_text(heading(explanation, style), 0, Paint::bold, style) +
                       paragraph_text(shown(explanation.sentence, style), body_indent, Paint::none, style);
    if (!explanation.modules.empty())
        text += table(explanation, style);
    if (explanation.unlisted != 0)
        text += unlisted_text(explanation, style);
    for (const Finding& finding : explanation.findings)
        text += problem_text(finding, style);
    if (explanation.remedies)
        text += remedies_text(*explanation.remedies, style);
    return text;
}

std::string explanations_caveat_text(const TextStyle& style) {
    return "\n" +
           paragraph_text("These are the figures of the placement as it is. With a limit changed the engine "
                          "places all anew: try it with --set.",
                          0, Paint::none, style);
}

std::string broken_elsewhere_text(const Broken& broken, const TextStyle& style) {
    if (broken.all() == 0)
        return "";
    return "\n" + paragraph_text(to_string(broken) + " in the whole head-end; recalculo run lists them", 0,
                                 Paint::red, style);
}

} // namespace zarven::tool
