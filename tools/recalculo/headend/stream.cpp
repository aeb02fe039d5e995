#include "headend/stream.h"

#include <tuple>

#include <fmt/format.h>

namespace zarven::tool {

bool operator==(Stream one, Stream other) {
    return std::tie(one.onid, one.tsid) == std::tie(other.onid, other.tsid);
}

bool operator!=(Stream one, Stream other) {
    return !(one == other);
}

bool operator<(Stream one, Stream other) {
    return std::tie(one.onid, one.tsid) < std::tie(other.onid, other.tsid);
}

std::string to_string(Stream stream) {
    return fmt::format("{}/{}", stream.onid, stream.tsid);
}

} // namespace zarven::tool
