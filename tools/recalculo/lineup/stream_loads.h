// What the services of each stream are estimated at, against what its transponder carries. Estimates are
// peaks by kind of service; together they may be more than the transponder has, and then they are shared out.

#ifndef RECALCULO_STREAM_LOADS_H
#define RECALCULO_STREAM_LOADS_H

#include <cstdint>
#include <map>
#include <optional>
#include <vector>

#include "headend/receptions.h"
#include "headend/stream.h"
#include "lineup/transponder.h"

namespace zarven::tool {

/// A stream whose services were estimated at more than it carries, in kbit/s.
struct SharedOut {
    Stream stream;
    std::uint64_t estimated = 0;
    std::uint32_t carried = 0;
};

/// Lowers the bitrates of the services of a stream, which stand at these places, so that they add up to no
/// more than it carries: in proportion, and those that were measured and those of radios only where they
/// alone are too many. Returns what they were together, if it had to.
std::optional<std::uint64_t> hold_to(std::uint32_t carried, const std::vector<std::size_t>& places,
                                     std::vector<Service>& services);

class StreamLoads {
public:
    /// A service of the stream, by its place among all, and what its channel tells of the transponder. The
    /// first that tells a net rate counts.
    void add(Stream stream, std::size_t service, const Transponder& transponder);

    /// Holds each stream to what its transponder carries. Returns the streams in which it had to, ascending.
    std::vector<SharedOut> share_out(std::vector<Service>& services) const;

    /// Streams whose net rate is not known.
    std::size_t unchecked() const;

    /// What the transponder of a stream is and carries, put into where the stream is received.
    void describe(Receptions& receptions) const;

private:
    struct Load {
        std::vector<std::size_t> services;
        std::optional<std::uint32_t> carried;
        /// The one of the net rate; where none tells that, the first.
        Transponder transponder;
    };

    std::map<Stream, Load> loads_;
};

} // namespace zarven::tool

#endif
