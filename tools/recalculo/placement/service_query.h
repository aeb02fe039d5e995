// How a planner names a service on the command line: by the LCN or the name that the reports show, and by the
// stream where several have it.

#ifndef RECALCULO_SERVICE_QUERY_H
#define RECALCULO_SERVICE_QUERY_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "headend/headend.h"
#include "placement/services.h"

namespace zarven::tool {

struct ServiceQuery {
    /// As it was asked for.
    std::string text;
    /// The LCN or, where there is none, the name.
    std::optional<std::uint16_t> lcn;
    std::string name;
    std::optional<Stream> stream;
    /// The option that asks, for messages.
    std::string option = "--service";
};

/// Reads an LCN or a name, and @ONID/TSID if that stands behind it. Throws `Failure` for an empty text.
ServiceQuery parse_service_query(const std::string& text, const std::string& option = "--service");

/// The loaded services that are asked for, in the order of loading, each followed by its clones; of a name
/// also a clone that alone has it. A number that is no LCN is read as a name, and so is in the end the whole
/// text. Throws `Failure` if there is none; `file` is for messages.
Services services_with(const ServiceQuery& query, const EngineRun& run, const std::string& file);

/// The same for what is loaded of a head-end; of one that it withholds the failure says so.
Services services_with(const ServiceQuery& query, const EngineRun& run, const std::string& file,
                       const Headend& headend);

/// The services of several queries, each once.
Services services_with(const std::vector<ServiceQuery>& queries, const EngineRun& run,
                       const std::string& file, const Headend& headend);

} // namespace zarven::tool

#endif
