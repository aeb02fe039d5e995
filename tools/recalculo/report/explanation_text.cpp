// Its figures are shown as "in use + needed of most", so that a planner can follow the test. What the answer
// says anyway is left away first where there is no room for all.

#include "report/explanation_text.h"

#include <utility>
#include <vector>

#include <fmt/format.h>

#include "base/counted.h"
#include "report/service_marks.h"
#include "report/table.h"

namespace zarven::tool {

namespace {

constexpr int indent = 2;
constexpr int table_indent = 4;

/// A transcoding that the engine does not count is no mark of the service, but to be seen.
std::vector<std::string> marks_with_transcoding(ServiceResult service, std::uint16_t transcoding) {
    service.is_transcoded = transcoding == 1;
    std::vector<std::string> marks = marks_of(service);
    if (transcoding > 1)
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

std::string verdict(const ModuleAnswer& answer, const ServiceResult& service) {
    const ModuleRefusal& refusal = answer.refusal;
    std::string words = verdict_of_limit(refusal, service);
    if (!refusal.carried_on.empty())
        words = fmt::format("carries it on output {}", fmt::join(refusal.carried_on, ", "));
    if (!answer.engine_agrees())
        words += answer.engine_has_room ? "; but the engine finds room" : "; but the engine finds no room";
    return words;
}

std::string inputs(const ModuleRefusal& refusal) {
    if (!refusal.inputs_receiving.empty())
        return fmt::format("{} receives it", fmt::join(refusal.inputs_receiving, ", "));
    if (refusal.inputs_free.empty())
        return fmt::format("0 of {} free", refusal.inputs);
    return fmt::format("{} free", fmt::join(refusal.inputs_free, ", "));
}

std::vector<Column> columns() {
    Column mac;
    mac.heading = "Module";
    Column answer;
    answer.heading = "Answer";
    const auto further = [](const char* heading, int dispensable, Align align) {
        Column column;
        column.heading = heading;
        column.align = align;
        column.dispensable = dispensable;
        return column;
    };
    return {mac,
            answer,
            further("Inputs", 4, Align::left),
            further("Output", 5, Align::right),
            further("kbit/s", 1, Align::right),
            further("PIDs", 2, Align::right),
            further("Transcoders", 3, Align::right)};
}

Row row_of(const ModuleAnswer& answer, const Explanation& explanation, const TextStyle& style) {
    const ModuleRefusal& refusal = answer.refusal;
    const Room& room = refusal.room;
    Row row = {shown(refusal.mac, style), verdict(answer, explanation.service), inputs(refusal)};
    if (!refusal.carried_on.empty())
        return row;
    if (room.outputs_full < room.outputs) {
        row.emplace_back(std::to_string(room.output.number));
        row.emplace_back(fmt::format("{} + {} of {}", room.output.bitrate, explanation.service.bitrate,
                                     room.output.bitrate_max));
    } else {
        row.insert(row.end(), 2, Cell(std::string(symbols_of(style).dash)));
    }
    row.emplace_back(
        fmt::format("{} + {} of {}", room.pids_used, explanation.service.ca_pids, room.pids_max));
    if (explanation.transcoding == 1)
        row.emplace_back(fmt::format("{} + 1 of {}", room.transcoders_used, room.transcoders_max));
    return row;
}

std::string table(const Explanation& explanation, const TextStyle& style) {
    std::vector<Column> shown_columns = columns();
    if (explanation.transcoding != 1)
        shown_columns.pop_back();
    std::vector<Row> rows;
    for (const ModuleAnswer& answer : explanation.modules)
        rows.push_back(row_of(answer, explanation, style));
    return table_text(std::move(shown_columns), rows, table_indent, style);
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
                       paragraph_text(shown(explanation.sentence, style), indent, Paint::none, style);
    if (!explanation.modules.empty())
        text += table(explanation, style);
    if (explanation.unlisted != 0)
        text += unlisted_text(explanation, style);
    return text;
}

} // namespace zarven::tool
