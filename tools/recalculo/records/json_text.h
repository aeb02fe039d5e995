// From the text of a file to a JSON value, with errors that say where in the text.

#ifndef RECALCULO_JSON_TEXT_H
#define RECALCULO_JSON_TEXT_H

#include <string>

#include <nlohmann/json_fwd.hpp>

namespace zarven::tool {

/// Parses the text of a file. Throws `Failure` for text that is not JSON (with line and column) and for an
/// object that has a key twice (with its JSON pointer): one of the two values would be lost without a word.
nlohmann::json parse_json(const std::string& file, const std::string& text);

} // namespace zarven::tool

#endif
