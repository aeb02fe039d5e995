// How a planner names a service on the command line: by the LCN that the reports show, and by the stream
// where several have it.

#ifndef RECALCULO_SERVICE_QUERY_H
#define RECALCULO_SERVICE_QUERY_H

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "placement/result.h"

namespace zarven::tool {

struct ServiceQuery {
    /// As it was asked for.
    std::string text;
    std::uint16_t lcn = 0;
    std::optional<Stream> stream;
};

/// Reads LCN or LCN@ONID/TSID. Throws `Failure`.
ServiceQuery parse_service_query(const std::string& text);

/// The loaded services that are asked for, in the order of loading, each followed by its clones. Throws
/// `Failure` if there is none; `file` is for messages.
std::vector<std::shared_ptr<tRec_Servicio>> services_with(const ServiceQuery& query, const EngineRun& run,
                                                          const std::string& file);

} // namespace zarven::tool

#endif
