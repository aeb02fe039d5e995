// Complaints are worded in one place, `complain_of`.

#include "records/json_cursor.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include <fmt/format.h>

#include "base/utf8.h"
#include "base/words.h"
#include "records/document_failure.h"

namespace zarven::tool {

namespace {

using nlohmann::json;

/// What stands in the document, short enough for a message.
std::string describe(const json& value) {
    if (value.is_object())
        return "an object";
    if (value.is_array())
        return value.size() == 1 ? "a list of 1 entry" : fmt::format("a list of {} entries", value.size());
    return shortened(value.dump());
}

} // namespace

JsonCursor::JsonCursor(const std::string& file, const json& document)
    : JsonCursor(file, &document, json::json_pointer()) {}

JsonCursor::JsonCursor(const std::string& file, const json* value, json::json_pointer place)
    : file_(&file), value_(value), place_(std::move(place)) {}

JsonCursor JsonCursor::member(const std::string& key) const {
    const auto found = value_->find(key);
    if (found != value_->end())
        return JsonCursor(*file_, &*found, place_ / key);
    JsonCursor absent(*file_, nullptr, place_);
    absent.absent_key_ = key;
    return absent;
}

void JsonCursor::check_object() const {
    if (!present() || !value_->is_object())
        complain("an object");
}

void JsonCursor::check_keys(const RecordDescription& record) const {
    check_object();
    for (const auto& member : value_->items())
        if (record.field(member.key()) == nullptr)
            check_key(member.key(), record.keys());
}

void JsonCursor::check_key(const std::string& key, const std::vector<std::string>& known) const {
    if (std::find(known.begin(), known.end(), key) == known.end())
        complain_of(fmt::format("the unknown key \"{}\"", shortened(key)),
                    fmt::format("a known one, such as \"{}\"", nearest_word(key, known)));
}

std::vector<JsonCursor> JsonCursor::elements(std::size_t most) const {
    if (!present() || !value_->is_array())
        complain("a list");
    if (value_->size() > most)
        complain(fmt::format("a list of at most {}", most));
    std::vector<JsonCursor> all;
    for (const json& value : *value_)
        all.push_back(JsonCursor(*file_, &value, place_ / all.size()));
    return all;
}

std::string JsonCursor::text() const {
    if (!present() || !value_->is_string())
        complain("text");
    return value_->get<std::string>();
}

std::size_t JsonCursor::word(const std::vector<std::string>& words) const {
    const std::string found = text();
    const auto place = std::find(words.begin(), words.end(), found);
    if (place == words.end())
        complain_of(fmt::format("\"{}\"", shortened(found)),
                    fmt::format("a known word, such as \"{}\"", nearest_word(found, words)));
    return static_cast<std::size_t>(place - words.begin());
}

bool JsonCursor::boolean() const {
    if (!present() || !value_->is_boolean())
        complain("true or false");
    return value_->get<bool>();
}

std::uint16_t JsonCursor::flag() const {
    const auto most = std::numeric_limits<std::uint16_t>::max();
    if (present() && value_->is_boolean())
        return value_->get<bool>() ? 1 : 0;
    if (!present() || !is_whole_within(0, most))
        complain(fmt::format("true, false or a whole number from 0 to {}", most));
    return value_->get<std::uint16_t>();
}

std::int64_t JsonCursor::whole(std::int64_t least, std::int64_t most) const {
    if (!present() || !is_whole_within(least, most))
        complain(fmt::format("a whole number from {} to {}", least, most));
    return value_->get<std::int64_t>();
}

double JsonCursor::number(double least, double most) const {
    const double found = present() && value_->is_number() ? value_->get<double>() : least - 1;
    if (!(found >= least && found <= most))
        complain(fmt::format("a number from {} to {}", least, most));
    return found;
}

bool JsonCursor::is_whole_within(std::int64_t least, std::int64_t most) const {
    // 1.0 and 1e3 are whole numbers, too, as the schemas see it.
    if (value_->is_number_float()) {
        const double number = value_->get<double>();
        return std::trunc(number) == number && number >= static_cast<double>(least) &&
               number <= static_cast<double>(most);
    }
    if (!value_->is_number_integer())
        return false;
    const auto beyond_signed = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
    if (value_->is_number_unsigned() && value_->get<std::uint64_t>() > beyond_signed)
        return false;
    const auto number = value_->get<std::int64_t>();
    return number >= least && number <= most;
}

void JsonCursor::complain(const std::string& expected) const {
    complain_of(present() ? describe(*value_) : fmt::format("no \"{}\"", absent_key_), expected);
}

void JsonCursor::complain_of(const std::string& found, const std::string& expected) const {
    throw DocumentFailure({*file_, place_.to_string(), found, expected});
}

} // namespace zarven::tool
