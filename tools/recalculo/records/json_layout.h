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

/// JSON text of the library with escapes for what a terminal would obey and the library leaves as it is: DEL,
/// U+0080 to U+009F, and the characters that end a line or turn it round. It says the same as before.
std::string escaped_for_terminals(const std::string& text);

/// With a final line end.
std::string laid_out(const nlohmann::ordered_json& document, const JsonLayout& layout);

/// A document with a list that is written entry by entry, in the layout of `document_text`. Between two
/// entries stands a comma.
struct OpenedList {
    /// What stands before the first entry, and after the last.
    std::string begin;
    std::string end;
};

/// Opens the list that the document has under the key, whatever its entries.
OpenedList opened_at(const char* key, const nlohmann::ordered_json& document);

std::string entry_of_opened(const nlohmann::ordered_json& entry);

} // namespace zarven::tool

#endif
