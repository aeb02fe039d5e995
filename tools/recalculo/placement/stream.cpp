#include "placement/stream.h"

#include <fmt/format.h>

namespace zarven::tool {

bool operator==(Stream one, Stream other) {
    return one.onid == other.onid && one.tsid == other.tsid;
}

std::string to_string(Stream stream) {
    return fmt::format("{}/{}", stream.onid, stream.tsid);
}

} // namespace zarven::tool
