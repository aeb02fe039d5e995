#include "placement/service_key.h"

#include <charconv>
#include <iterator>
#include <set>
#include <string_view>

#include <fmt/format.h>

#include "base/failure.h"

namespace zarven::tool {

namespace {

/// Takes a number of 16 bits off the beginning of the text.
bool take_number(std::string_view& text, std::uint16_t& number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc())
        return false;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return true;
}

bool take(std::string_view& text, char expected) {
    if (text.empty() || text.front() != expected)
        return false;
    text.remove_prefix(1);
    return true;
}

bool take_key(std::string_view& text, ServiceKey& key) {
    if (!take_number(text, key.lcn))
        return false;
    if (!take(text, '@'))
        return true;
    Stream stream;
    if (!take_number(text, stream.onid) || !take(text, '/') || !take_number(text, stream.tsid))
        return false;
    key.stream = stream;
    return true;
}

bool matches(const tRec_Servicio& service, const ServiceKey& key) {
    return service.LCN == key.lcn &&
           (!key.stream || (service.ONID == key.stream->onid && service.TSID == key.stream->tsid));
}

/// The LCNs just below and just above one that nobody has.
std::string nearest_lcns(const std::set<std::uint16_t>& lcns, std::uint16_t lcn) {
    const auto above = lcns.upper_bound(lcn);
    if (lcns.empty())
        return "the head-end has no services";
    if (above == lcns.begin())
        return fmt::format("the nearest is {}", *above);
    const std::uint16_t below = *std::prev(above);
    return above == lcns.end() ? fmt::format("the nearest is {}", below)
                               : fmt::format("the nearest are {} and {}", below, *above);
}

[[noreturn]] void complain(const ServiceKey& key, const tRecalculo& engine, const std::string& file) {
    std::set<std::uint16_t> lcns;
    std::vector<std::string> streams;
    for (const auto& service : engine.listaServicios) {
        lcns.insert(service->LCN);
        if (service->LCN == key.lcn)
            streams.push_back(to_string({service->ONID, service->TSID}));
    }
    const std::string asked = fmt::format("{}: --service {}: ", file, key.text);
    if (streams.empty())
        throw Failure(
            fmt::format("{}no service has the LCN {}; {}", asked, key.lcn, nearest_lcns(lcns, key.lcn)));
    throw Failure(fmt::format("{}no service of stream {} has the LCN {}; it is in stream {}", asked,
                              to_string(*key.stream), key.lcn, fmt::join(streams, ", ")));
}

} // namespace

ServiceKey parse_service_key(const std::string& text) {
    ServiceKey key;
    key.text = text;
    std::string_view rest = text;
    if (!take_key(rest, key) || !rest.empty())
        throw Failure(fmt::format("--service {}: found \"{}\", expected an LCN, or LCN@ONID/TSID, as in "
                                  "25@1/1007; each number at most 65535",
                                  text, text));
    return key;
}

std::vector<std::shared_ptr<tRec_Servicio>> services_with(const ServiceKey& key, const EngineRun& run,
                                                          const std::string& file) {
    std::vector<std::shared_ptr<tRec_Servicio>> found;
    for (const auto& service : run.engine.listaServicios) {
        if (!matches(*service, key))
            continue;
        found.push_back(service);
        for (const auto& clone : run.clones)
            if (clone->LCN == service->LCN && clone->ONID == service->ONID && clone->TSID == service->TSID)
                found.push_back(clone);
    }
    if (found.empty())
        complain(key, run.engine, file);
    return found;
}

} // namespace zarven::tool
