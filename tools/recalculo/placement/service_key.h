// How a planner names a service on the command line: by the LCN that the reports show, and by the stream
// where several have it.

#ifndef RECALCULO_SERVICE_KEY_H
#define RECALCULO_SERVICE_KEY_H

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "placement/result.h"

namespace zarven::tool {

struct ServiceKey {
    /// As it was asked for.
    std::string text;
    std::uint16_t lcn = 0;
    std::optional<Stream> stream;
};

/// Reads LCN or LCN@ONID/TSID. Throws `Failure`.
ServiceKey parse_service_key(const std::string& text);

/// The loaded services with that key, in the order of loading, each followed by its clones. Throws `Failure`
/// if there is none; `file` is for messages.
std::vector<std::shared_ptr<tRec_Servicio>> services_with(const ServiceKey& key, const EngineRun& run,
                                                          const std::string& file);

} // namespace zarven::tool

#endif
