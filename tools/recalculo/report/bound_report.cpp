// Both forms walk the limits by one list, so that they tell the same in the same order.

#include "report/bound_report.h"

#include <iterator>
#include <utility>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "base/utf8.h"
#include "report/service_list.h"

namespace zarven::tool {

namespace {

using nlohmann::ordered_json;

struct NamedLimit {
    const char* key;
    const char* name;
    const BoundLimit& limit;
};

std::vector<NamedLimit> limits_of(const Bound& bound) {
    return {{"inputs", "Inputs", bound.inputs},
            {"bitrate", "Bitrate of outputs, kbit/s", bound.bitrate},
            {"pids", "PIDs", bound.pids},
            {"transcoders", "Transcoders", bound.transcoders},
            {"places", "Places on outputs", bound.places}};
}

std::string verdict(const Bound& bound, std::size_t placed) {
    if (placed > bound.most)
        return "its result breaks a limit";
    if (placed == bound.most)
        return "none can do better";
    return fmt::format("at most {} more", bound.most - placed);
}

} // namespace

std::string bound_text(const Bound& bound, const Result& result) {
    const std::size_t placed = result.counts.placed;
    std::string text = result.name.empty() ? "" : printable(result.name) + "\n\n";
    const auto out = std::back_inserter(text);
    fmt::format_to(out, "{} loaded: no arrangement places more than {}, the engine placed {}: {}\n\n",
                   services_counted(bound.loaded), bound.most, placed, verdict(bound, placed));
    fmt::format_to(out, "  {:<28}{:>12}{:>12}{:>10}\n", "Limit", "there is", "wanted", "allows");
    for (const NamedLimit& named : limits_of(bound))
        fmt::format_to(out, "  {:<28}{:>12}{:>12}{:>10}\n", named.name, named.limit.capacity,
                       named.limit.wanted, named.limit.allows);
    fmt::format_to(out, "  {:<52}{:>10}\n", "All together", bound.most);
    if (!bound.impossible.empty())
        text += "\n" + services_with_reasons("No module can take", bound.impossible);
    return text;
}

std::string bound_json(const Bound& bound, const Result& result) {
    ordered_json json;
    if (!result.name.empty())
        json["name"] = result.name;
    json["loaded"] = bound.loaded;
    json["placed"] = result.counts.placed;
    json["bound"] = bound.most;
    for (const NamedLimit& named : limits_of(bound))
        json["limits"].push_back({{"limit", named.key},
                                  {"capacity", named.limit.capacity},
                                  {"wanted", named.limit.wanted},
                                  {"allows", named.limit.allows}});
    json["impossible"] = services_with_reasons_json(bound.impossible);
    return json.dump(2) + "\n";
}

} // namespace zarven::tool
