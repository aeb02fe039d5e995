// The value is built event by event, which shows each key even when it comes again.

#include "records/json_text.h"

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "base/streams.h"
#include "base/utf8.h"
#include "records/document_failure.h"
#include "records/json_fault.h"

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

/// Builds the value, and throws at the first thing that is wrong with the text. The library's own builder
/// keeps the last of several values with one key, without a word.
class Builder : public json::json_sax_t {
public:
    Builder(const std::string& file, const std::string& text) : file_(file), text_(text) {}

    bool null() override { return add(nullptr); }
    bool boolean(bool value) override { return add(value); }
    bool number_integer(number_integer_t value) override { return add(value); }
    bool number_unsigned(number_unsigned_t value) override { return add(value); }
    bool number_float(number_float_t value, const string_t&) override { return add(value); }
    bool string(string_t& value) override { return add(std::move(value)); }
    bool binary(binary_t& value) override { return add(std::move(value)); }
    bool start_object(std::size_t) override { return open(json::object()); }
    bool end_object() override { return close(); }
    bool start_array(std::size_t) override { return open(json::array()); }
    bool end_array() override { return close(); }

    bool key(string_t& key) override {
        if (open_.back().value->contains(key))
            throw DocumentFailure(
                {file_, place_of_object(), fmt::format("the key \"{}\" twice", shortened(key)), "it once"});
        open_.back().key = std::move(key);
        return true;
    }

    bool parse_error(std::size_t position, const std::string&, const json::exception& error) override {
        const std::size_t offset = position == 0 ? 0 : position - 1;
        throw Failure(fmt::format("{}: {}: {}", file_, line_and_column(text_, offset),
                                  json_fault(error.what(), text_, offset)));
    }

    json take() { return std::move(root_); }

private:
    /// An object or array whose end has not come yet. It stays where it is: it is the last of its own
    /// container until it ends.
    struct Container {
        json* value;
        std::string key;
    };

    json* put(json&& value) {
        if (open_.empty())
            return &(root_ = std::move(value));
        json& container = *open_.back().value;
        if (container.is_object())
            return &(container[open_.back().key] = std::move(value));
        container.push_back(std::move(value));
        return &container.back();
    }

    bool add(json&& value) {
        put(std::move(value));
        return true;
    }

    bool open(json&& empty) {
        open_.push_back({put(std::move(empty)), ""});
        return true;
    }

    bool close() {
        open_.pop_back();
        return true;
    }

    /// JSON pointer of the innermost open object.
    std::string place_of_object() const {
        json::json_pointer place;
        for (std::size_t level = 0; level + 1 < open_.size(); ++level) {
            if (open_[level].value->is_object())
                place /= open_[level].key;
            else
                place /= open_[level].value->size() - 1;
        }
        return place.to_string();
    }

    const std::string& file_;
    const std::string& text_;
    json root_;
    std::vector<Container> open_;
};

} // namespace

nlohmann::json parse_json(const std::string& file, const std::string& text) {
    // The library takes a NUL for the end.
    check_is_text(file, text);
    if (text.find_first_not_of(" \t\r\n") == text.npos)
        throw Failure(file + ": found nothing in it, expected JSON");
    Builder builder(file, text);
    json::sax_parse(text, &builder);
    return builder.take();
}

} // namespace zarven::tool
