#include "placement/service_query.h"

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

bool take_query(std::string_view& text, ServiceQuery& query) {
    if (!take_number(text, query.lcn))
        return false;
    if (!take(text, '@'))
        return true;
    Stream stream;
    if (!take_number(text, stream.onid) || !take(text, '/') || !take_number(text, stream.tsid))
        return false;
    query.stream = stream;
    return true;
}

bool matches(const tRec_Servicio& service, const ServiceQuery& query) {
    return service.LCN == query.lcn &&
           (!query.stream || (service.ONID == query.stream->onid && service.TSID == query.stream->tsid));
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

[[noreturn]] void complain(const ServiceQuery& query, const tRecalculo& engine, const std::string& file) {
    std::set<std::uint16_t> lcns;
    std::vector<std::string> streams;
    for (const auto& service : engine.listaServicios) {
        lcns.insert(service->LCN);
        if (service->LCN == query.lcn)
            streams.push_back(to_string({service->ONID, service->TSID}));
    }
    const std::string asked = fmt::format("{}: --service {}: ", file, query.text);
    if (streams.empty())
        throw Failure(
            fmt::format("{}no service has the LCN {}; {}", asked, query.lcn, nearest_lcns(lcns, query.lcn)));
    throw Failure(fmt::format("{}no service of stream {} has the LCN {}; it is in stream {}", asked,
                              to_string(*query.stream), query.lcn, fmt::join(streams, ", ")));
}

} // namespace

ServiceQuery parse_service_query(const std::string& text) {
    ServiceQuery query;
    query.text = text;
    std::string_view rest = text;
    if (!take_query(rest, query) || !rest.empty())
        throw Failure(fmt::format("--service {}: found \"{}\", expected an LCN, or LCN@ONID/TSID, as in "
                                  "25@1/1007; each number at most 65535",
                                  text, text));
    return query;
}

std::vector<std::shared_ptr<tRec_Servicio>> services_with(const ServiceQuery& query, const EngineRun& run,
                                                          const std::string& file) {
    std::vector<std::shared_ptr<tRec_Servicio>> found;
    for (const auto& service : run.engine.listaServicios) {
        if (!matches(*service, query))
            continue;
        found.push_back(service);
        for (const auto& clone : run.clones)
            if (clone->LCN == service->LCN && clone->ONID == service->ONID && clone->TSID == service->TSID)
                found.push_back(clone);
    }
    if (found.empty())
        complain(query, run.engine, file);
    return found;
}

} // namespace zarven::tool
