// How a JSON document is laid out as text: which of its values stand on one line, and which have a line for
// each of their entries. Documents of some megabytes.

#ifndef RECALCULO_JSON_LAYOUT_H
#define RECALCULO_JSON_LAYOUT_H

#include <cstddef>
#include <limits>
#include <string>

#include <nlohmann/json_fwd.hpp>

namespace zarven::tool {

struct JsonLayout {
    /// The values of so many levels have a line for each entry, unless they are empty.
    std::size_t levels_on_lines = 1;
    /// The others, too, where this is too short for them and a comma.
    std::size_t most_columns = std::numeric_limits<std::size_t>::max();
};

/// With a final line end.
std::string laid_out(const nlohmann::ordered_json& document, const JsonLayout& layout);

} // namespace zarven::tool

#endif
