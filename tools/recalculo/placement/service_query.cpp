#include "placement/service_query.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <set>
#include <string_view>
#include <vector>

#include <fmt/format.h>

#include "base/failure.h"
#include "base/utf8.h"
#include "base/words.h"
#include "placement/one_of.h"
#include "placement/running/engine_run.h"

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

bool take_stream(std::string_view& text, Stream& stream) {
    return take_number(text, stream.onid) && take(text, '/') && take_number(text, stream.tsid);
}

/// A stream behind the last @ of the text; takes it off, with the sign.
std::optional<Stream> take_stream_off_the_end(std::string_view& text) {
    const std::size_t sign = text.rfind('@');
    if (sign == text.npos)
        return std::nullopt;
    Stream stream;
    std::string_view rest = text.substr(sign + 1);
    if (!take_stream(rest, stream) || !rest.empty())
        return std::nullopt;
    text = text.substr(0, sign);
    return stream;
}

bool matches(const tRec_Servicio& service, const ServiceQuery& query) {
    if (query.stream && *query.stream != stream_of(service))
        return false;
    if (query.lcn)
        return service.LCN == *query.lcn;
    return service.NombreEntrada == query.name || service.NombreSalida == query.name;
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

/// Whatever the case of the letters A to Z.
bool contains(const std::string& text, const std::string& part) {
    const auto is_same = [](char one, char other) { return small_letter(one) == small_letter(other); };
    return std::search(text.begin(), text.end(), part.begin(), part.end(), is_same) != text.end();
}

/// Names that contain the one that nobody has, or else the one that is nearest to it; empty where none is
/// near.
std::string similar_names(const std::set<std::string>& names, const std::string& name) {
    constexpr std::size_t most = 3;
    constexpr std::size_t least_letters = 3; // fewer are in many names
    std::vector<std::string> similar;
    for (const std::string& other : names)
        if (name.size() >= least_letters && contains(other, name))
            similar.push_back(other);
    if (similar.empty())
        return did_you_mean(name, {names.begin(), names.end()});
    const std::size_t told = std::min(similar.size(), most);
    const std::string rest = similar.size() == told ? "" : fmt::format(", or {} more", similar.size() - told);
    return fmt::format(
        "; did you mean \"{}\"{}?",
        fmt::join(similar.begin(), similar.begin() + static_cast<std::ptrdiff_t>(told), "\" or \""), rest);
}

/// The loaded services and their clones.
Services all_of(const EngineRun& run) {
    Services all = run.engine.listaServicios;
    all.insert(all.end(), run.clones.begin(), run.clones.end());
    return all;
}

[[noreturn]] void complain(const ServiceQuery& query, const EngineRun& run, const std::string& file) {
    std::set<std::uint16_t> lcns;
    std::set<std::string> names;
    std::set<Stream> streams;
    for (const auto& service : all_of(run)) {
        lcns.insert(service->LCN);
        names.insert({service->NombreEntrada, service->NombreSalida});
        if (matches(*service, {query.text, query.lcn, query.name, std::nullopt, query.option}))
            streams.insert(stream_of(*service));
    }
    const std::string has_it =
        query.lcn ? fmt::format("has the LCN {}", *query.lcn) : fmt::format("is called \"{}\"", query.name);
    const std::string asked = fmt::format("{}: {} {}: no service ", file, query.option, query.text);
    if (!streams.empty()) {
        std::vector<std::string> others;
        for (const Stream stream : streams)
            others.push_back(to_string(stream));
        throw Failure(fmt::format("{}of stream {} {}; it is in stream {}", asked, to_string(*query.stream),
                                  has_it, fmt::join(others, ", ")));
    }
    if (query.lcn)
        throw Failure(fmt::format("{}{}; {}", asked, has_it, nearest_lcns(lcns, *query.lcn)));
    const std::string similar = similar_names(names, query.name);
    throw Failure(asked + has_it +
                  (similar.empty()
                       ? "; expected an LCN up to 65535 or a whole name, and @ONID/TSID behind it for "
                         "one stream only, as in 25@1/1007"
                       : similar));
}

/// In the order of loading, each followed by its clones.
Services matching(const ServiceQuery& query, const EngineRun& run) {
    Services found;
    for (const auto& service : run.engine.listaServicios) {
        const bool is_asked_for = matches(*service, query);
        if (is_asked_for)
            found.push_back(service);
        for (const auto& clone : run.clones)
            if (clone->LCN == service->LCN && stream_of(*clone) == stream_of(*service) &&
                (is_asked_for || matches(*clone, query)))
                found.push_back(clone);
    }
    return found;
}

} // namespace

ServiceQuery parse_service_query(const std::string& text, const std::string& option) {
    ServiceQuery query;
    query.text = text;
    query.option = option;
    std::string_view rest = text;
    query.stream = take_stream_off_the_end(rest);
    query.name = rest;
    std::uint16_t lcn = 0;
    if (take_number(rest, lcn) && rest.empty())
        query.lcn = lcn;
    if (query.name.empty())
        throw Failure(fmt::format("{} {}: found no LCN and no name, expected one, as in 25 or 25@1/1007",
                                  option, text.empty() ? "\"\"" : text));
    return query;
}

Services services_with(const ServiceQuery& query, const EngineRun& run, const std::string& file) {
    // A name may look like a number, or end like one with a stream.
    const ServiceQuery by_name{query.text, std::nullopt, query.name, query.stream, query.option};
    const ServiceQuery by_text{query.text, std::nullopt, query.text, std::nullopt, query.option};
    for (const ServiceQuery& reading : {query, by_name, by_text}) {
        Services found = matching(reading, run);
        if (!found.empty())
            return found;
    }
    complain(query, run, file);
}

namespace {

constexpr const char* no_ask = "it, or the service that it is a clone of, has \"ask\": false";

std::string why_not_asked_for(const Service& service, const EngineRun& run) {
    const auto asked =
        std::find_if(run.variants.begin(), run.variants.end(),
                     [&service](const AskedVariant& variant) { return variant.one_of == service.one_of; });
    if (!service.ask || !is_variant(service))
        return no_ask;
    if (asked == run.variants.end())
        return fmt::format("none of its group \"{}\" is worth anything or a must", shortened(service.one_of));
    return fmt::format("another of its group \"{}\" is asked for, \"{}\" (LCN {}, stream {})",
                       shortened(service.one_of), shortened(asked->service->NombreEntrada),
                       asked->service->LCN, to_string(stream_of(*asked->service)));
}

} // namespace

Services services_with(const ServiceQuery& query, const EngineRun& run, const std::string& file,
                       const Headend& headend) {
    try {
        return services_with(query, run, file);
    } catch (const Failure&) {
        if (run.not_asked_for == 0)
            throw;
        const EngineRun loaded = load_engine(with_all_asked_for(headend), file);
        // Where there is none at all, this tells of those that are withheld, too.
        const auto withheld = services_with(query, loaded, file).front();
        const auto place = std::find(loaded.services.begin(), loaded.services.end(), withheld.get());
        throw Failure(fmt::format(
            "{}: {} {}: \"{}\" (LCN {}, stream {}) is not asked for: {}", file, query.option, query.text,
            shortened(withheld->NombreEntrada), withheld->LCN, to_string(stream_of(*withheld)),
            place == loaded.services.end()
                ? no_ask
                : why_not_asked_for(
                      headend.services[static_cast<std::size_t>(place - loaded.services.begin())], run)));
    }
}

Services services_with(const std::vector<ServiceQuery>& queries, const EngineRun& run,
                       const std::string& file, const Headend& headend) {
    Services services;
    for (const ServiceQuery& query : queries)
        for (const auto& service : services_with(query, run, file, headend))
            if (std::find(services.begin(), services.end(), service) == services.end())
                services.push_back(service);
    return services;
}

} // namespace zarven::tool
