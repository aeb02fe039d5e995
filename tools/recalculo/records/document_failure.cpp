#include "records/document_failure.h"

#include <fmt/format.h>

namespace zarven::tool {

std::string Misfit::message() const {
    return fmt::format("{}: {}: found {}, expected {}", file, place.empty() ? "top level" : place, found,
                       expected);
}

bool Misfit::is_within(const std::string& pointer) const {
    return place.compare(0, pointer.size(), pointer) == 0 &&
           (place.size() == pointer.size() || place[pointer.size()] == '/');
}

} // namespace zarven::tool
