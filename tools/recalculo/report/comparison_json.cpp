// The library turns our values into JSON by the functions called to_json, one for each kind of value.

#include "report/comparison_json.h"

#include <nlohmann/json.hpp>

#include "report/service_list.h"

namespace zarven::tool {

using nlohmann::ordered_json;

static void to_json(ordered_json& json, const Place& place) {
    json = {{"mac", place.mac}, {"input", place.input}, {"outputs", place.outputs}};
}

/// Null for a side that does not have what is compared, or has it free.
static ordered_json or_null(bool is_there, ordered_json value) {
    return is_there ? std::move(value) : ordered_json();
}

static ordered_json places_json(const std::vector<Place>& places, Absence absence) {
    return or_null(!places.empty() || absence != Absence::not_there, places);
}

static void to_json(ordered_json& json, const ServiceChange& change) {
    json = identity_json(change.service);
    json["before"] = places_json(change.before, change.absence_before);
    json["after"] = places_json(change.after, change.absence_after);
}

static ordered_json stream_json(Stream stream) {
    return {{"onid", stream.onid}, {"tsid", stream.tsid}};
}

static void to_json(ordered_json& json, const InputChange& change) {
    json = {{"mac", change.mac},
            {"number", change.number},
            {"before", or_null(change.was_tuned, stream_json(change.before))},
            {"after", or_null(change.is_tuned, stream_json(change.after))}};
}

static const char* name_of(TightKind kind) {
    switch (kind) {
    case TightKind::inputs:
        return "inputs";
    case TightKind::pids:
        return "pids";
    case TightKind::bitrate:
        break;
    }
    return "bitrate";
}

static void to_json(ordered_json& json, const TightLimit& limit) {
    json = {{"limit", name_of(limit.kind)}, {"mac", limit.mac}};
    if (limit.kind == TightKind::bitrate)
        json["output"] = limit.output;
    json["used"] = limit.used;
    json["max"] = limit.max;
}

static void to_json(ordered_json& json, const Side& side) {
    json = {{"name", side.name},
            {"loaded", side.counts.loaded},
            {"placed", side.counts.placed},
            {"left_out", side.counts.left_out},
            {"neither", side.counts.neither},
            {"warnings", side.warnings}};
}

std::string comparison_json(const Comparison& comparison) {
    ordered_json json;
    json["summary"] = {{"gained", comparison.gained.size()},
                       {"lost", comparison.lost.size()},
                       {"moved", comparison.moved.size()},
                       {"unmoved", comparison.unmoved},
                       {"never_placed", comparison.never_placed}};
    json["before"] = comparison.before;
    json["after"] = comparison.after;
    json["gained"] = comparison.gained;
    json["lost"] = comparison.lost;
    json["moved"] = comparison.moved;
    json["modules_gone"] = comparison.modules_gone;
    json["modules_new"] = comparison.modules_new;
    json["inputs_freed"] = comparison.inputs_freed;
    json["inputs_taken"] = comparison.inputs_taken;
    json["inputs_retuned"] = comparison.inputs_retuned;
    json["became_tight"] = comparison.became_tight;
    json["relaxed"] = comparison.relaxed;
    return json.dump(2) + "\n";
}

} // namespace zarven::tool
