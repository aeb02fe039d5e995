// A transport stream by its two numbers, and how it is written in messages and reports.

#ifndef RECALCULO_STREAM_H
#define RECALCULO_STREAM_H

#include <cstdint>
#include <string>

namespace zarven::tool {

struct Stream {
    std::uint16_t onid = 0;
    std::uint16_t tsid = 0;
};

bool operator==(Stream one, Stream other);
bool operator!=(Stream one, Stream other);
/// By ONID, then by TSID, as the engine goes through them.
bool operator<(Stream one, Stream other);

/// ONID/TSID.
std::string to_string(Stream stream);

} // namespace zarven::tool

#endif
