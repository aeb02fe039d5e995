// What there is to know of a record, as plain values: what the schemas and the manual are made of.

#ifndef RECALCULO_DESCRIPTION_H
#define RECALCULO_DESCRIPTION_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "records/fields.h"

namespace zarven::tool {

struct RecordDescription;

enum class ValueKind {
    text,
    truth,
    /// True wherever it stands.
    always_true,
    number,
    /// A number of 16 bits, or true or false.
    flag,
    word,
    record,
    list,
};

struct ValueDescription {
    ValueKind kind = ValueKind::text;
    bool may_be_null = false;
    /// Of a number; without a most, as large as memory allows.
    std::int64_t least = 0;
    std::optional<std::int64_t> most;
    /// Of a number that has to be just one.
    std::optional<std::int64_t> the_one;
    std::vector<std::string> words;
    /// If the schema tells the words in one place.
    std::string words_name;
    const RecordDescription* record = nullptr;
    /// Of a list: what stands in it.
    std::vector<ValueDescription> entry;
    /// Of a list, its entries; of a text, whether it may be empty.
    std::size_t fewest = 0;
    std::optional<std::size_t> most_entries;
};

struct FieldDescription {
    std::string key;
    ValueDescription value;
    std::string meaning;
    /// Always there, so that a reader may rely on it.
    bool is_required = false;
    /// What it is where it is absent: JSON, or words for people, which may be the key of another field.
    std::string fallback;
    std::string fallback_words;
    bool is_fallback_key = false;
    /// What shows in a document whether it is there.
    std::optional<Condition> condition;
};

struct RecordDescription {
    std::string name;
    std::string meaning;
    std::vector<FieldDescription> fields;
    /// Null if there is no such field.
    const FieldDescription* field(const std::string& key) const;

    std::vector<std::string> keys() const;
};

/// The records that stand within a record, and those within these, each once, in the order of their coming.
std::vector<const RecordDescription*> records_within(const RecordDescription& record);

} // namespace zarven::tool

#endif
