// The library turns our values into JSON by the functions called to_json, one for each kind of value.

#include "report/report_json.h"

#include <utility>

#include <nlohmann/json.hpp>

namespace zarven::tool {

using nlohmann::ordered_json;

void to_json(ordered_json& json, const ServiceResult& service) {
    json = {{"lcn", service.lcn},
            {"name", service.name},
            {"output_name", service.output_name},
            {"onid", service.stream.onid},
            {"tsid", service.stream.tsid},
            {"sid", service.sid},
            {"osid", service.osid},
            {"bitrate", service.bitrate},
            {"hd", service.is_hd},
            {"scrambled", service.is_scrambled},
            {"ca_pids", service.ca_pids},
            {"transcoded", service.is_transcoded},
            {"clone", service.is_clone}};
    if (service.is_radio)
        json["radio"] = true;
    if (service.is_clone)
        json["parent_sid"] = service.parent_sid;
    json["outputs"] = service.outputs;
    if (!service.reason.empty())
        json["reason"] = service.reason;
}

static void to_json(ordered_json& json, const InputResult& input) {
    json = {{"number", input.number}, {"tuned", input.is_tuned}};
    if (input.is_tuned) {
        json["onid"] = input.stream.onid;
        json["tsid"] = input.stream.tsid;
    }
    json["services"] = input.services;
}

static void to_json(ordered_json& json, const OutputResult& output) {
    json = {{"number", output.number},           {"bitrate", output.bitrate},
            {"bitrate_max", output.bitrate_max}, {"service_count", output.service_count},
            {"service_max", output.service_max}, {"services", output.services}};
}

static void to_json(ordered_json& json, const Usage& usage) {
    json = {{"used", usage.used}, {"max", usage.max}};
}

static void to_json(ordered_json& json, const ModuleResult& module) {
    json = {{"mac", module.mac},
            {"model", module.model},
            {"controller", module.is_controller},
            {"pids", module.pids},
            {"pids_max", module.pids_max},
            {"pids_counted", module.pids_counted},
            {"sd_transcoders", module.sd_transcoders},
            {"hd_transcoders", module.hd_transcoders},
            {"aux_transcoders", module.aux_transcoders},
            {"inputs", module.inputs},
            {"outputs", module.outputs},
            {"without_input", module.without_input}};
}

static void to_json(ordered_json& json, const StreamResult& stream) {
    json = {{"onid", stream.stream.onid}, {"tsid", stream.stream.tsid}, {"services", stream.services}};
}

static void to_json(ordered_json& json, const Counts& counts) {
    json = {{"loaded", counts.loaded},
            {"placed", counts.placed},
            {"left_out", counts.left_out},
            {"neither", counts.neither},
            {"clones_attached", counts.clones_attached},
            {"clones_waiting", counts.clones_waiting}};
}

static const char* name_of(Verdict verdict) {
    switch (verdict) {
    case Verdict::kept:
        return "kept";
    case Verdict::surpassed:
        return "surpassed";
    case Verdict::tie:
        return "tie";
    case Verdict::worse:
        return "worse";
    case Verdict::not_tried:
        break;
    }
    return "not tried";
}

static void add(ordered_json& json, const Strategies& strategies) {
    json["strategies"] = ordered_json::array();
    for (const Strategy& strategy : strategies.list) {
        ordered_json one = {{"name", strategy.name},
                            {"placed", strategy.placed},
                            {"left_out", strategy.left_out},
                            {"neither", strategy.neither},
                            {"left_out_counted", strategy.left_out_counted},
                            {"inputs_used", strategy.inputs_used},
                            {"inputs", strategy.inputs},
                            {"warnings", strategy.findings},
                            {"verdict", name_of(strategy.verdict)}};
        if (strategy.verdict != Verdict::kept)
            one["rival"] = strategies.list[strategy.rival].name;
        json["strategies"].push_back(std::move(one));
    }
    json["contested"] = ordered_json::array();
    for (const Contested& contested : strategies.contested) {
        ordered_json one = {{"lcn", contested.service.lcn},
                            {"name", contested.service.name},
                            {"onid", contested.service.stream.onid},
                            {"tsid", contested.service.stream.tsid},
                            {"placed_by", ordered_json::array()}};
        for (std::size_t index = 0; index < strategy_count; ++index)
            if (contested.is_placed_by[index])
                one["placed_by"].push_back(strategies.list[index].name);
        json["contested"].push_back(std::move(one));
    }
}

std::string json_report(const Result& result, const Strategies* strategies) {
    ordered_json json;
    if (!result.name.empty())
        json["name"] = result.name;
    if (strategies != nullptr)
        add(json, *strategies);
    json["modules"] = result.modules;
    json["left_out"] = result.left_out;
    json["clones_waiting"] = result.clones_waiting;
    json["neither"] = result.neither;
    json["warnings"] = result.warnings;
    json["summary"] = result.counts;
    return json.dump(2) + "\n";
}

} // namespace zarven::tool
