// A table is made of its cells and measured when it is whole. Its figures are shown as "in use + needed of
// most", so that a planner can follow the test.

#include "report/explanation_text.h"

#include <algorithm>
#include <array>

#include <fmt/format.h>

#include "base/counted.h"
#include "base/utf8.h"

namespace zarven::tool {

namespace {

constexpr std::size_t columns = 7;
using Row = std::array<std::string, columns>;
/// Text leans to the left and figures to the right.
constexpr std::array<bool, columns> is_figure = {false, false, false, true, true, true, true};
constexpr const char* nothing = "–";

std::string heading(const Explanation& explanation) {
    const ServiceResult& service = explanation.service;
    std::vector<std::string> facts = {fmt::format("LCN {} \"{}\"", service.lcn, printable(service.name)),
                                      "stream " + to_string(service.stream)};
    if (service.is_clone)
        facts.push_back(fmt::format("clone of SID {}", service.parent_sid));
    else
        facts.push_back(fmt::format("{} kbit/s", service.bitrate));
    if (service.ca_pids != 0)
        facts.push_back(counted(service.ca_pids, "CA PID"));
    if (service.is_hd)
        facts.emplace_back("HD");
    if (explanation.transcoding == 1)
        facts.emplace_back("transcoded");
    else if (explanation.transcoding != 0)
        facts.push_back(fmt::format("transcoding {}", explanation.transcoding));
    return fmt::format("{}", fmt::join(facts, " · "));
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
    return fmt::format("{} of {} free", refusal.inputs_free.size(), refusal.inputs);
}

Row row_of(const ModuleAnswer& answer, const Explanation& explanation) {
    const ModuleRefusal& refusal = answer.refusal;
    const Room& room = refusal.room;
    Row row = {printable(refusal.mac), verdict(answer, explanation.service), inputs(refusal)};
    if (!refusal.carried_on.empty())
        return row;
    if (room.outputs_full < room.outputs) {
        row[3] = fmt::format("{}", room.output.number);
        row[4] = fmt::format("{} + {} of {}", room.output.bitrate, explanation.service.bitrate,
                             room.output.bitrate_max);
    } else {
        row[3] = row[4] = nothing;
    }
    row[5] = fmt::format("{} + {} of {}", room.pids_used, explanation.service.ca_pids, room.pids_max);
    if (explanation.transcoding == 1)
        row[6] = fmt::format("{} + 1 of {}", room.transcoders_used, room.transcoders_max);
    return row;
}

std::string cell(const std::string& text, int width, bool leans_right) {
    const std::string blanks = pad_right("", width - display_width(text));
    return leans_right ? blanks + text : text + blanks;
}

std::string table(const Explanation& explanation) {
    std::vector<Row> rows = {{"Module", "Answer", "Inputs", "Output", "kbit/s", "PIDs", "Transcoders"}};
    if (explanation.transcoding != 1)
        rows.front()[6].clear();
    for (const ModuleAnswer& answer : explanation.modules)
        rows.push_back(row_of(answer, explanation));
    std::array<int, columns> widths{};
    for (const Row& row : rows)
        for (std::size_t column = 0; column < columns; ++column)
            widths[column] = std::max(widths[column], display_width(row[column]));
    std::string text;
    for (const Row& row : rows) {
        std::string line;
        for (std::size_t column = 0; column < columns; ++column)
            line += "  " + cell(row[column], widths[column], is_figure[column]);
        line.erase(line.find_last_not_of(' ') + 1);
        text += "  " + line + "\n";
    }
    return text;
}

} // namespace

std::string explanation_text(const Explanation& explanation) {
    std::string text = fmt::format("{}\n  {}\n", heading(explanation), printable(explanation.sentence));
    if (!explanation.modules.empty())
        text += table(explanation);
    if (explanation.unlisted != 0)
        text += fmt::format(
            "    {} no input free\n",
            counted(explanation.unlisted, explanation.modules.empty() ? "module" : "other module") +
                (explanation.unlisted == 1 ? " has" : " have"));
    return text;
}

} // namespace zarven::tool
