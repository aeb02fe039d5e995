// What meters tell of streams, whatever the form of their files: the rates of services, and what else of them
// was seen. A file has from one look at a stream to some thousands; each look has some dozens of services.

#ifndef RECALCULO_MEASUREMENT_H
#define RECALCULO_MEASUREMENT_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "lineup/channel.h"

namespace zarven::tool {

/// What is told of a service beside its rate.
struct MeasuredTraits {
    /// Empty where it was not told, or not seen.
    std::string name;
    bool is_name_unseen = false;
    /// Only where something tells it that can be relied on.
    std::optional<ChannelKind> kind;
    /// Not all meters do.
    bool tells_scrambling = false;
    std::uint16_t scrambled_pids = 0;
    bool is_scrambled = false;
    bool has_ecms = false;
};

struct MeasuredService : MeasuredTraits {
    /// Not all meters tell it.
    std::optional<std::uint16_t> onid;
    std::uint16_t tsid = 0;
    /// As it is received.
    std::uint16_t sid = 0;
    /// In bit/s; 0 where nothing could be measured.
    double rate = 0;
};

/// One look at a stream, or the rows of a table, which may be of many.
struct Measurement {
    /// How long it took, in seconds, where that is told.
    std::optional<double> seconds;
    /// What the stream has for services, in bit/s, where that is told.
    std::optional<double> room;
    std::vector<MeasuredService> services;
};

struct MeasuredFile {
    std::string file;
    std::vector<Measurement> measurements;
    /// What could not be read, with the name of the file and the line.
    std::vector<std::string> unreadable;
};

} // namespace zarven::tool

#endif
