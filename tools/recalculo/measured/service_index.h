// The services of a head-end by what a meter tells of them. Some thousands, asked for each look at a stream.

#ifndef RECALCULO_SERVICE_INDEX_H
#define RECALCULO_SERVICE_INDEX_H

#include <cstddef>
#include <map>
#include <utility>
#include <vector>

#include "headend/headend.h"
#include "headend/stream.h"
#include "measured/measurement.h"

namespace zarven::tool {

class ServiceIndex {
public:
    explicit ServiceIndex(const std::vector<Service>& services);

    struct Match {
        /// In the head-end. Several that have all ids in common are one service.
        std::vector<std::size_t> places;
        /// They are of several networks, and the meter does not tell which it saw.
        bool is_ambiguous = false;
        /// The head-end has a service of the stream.
        bool has_stream = false;
    };

    Match find(const MeasuredService& measured) const;

    /// The places of all services of a stream.
    const std::vector<std::size_t>& of_stream(Stream stream) const { return streams_.at(stream); }

private:
    bool has_stream(const MeasuredService& measured) const;

    /// By TSID and SID, the places by ONID.
    std::map<std::pair<std::uint16_t, std::uint16_t>, std::map<std::uint16_t, std::vector<std::size_t>>>
        places_;
    std::map<Stream, std::vector<std::size_t>> streams_;
};

} // namespace zarven::tool

#endif
