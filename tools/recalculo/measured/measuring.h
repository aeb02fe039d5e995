// Measured rates brought to the services of a head-end. A service is known by ONID, TSID and the SID that it
// is received with; where the meter does not tell the ONID, by the others if one network alone has them.
//
// What is measured is a mean, and what is planned with a peak: the greatest of several means stands for it.
// The mean is that of all looks, each by how long it took. The services of a stream never have more together
// than the stream has for services, although PIDs that several share are counted in each.

#ifndef RECALCULO_MEASURING_H
#define RECALCULO_MEASURING_H

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "headend/headend.h"
#include "headend/stream.h"
#include "lineup/channel_import.h"
#include "lineup/stream_loads.h"
#include "measured/margins.h"
#include "measured/measurement.h"

namespace zarven::tool {

/// Looks at a stream that took less in all, in seconds, are too short for a peak.
inline constexpr double short_look = 10;

/// A stream or a service of the measurements that the head-end does not have, or has several of.
struct Unmatched {
    std::optional<std::uint16_t> onid;
    std::uint16_t tsid = 0;
    std::uint16_t sid = 0;
    std::string name;
    /// Of a stream, how many services.
    std::size_t services = 0;
};

struct ShortLook {
    Stream stream;
    double seconds = 0;
};

/// Services are told by their place in the head-end.
using ServicePlaces = std::vector<std::size_t>;

struct Measuring {
    ServicePlaces measured;
    /// The rate was 0, and what stood there has been kept.
    ServicePlaces without_rate;
    /// No look has seen the name.
    ServicePlaces without_name;
    /// What they are was taken from the measurement and was something else before.
    ServicePlaces of_other_kind;
    /// To be descrambled, but clear when it was measured: with ECMs, and without.
    ServicePlaces clear_at_the_moment;
    ServicePlaces clear;
    /// Scrambled when it was measured, and the head-end does not descramble it.
    ServicePlaces not_descrambled;
    /// Scrambled, but the measurement does not tell how many of its PIDs.
    ServicePlaces without_pids;
    /// The measurement tells their CA PIDs.
    ServicePlaces of_known_pids;
    /// One look alone, so that its mean stands for the peak.
    std::size_t measured_once = 0;
    /// What the measurement tells of the kind, by place.
    std::vector<std::optional<ChannelKind>> kinds;
    std::vector<Unmatched> unknown_streams;
    std::vector<Unmatched> unknown_services;
    std::vector<Unmatched> ambiguous_services;
    std::vector<ShortLook> short_looks;
    /// Streams whose services would have had more than there is for them.
    std::vector<SharedOut> held;
};

/// Whether a service that was seen scrambled is to be descrambled. A list may not know it; whoever has
/// written a head-end does.
enum class Descrambling { as_measured, as_planned };

/// Changes the services. Estimates of services that were not measured get their margin, too.
Measuring apply_measurements(const std::vector<MeasuredFile>& files, const Margins& margins,
                             Descrambling descrambling, std::vector<Service>& services);

/// Of services that are imported: what was measured is known.
void take_kinds(const Measuring& measuring, ImportedChannels& imported);

} // namespace zarven::tool

#endif
