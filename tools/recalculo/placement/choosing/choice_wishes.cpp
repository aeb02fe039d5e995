// A name of a service may have a "=" in it, so that the last one stands before the value.

#include "placement/choosing/choice_wishes.h"

#include <algorithm>
#include <string_view>

#include <fmt/format.h>

#include "base/failure.h"
#include "base/numbers.h"
#include "base/utf8.h"
#include "headend/service_filter.h"
#include "placement/one_of.h"
#include "placement/service_query.h"

namespace zarven::tool {

namespace {

/// The ordinary service that a record is, or a clone of.
std::size_t place_of(const tRec_Servicio& record, const EngineRun& run, const Headend& headend) {
    const auto ordinary = std::find_if(
        run.engine.listaServicios.begin(), run.engine.listaServicios.end(), [&record](const auto& service) {
            return service->LCN == record.LCN && stream_of(*service) == stream_of(record);
        });
    const auto found = std::find(run.services.begin(), run.services.end(), ordinary->get());
    return std::min(static_cast<std::size_t>(found - run.services.begin()), headend.services.size() - 1);
}

std::uint16_t value_in(const std::string& option, std::string_view text) {
    std::uint16_t value = 0;
    if (!is_whole_number(text, value) || value > most_value)
        throw Failure(fmt::format("{}: found \"{}\", expected a whole number from 0 to {}", option,
                                  shortened(std::string(text)), most_value));
    return value;
}

} // namespace

void demand_services(const std::vector<std::string>& keys, const std::string& file, Headend& headend) {
    std::vector<ServiceQuery> queries;
    for (const std::string& key : keys)
        queries.push_back(parse_service_query(key, "--must"));
    if (queries.empty())
        return;
    const EngineRun run = load_engine(with_all_asked_for(headend), file);
    for (const ServiceQuery& query : queries)
        for (const auto& record : services_with(query, run, file)) {
            Service& service = headend.services[place_of(*record, run, headend)];
            if (!service.ask)
                throw Failure(
                    fmt::format("{}: --must {}: found a service that is not asked for, expected one "
                                "without \"ask\": false",
                                file, query.text));
            service.must = true;
        }
}

std::vector<std::string> value_services(const std::vector<std::string>& values, Headend& headend) {
    std::vector<std::string> without_service;
    for (const std::string& text : values) {
        const std::string option = fmt::format("--value '{}'", text);
        const std::size_t equals = text.rfind('=');
        if (equals == text.npos)
            throw Failure(option + ": found no \"=\", expected SELECTION=N, as in hd=3");
        const ServiceTerms terms(option, std::string_view(text).substr(0, equals));
        const std::uint16_t value = value_in(option, std::string_view(text).substr(equals + 1));
        bool has_one = false;
        for (Service& service : headend.services)
            if (terms.hold_for(service)) {
                service.value = value;
                has_one = true;
            }
        if (!has_one)
            without_service.push_back(text);
    }
    return without_service;
}

} // namespace zarven::tool
