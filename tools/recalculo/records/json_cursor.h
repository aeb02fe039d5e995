// A place in a JSON document: the value, its JSON pointer and the file. All that is read goes through it, so
// that every complaint says in which file, where, what stands there and what was expected.

#ifndef RECALCULO_JSON_CURSOR_H
#define RECALCULO_JSON_CURSOR_H

#include <cstdint>
#include <limits>
#include <string>
#include <type_traits>
#include <vector>

#include <nlohmann/json.hpp>

#include "records/description.h"

namespace zarven::tool {

class JsonCursor {
public:
    /// The top level of a document. File name and document must outlive all cursors into them.
    JsonCursor(const std::string& file, const nlohmann::json& document);

    /// A member of an object. It may be absent: `present` tells, and reading an absent one is the complaint.
    JsonCursor member(const std::string& key) const;
    bool present() const { return value_ != nullptr; }

    /// Complains unless this is an object.
    void check_object() const;
    /// Complains unless this is an object all of whose keys are of fields of the record.
    void check_keys(const RecordDescription& record) const;
    /// Complains unless the key, which someone wants of this object, is a known one.
    void check_key(const std::string& key, const std::vector<std::string>& known) const;

    /// The elements of a list of at most `most`.
    std::vector<JsonCursor> elements(std::size_t most = std::numeric_limits<std::size_t>::max()) const;

    std::string text() const;
    bool boolean() const;
    /// The place of the text among these words.
    std::size_t word(const std::vector<std::string>& words) const;
    /// A whole number that fits the type.
    template <class Number> Number whole() const {
        static_assert(std::is_integral_v<Number> && sizeof(Number) <= 4, "int64_t holds every limit");
        using Limits = std::numeric_limits<Number>;
        return static_cast<Number>(whole(Limits::min(), Limits::max()));
    }
    std::int64_t whole(std::int64_t least, std::int64_t most) const;
    /// Any number, with decimals or without.
    double number(double least, double most) const;
    /// A 16-bit number, or true for 1 and false for 0.
    std::uint16_t flag() const;

    /// Throws `DocumentFailure`: what stands here is not what was expected.
    [[noreturn]] void complain(const std::string& expected) const;

private:
    JsonCursor(const std::string& file, const nlohmann::json* value, nlohmann::json::json_pointer place);

    bool is_whole_within(std::int64_t least, std::int64_t most) const;
    [[noreturn]] void complain_of(const std::string& found, const std::string& expected) const;

    const std::string* file_;
    /// Null for an absent member: `place_` is then the object's place, `absent_key_` what it lacks.
    const nlohmann::json* value_;
    nlohmann::json::json_pointer place_;
    std::string absent_key_;
};

} // namespace zarven::tool

#endif
