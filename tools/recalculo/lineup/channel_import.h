// From a channel list to the services of a head-end: numbering, streams, descrambling and estimated bitrates.

#ifndef RECALCULO_CHANNEL_IMPORT_H
#define RECALCULO_CHANNEL_IMPORT_H

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "headend/receptions.h"
#include "headend/service_filter.h"
#include "headend/stream.h"
#include "lineup/channel.h"
#include "lineup/stream_loads.h"

namespace zarven::tool {

/// Peak bitrate in kbit/s to assume by kind of service, because the list tells none.
struct BitrateEstimates {
    std::uint32_t radio = typical_radio_bitrate;
    std::uint32_t sd = typical_sd_bitrate;
    std::uint32_t hd = typical_hd_bitrate;
    std::uint32_t uhd = typical_uhd_bitrate;
};

/// What an import has found of one service, for its report.
struct ServiceFacts {
    ChannelKind kind = ChannelKind::sd;
    bool is_unknown = false;
    /// The name alone tells what the picture is.
    bool is_by_name = false;
    /// It is scrambled, and the number of its CA PIDs is an estimate.
    bool has_estimated_pids = false;
};

struct ImportedChannels {
    std::vector<Service> services;
    /// Of each service.
    std::vector<ServiceFacts> facts;
    /// The lines left aside, ascending: those that could not be read and those no service can be made of.
    std::vector<Remark> unreadable;
    /// What else is to be told of lines, ascending.
    std::vector<Remark> remarks;
    /// Of the services, how many are of each kind, and of how many it is not known.
    std::size_t radio = 0;
    std::size_t sd = 0;
    std::size_t hd = 0;
    std::size_t uhd = 0;
    std::size_t unknown = 0;
    /// Services with a picture of which the name alone tells the kind.
    std::size_t kinds_by_name = 0;
    std::size_t scrambled = 0;
    /// Services that were imported and are not wanted.
    std::size_t not_wanted = 0;
    /// Channels that the list has before.
    std::size_t duplicates = 0;
    /// Channels that have been given another number, because one of another list has theirs.
    std::size_t renumbered = 0;
    /// Scrambled services whose PIDs the list does not know, so that their number is an estimate.
    std::size_t without_pids = 0;
    /// Streams without ids, which have been given some.
    std::size_t nameless_streams = 0;
    /// By ids of the list that several transponders have, what these have been given; the first has kept
    /// them.
    std::map<Stream, std::vector<Stream>> shared_ids;
    /// Streams whose services were estimated at more than the transponder carries.
    std::vector<SharedOut> shared_out;
    /// Streams of which it is not known what the transponder carries.
    std::size_t unchecked_streams = 0;
    /// Where the streams are received.
    Receptions receptions;
};

/// Leaves the services that are not wanted away, and counts again.
void choose_services(ImportedChannels& imported, const ServiceFilter& filter);

/// Keeps the services of these places alone, each given once, in this order; leaves the others away, and
/// counts again.
void keep_services(ImportedChannels& imported, const std::vector<std::size_t>& places);

/// What becomes of a service that a list has twice, by ONID, TSID and SID of one transponder. SID 0 is none.
enum class Duplicates { passed_over, kept };

/// What a channel without a name is called.
std::string name_of_nameless(std::uint16_t sid);

/// Changes the services before they are held to what their transponders carry.
using Refinement = std::function<void(ImportedChannels&)>;

/// Makes a service of each channel.
ImportedChannels import_channels(const ChannelList& list, const BitrateEstimates& estimates,
                                 Duplicates duplicates = Duplicates::passed_over,
                                 const Refinement& refine = {});

} // namespace zarven::tool

#endif
