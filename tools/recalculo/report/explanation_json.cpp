#include "report/explanation_json.h"

#include <nlohmann/json.hpp>

#include "report/report_json.h"

namespace zarven::tool {

using nlohmann::ordered_json;

static const char* name_of(Limit limit) {
    switch (limit) {
    case Limit::no_input:
        return "no_input";
    case Limit::no_output:
        return "no_output";
    case Limit::service_count:
        return "service_count";
    case Limit::bitrate:
        return "bitrate";
    case Limit::pids:
        return "pids";
    case Limit::transcoders:
        return "transcoders";
    case Limit::stream_not_chosen:
        return "stream_not_chosen";
    case Limit::none:
        break;
    }
    return "none";
}

static const char* name_of(Standing standing) {
    switch (standing) {
    case Standing::placed:
        return "placed";
    case Standing::left_out:
        return "left_out";
    case Standing::placed_and_left_out:
        return "placed_and_left_out";
    case Standing::attached:
        return "attached";
    case Standing::waiting:
        return "waiting";
    case Standing::neither:
        break;
    }
    return "neither";
}

static void to_json(ordered_json& json, const OutputRoom& output) {
    json = {{"number", output.number},
            {"bitrate", output.bitrate},
            {"bitrate_max", output.bitrate_max},
            {"short_by", output.short_by},
            {"can_be_freed", output.can_be_freed}};
}

static void to_json(ordered_json& json, const ModuleAnswer& answer) {
    const ModuleRefusal& refusal = answer.refusal;
    const Room& room = refusal.room;
    json = {{"mac", refusal.mac},
            {"carried_on", refusal.carried_on},
            {"limit", name_of(refusal.limit)},
            {"inputs", refusal.inputs},
            {"inputs_receiving", refusal.inputs_receiving},
            {"inputs_free", refusal.inputs_free},
            {"outputs", room.outputs},
            {"outputs_full", room.outputs_full}};
    if (room.outputs_full < room.outputs)
        json["output"] = room.output;
    json["pids"] = {{"used", room.pids_used}, {"max", room.pids_max}, {"short_by", room.pids_short_by}};
    json["transcoders"] = {{"used", room.transcoders_used}, {"max", room.transcoders_max}};
    json["could_ever"] = refusal.could_ever;
    json["engine_has_room"] = answer.engine_has_room;
    json["engine_agrees"] = answer.engine_agrees();
}

static void to_json(ordered_json& json, const Explanation& explanation) {
    json = explanation.service;
    // They may be on several modules, each of which tells them.
    json.erase("outputs");
    json["transcoding"] = explanation.transcoding;
    json["standing"] = name_of(explanation.standing);
    json["sentence"] = explanation.sentence;
    json["warnings"] = explanation.warnings;
    json["modules"] = explanation.modules;
    json["modules_not_listed"] = explanation.unlisted;
}

std::string explanations_json_begin(const std::string& name) {
    const std::string member = name.empty() ? "" : "  \"name\": " + ordered_json(name).dump() + ",\n";
    return "{\n" + member + "  \"services\": [";
}

/// Set further in, but for its first line. Line ends within texts are escaped, so that each begins a line of
/// ours.
static std::string indented(const ordered_json& json, std::size_t columns) {
    std::string text;
    for (const char character : json.dump(2)) {
        text += character;
        if (character == '\n')
            text += std::string(columns, ' ');
    }
    return text;
}

std::string explanation_json(const Explanation& explanation) {
    return "\n    " + indented(explanation, 4);
}

std::string explanations_json_end(const std::vector<std::string>& warnings) {
    return "\n  ],\n  \"warnings\": " + indented(warnings, 2) + "\n}\n";
}

} // namespace zarven::tool
