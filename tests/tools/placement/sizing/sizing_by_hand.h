// Head-ends for which it can be told by hand what they need.

#ifndef RECALCULO_SIZING_BY_HAND_H
#define RECALCULO_SIZING_BY_HAND_H

#include <string>
#include <vector>

#include "base/streams.h"
#include "headend/headend_json.h"
#include "placement/made_services.h"
#include "placement/running/host.h"
#include "placement/sizing/sizing.h"

namespace zarven::tool::sizing_by_hand {

/// A service that leaves room for others on an output of 100 kbit/s.
inline Service light(std::uint16_t lcn, std::uint16_t tsid, std::uint32_t bitrate = 10,
                     std::uint16_t ca_pids = 0, std::uint16_t transcoding = 0) {
    return service(lcn, tsid, bitrate, ca_pids, transcoding);
}

/// One input, one output under 100 kbit/s, 4 PIDs.
inline const Module plain{"M", 3, true, 1, {100}, 4, 0, 0, 0};

inline Headend one_module(std::vector<Service> services) {
    Headend headend;
    headend.modules = {plain};
    headend.services = std::move(services);
    return headend;
}

inline Sizing size(const Headend& headend, const Module& kind, std::uint32_t most = 8, unsigned jobs = 2) {
    const host::Log no_log("");
    SizingOptions options;
    options.most = most;
    options.jobs = jobs;
    return size_headend(headend, "f", {kind}, options);
}

inline SizingOptions choosing(unsigned jobs = 2, std::uint32_t most = 8) {
    SizingOptions options;
    options.most = most;
    options.jobs = jobs;
    options.are_chosen = true;
    return options;
}

inline std::vector<std::size_t> numbers_tried(const Addition& addition) {
    std::vector<std::size_t> numbers;
    for (const Attempt& attempt : addition.attempts)
        numbers.push_back(attempt.number);
    return numbers;
}

inline Headend from_file(const char* name) {
    const std::string path = std::string(RECALCULO_TOOL_TESTS "/placement/") + name;
    return read_headend(path, read_text(path));
}

} // namespace zarven::tool::sizing_by_hand

#endif
