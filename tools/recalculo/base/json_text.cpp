// The text is walked twice: once event by event, which sees each key even when it comes again, and once to
// build the value.

#include "base/json_text.h"

#include <algorithm>
#include <set>
#include <string_view>
#include <vector>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "base/failure.h"
#include "base/utf8.h"

namespace zarven::tool {

namespace {

using nlohmann::json;

/// Line and column, from 1, of the character at an offset; columns count characters, not bytes.
std::string line_and_column(std::string_view text, std::size_t offset) {
    const std::string_view before = text.substr(0, std::min(offset, text.size()));
    const auto line = 1 + std::count(before.begin(), before.end(), '\n');
    const std::size_t newline = before.rfind('\n');
    const std::string_view in_line = newline == before.npos ? before : before.substr(newline + 1);
    const auto column =
        1 + std::count_if(in_line.begin(), in_line.end(), [](char byte) { return (byte & 0xC0) != 0x80; });
    return fmt::format("line {}, column {}", line, column);
}

/// The reason alone, without the library's own account of what kind of error it is and where.
std::string reason_of(const json::exception& error) {
    const std::string_view message = error.what();
    const std::string_view before_reason = ": ";
    const std::size_t found = message.find(before_reason);
    if (found == message.npos)
        return std::string(message.substr(message.find("] ") + 2));
    return std::string(message.substr(found + before_reason.size()));
}

/// A reason quotes the text up to the fault, which may be a name or a number of any length.
constexpr int most_columns_of_reason = 240;

/// A text of UTF-16 begins with a byte order mark, or with an ASCII character of two bytes.
bool is_utf16(std::string_view text) {
    const std::string_view start = text.substr(0, 2);
    return start == "\xFF\xFE" || start == "\xFE\xFF" ||
           (start.size() == 2 && (start[0] == '\0') != (start[1] == '\0'));
}

/// Walks the text and throws at the first thing that is wrong with it.
class Inspector : public json::json_sax_t {
public:
    Inspector(const std::string& file, const std::string& text) : file_(file), text_(text) {}

    bool null() override { return value_ended(); }
    bool boolean(bool) override { return value_ended(); }
    bool number_integer(number_integer_t) override { return value_ended(); }
    bool number_unsigned(number_unsigned_t) override { return value_ended(); }
    bool number_float(number_float_t, const string_t&) override { return value_ended(); }
    bool string(string_t&) override { return value_ended(); }
    bool binary(binary_t&) override { return value_ended(); }
    bool start_object(std::size_t) override { return container_began(true); }
    bool end_object() override { return container_ended(); }
    bool start_array(std::size_t) override { return container_began(false); }
    bool end_array() override { return container_ended(); }

    bool key(string_t& key) override {
        if (!open_.back().keys.insert(key).second)
            throw Failure(fmt::format("{}: {}: found the key \"{}\" twice, expected it once", file_,
                                      place_of_object(), shortened(key)));
        open_.back().key = key;
        return true;
    }

    bool parse_error(std::size_t position, const std::string&, const json::exception& error) override {
        const std::size_t offset = position == 0 ? 0 : position - 1;
        throw Failure(fmt::format("{}: {}: not JSON: {}", file_, line_and_column(text_, offset),
                                  shortened(reason_of(error), most_columns_of_reason, "…")));
    }

private:
    /// An object or array whose end has not come yet.
    struct Container {
        bool is_object;
        std::set<std::string> keys;
        std::string key;
        std::size_t index = 0;
    };

    bool container_began(bool is_object) {
        open_.push_back({is_object, {}, {}});
        return true;
    }

    bool container_ended() {
        open_.pop_back();
        return value_ended();
    }

    bool value_ended() {
        if (!open_.empty() && !open_.back().is_object)
            ++open_.back().index;
        return true;
    }

    /// JSON pointer of the innermost open object.
    std::string place_of_object() const {
        json::json_pointer place;
        for (std::size_t level = 0; level + 1 < open_.size(); ++level) {
            if (open_[level].is_object)
                place /= open_[level].key;
            else
                place /= open_[level].index;
        }
        return place.empty() ? "top level" : place.to_string();
    }

    const std::string& file_;
    const std::string& text_;
    std::vector<Container> open_;
};

} // namespace

nlohmann::json parse_json(const std::string& file, const std::string& text) {
    if (is_utf16(text))
        throw Failure(file + ": the text is UTF-16, expected UTF-8");
    Inspector inspector(file, text);
    json::sax_parse(text, &inspector);
    return json::parse(text);
}

} // namespace zarven::tool
