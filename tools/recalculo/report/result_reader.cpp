// One function `read` for each kind of value, as report_json.cpp has one to_json for each.

#include "report/result_reader.h"

#include <fmt/format.h>

#include "base/failure.h"
#include "base/json_cursor.h"
#include "base/json_text.h"

namespace zarven::tool {

namespace {

void read(const JsonCursor& place, std::string& text) {
    text = place.text();
}

void read(const JsonCursor& place, bool& truth) {
    truth = place.boolean();
}

void read(const JsonCursor& place, std::uint16_t& number) {
    number = place.whole<std::uint16_t>();
}

void read(const JsonCursor& place, std::uint32_t& number) {
    number = place.whole<std::uint32_t>();
}

/// Reads the members of one object; what a function below does not name stays unread.
class Members {
public:
    explicit Members(const JsonCursor& object) : object_(object) { object.check_object(); }

    template <class Value> void required(const char* key, Value& value) const;

    template <class Value> void optional(const char* key, Value& value) const {
        if (object_.member(key).present())
            required(key, value);
    }

    template <class Value> void list(const char* key, std::vector<Value>& values) const;

    /// What results lack that an earlier version has written.
    template <class Value> void optional_list(const char* key, std::vector<Value>& values) const {
        if (object_.member(key).present())
            list(key, values);
    }

    void optional_count(const char* key, std::size_t& number) const {
        if (object_.member(key).present())
            count(key, number);
    }

    /// A count, which has as many bits as memory allows.
    void count(const char* key, std::size_t& number) const {
        number = object_.member(key).whole<std::uint32_t>();
    }

private:
    const JsonCursor& object_;
};

void read(const JsonCursor& place, ServiceResult& service) {
    const Members members(place);
    members.required("lcn", service.lcn);
    members.required("name", service.name);
    members.required("output_name", service.output_name);
    members.required("onid", service.stream.onid);
    members.required("tsid", service.stream.tsid);
    members.required("sid", service.sid);
    members.required("osid", service.osid);
    members.required("bitrate", service.bitrate);
    members.required("hd", service.is_hd);
    members.required("scrambled", service.is_scrambled);
    members.required("ca_pids", service.ca_pids);
    members.required("transcoded", service.is_transcoded);
    members.required("clone", service.is_clone);
    members.optional("radio", service.is_radio);
    members.optional("parent_sid", service.parent_sid);
    members.list("outputs", service.outputs);
    members.optional("reason", service.reason);
}

void read(const JsonCursor& place, InputResult& input) {
    const Members members(place);
    members.required("number", input.number);
    members.required("tuned", input.is_tuned);
    if (input.is_tuned) {
        members.required("onid", input.stream.onid);
        members.required("tsid", input.stream.tsid);
    }
    members.list("services", input.services);
}

void read(const JsonCursor& place, OutputResult& output) {
    const Members members(place);
    members.required("number", output.number);
    members.required("bitrate", output.bitrate);
    members.required("bitrate_max", output.bitrate_max);
    members.required("service_count", output.service_count);
    members.required("service_max", output.service_max);
    members.list("services", output.services);
}

void read(const JsonCursor& place, Usage& usage) {
    const Members members(place);
    members.required("used", usage.used);
    members.required("max", usage.max);
}

void read(const JsonCursor& place, ModuleResult& module) {
    const Members members(place);
    members.required("mac", module.mac);
    members.required("model", module.model);
    members.required("controller", module.is_controller);
    members.required("pids", module.pids);
    members.required("pids_max", module.pids_max);
    members.required("pids_counted", module.pids_counted);
    members.required("sd_transcoders", module.sd_transcoders);
    members.required("hd_transcoders", module.hd_transcoders);
    members.required("aux_transcoders", module.aux_transcoders);
    members.list("inputs", module.inputs);
    members.list("outputs", module.outputs);
    members.list("without_input", module.without_input);
}

void read(const JsonCursor& place, StreamResult& stream) {
    const Members members(place);
    members.required("onid", stream.stream.onid);
    members.required("tsid", stream.stream.tsid);
    members.list("services", stream.services);
}

void read(const JsonCursor& place, Counts& counts) {
    const Members members(place);
    members.count("loaded", counts.loaded);
    members.count("placed", counts.placed);
    members.count("left_out", counts.left_out);
    members.optional_count("neither", counts.neither);
    members.count("clones_attached", counts.clones_attached);
    members.count("clones_waiting", counts.clones_waiting);
}

void read(const JsonCursor& place, Result& result) {
    const Members members(place);
    members.optional("name", result.name);
    members.list("modules", result.modules);
    members.list("left_out", result.left_out);
    members.list("clones_waiting", result.clones_waiting);
    members.optional_list("neither", result.neither);
    members.list("warnings", result.warnings);
    members.required("summary", result.counts);
}

template <class Value> void Members::required(const char* key, Value& value) const {
    read(object_.member(key), value);
}

template <class Value> void Members::list(const char* key, std::vector<Value>& values) const {
    for (const JsonCursor& element : object_.member(key).elements()) {
        values.emplace_back();
        read(element, values.back());
    }
}

} // namespace

Result read_result(const std::string& file, const std::string& text) {
    const nlohmann::json document = parse_json(file, text);
    // Both begin with a name and modules, so that the first thing missing would say little.
    if (document.is_object() && document.count("summary") == 0 && document.count("modules") != 0)
        throw Failure(fmt::format("{}: top level: found a head-end, expected a result, which "
                                  "`recalculo run HEADEND --json` writes",
                                  file));
    Result result;
    read(JsonCursor(file, document), result);
    return result;
}

} // namespace zarven::tool
