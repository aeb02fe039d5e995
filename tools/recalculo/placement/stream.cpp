#include "placement/stream.h"

#include <fmt/format.h>

namespace zarven::tool {

std::string to_string(Stream stream) {
    return fmt::format("{}/{}", stream.onid, stream.tsid);
}

} // namespace zarven::tool
