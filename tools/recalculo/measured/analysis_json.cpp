// What a stream has for services is what it carries without the tables and the stuffing, which the analysis
// counts as global.

#include "measured/analysis_json.h"

#include <algorithm>
#include <map>

#include <nlohmann/json.hpp>

#include "measured/picture_size.h"
#include "records/document.h"
#include "records/json_cursor.h"

namespace zarven::tool {

namespace {

/// More than any stream carries, in bit/s, and longer than any measurement, in seconds.
constexpr double highest_number = 1e12;

/// What is told of a service that was not looked at for long enough.
constexpr const char* unseen_name = "(unknown)";

std::optional<double> number_in(const JsonCursor& object, const char* key) {
    const JsonCursor place = object.member(key);
    if (!place.present())
        return std::nullopt;
    return place.number(0, highest_number);
}

std::optional<std::uint16_t> id_in(const JsonCursor& object, const char* key) {
    const JsonCursor place = object.member(key);
    if (!place.present())
        return std::nullopt;
    return place.whole<std::uint16_t>();
}

bool is_true(const JsonCursor& object, const char* key) {
    const JsonCursor place = object.member(key);
    return place.present() && place.boolean();
}

std::string text_in(const JsonCursor& object, const char* key) {
    const JsonCursor place = object.member(key);
    return place.present() ? place.text() : "";
}

/// The elements of a list that may be absent.
std::vector<JsonCursor> elements_in(const JsonCursor& object, const char* key) {
    const JsonCursor place = object.member(key);
    return place.present() ? place.elements() : std::vector<JsonCursor>();
}

/// What the PIDs of a service tell of it.
struct PidFacts {
    bool has_ecms = false;
    bool has_hevc = false;
    /// The greatest of its pictures.
    std::optional<ChannelKind> size;
};

void add_pid(const JsonCursor& pid, PidFacts& facts) {
    facts.has_ecms = facts.has_ecms || is_true(pid, "ecm");
    if (!is_true(pid, "video"))
        return;
    const std::string description = text_in(pid, "description");
    facts.has_hevc = facts.has_hevc || description.find("HEVC") != std::string::npos;
    const std::optional<ChannelKind> size = kind_by_size(description);
    if (size && (!facts.size || *size > *facts.size))
        facts.size = size;
}

/// By SID. A PID tells its services, and a service its PIDs; one of them will do.
std::map<std::uint16_t, PidFacts> facts_of_pids(const JsonCursor& analysis) {
    std::map<std::uint16_t, std::vector<std::uint16_t>> services_of;
    for (const JsonCursor& service : elements_in(analysis, "services"))
        for (const JsonCursor& pid : elements_in(service, "pids"))
            services_of[pid.whole<std::uint16_t>()].push_back(service.member("id").whole<std::uint16_t>());
    std::map<std::uint16_t, PidFacts> facts;
    for (const JsonCursor& pid : elements_in(analysis, "pids")) {
        for (const JsonCursor& sid : elements_in(pid, "services"))
            add_pid(pid, facts[sid.whole<std::uint16_t>()]);
        for (const std::uint16_t sid : services_of[pid.member("id").whole<std::uint16_t>()])
            add_pid(pid, facts[sid]);
    }
    return facts;
}

/// Many HD services have the type of SD ones, so that this type tells nothing.
std::optional<ChannelKind> kind_of(std::uint16_t type, const PidFacts& pids) {
    if (pids.size)
        return pids.size;
    if (type == 2 || type == 7 || type == 10)
        return ChannelKind::radio;
    if (type == 17 || (type >= 25 && type <= 32) || pids.has_hevc)
        return ChannelKind::hd;
    return std::nullopt;
}

MeasuredService read_service(const JsonCursor& object, const std::optional<std::uint16_t>& tsid,
                             const std::map<std::uint16_t, PidFacts>& pids) {
    MeasuredService service;
    service.onid = id_in(object, "original-network-id");
    service.tsid =
        tsid && !object.member("tsid").present() ? *tsid : object.member("tsid").whole<std::uint16_t>();
    service.sid = object.member("id").whole<std::uint16_t>();
    service.rate = number_in(object, "bitrate").value_or(0);
    service.name = text_in(object, "name");
    service.is_name_unseen = service.name == unseen_name;
    if (service.is_name_unseen)
        service.name.clear();
    service.is_scrambled = is_true(object, "is-scrambled");
    const JsonCursor components = object.member("components");
    service.tells_scrambling = components.present() || object.member("is-scrambled").present();
    if (components.present())
        service.scrambled_pids = id_in(components, "scrambled").value_or(0);
    const auto facts = pids.find(service.sid);
    const PidFacts told = facts == pids.end() ? PidFacts() : facts->second;
    service.has_ecms = told.has_ecms;
    service.kind = kind_of(id_in(object, "type").value_or(0), told);
    return service;
}

} // namespace

Measurement read_analysis(const std::string& place, const std::string& text) {
    const Document document(place, text);
    if (!document.has("ts") || !document.has("services"))
        document.complain("no \"ts\" and \"services\"", "the analysis of a stream");
    const JsonCursor analysis(document.file(), document.value());
    const JsonCursor stream = analysis.member("ts");
    stream.check_object();
    Measurement measurement;
    measurement.seconds = number_in(stream, "duration").value_or(0);
    const double rate = number_in(stream, "bitrate").value_or(0);
    double global = 0;
    if (const JsonCursor pids = stream.member("pids"); pids.present())
        if (const JsonCursor all = pids.member("global"); all.present())
            global = number_in(all, "bitrate").value_or(0);
    if (rate > global)
        measurement.room = rate - global;
    const std::map<std::uint16_t, PidFacts> pids = facts_of_pids(analysis);
    const std::optional<std::uint16_t> tsid = id_in(stream, "id");
    for (const JsonCursor& service : elements_in(analysis, "services"))
        measurement.services.push_back(read_service(service, tsid, pids));
    return measurement;
}

} // namespace zarven::tool
