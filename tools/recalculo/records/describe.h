// From the fields of a record to its description.

#ifndef RECALCULO_DESCRIBE_H
#define RECALCULO_DESCRIBE_H

#include <limits>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "records/description.h"
#include "records/fields.h"

namespace zarven::tool {

template <class Record> const RecordDescription& description_of();

/// What stands at a place of a type, with or without a wrapper.
template <class Value> struct Described {
    static ValueDescription of(const Value&) { return of_type(); }

    static ValueDescription of_type() {
        ValueDescription description;
        if constexpr (IsRecord<Value>::value) {
            description.kind = ValueKind::record;
            description.record = &description_of<Value>();
        } else if constexpr (HasWords<Value>::value) {
            description.kind = ValueKind::word;
            description.words = Words<Value>::all();
            description.words_name = Words<Value>::name;
        } else if constexpr (std::is_same_v<Value, bool>) {
            description.kind = ValueKind::truth;
        } else if constexpr (std::is_integral_v<Value>) {
            static_assert(sizeof(Value) <= 4, "a wider number is one that memory limits: count()");
            description.kind = ValueKind::number;
            description.least = std::numeric_limits<Value>::min();
            description.most = std::numeric_limits<Value>::max();
        } else {
            static_assert(std::is_convertible_v<Value, std::string_view>, "a kind of value that has no JSON");
        }
        return description;
    }
};

template <class Value> struct Described<std::vector<Value>> {
    static ValueDescription of(const std::vector<Value>&) { return of_type(); }

    static ValueDescription of_type() {
        ValueDescription description;
        description.kind = ValueKind::list;
        description.entry = {Described<Value>::of_type()};
        return description;
    }
};

template <class Value, std::size_t size> struct Described<std::array<Value, size>> {
    static ValueDescription of(const std::array<Value, size>&) {
        ValueDescription description = Described<std::vector<Value>>::of_type();
        description.fewest = size;
        description.most_entries = size;
        return description;
    }
};

template <class Value> struct Described<std::optional<Value>> {
    static ValueDescription of(const std::optional<Value>&) {
        ValueDescription description = Described<Value>::of_type();
        description.may_be_null = true;
        return description;
    }
};

template <class Value> struct Described<Counted<Value>> {
    static ValueDescription of(const Counted<Value>&) {
        ValueDescription description;
        description.kind = ValueKind::number;
        description.may_be_null = IsOptional<std::remove_const_t<Value>>::value;
        return description;
    }
};

template <class Value> struct Described<Filled<Value>> {
    static ValueDescription of(const Filled<Value>& filled) {
        ValueDescription description = Described<std::remove_const_t<Value>>::of(filled.value);
        description.fewest = 1;
        return description;
    }
};

template <class Value> struct Described<Limited<Value>> {
    static ValueDescription of(const Limited<Value>& limited) {
        ValueDescription description = Described<std::remove_const_t<Value>>::of(limited.value);
        description.most_entries = limited.most;
        return description;
    }
};

template <class Value> struct Described<Fixed<Value>> {
    static ValueDescription of(const Fixed<Value>& fixed) {
        ValueDescription description = Described<std::remove_const_t<Value>>::of(fixed.value);
        description.the_one = fixed.the_one;
        return description;
    }
};

template <class Value> struct Described<UpTo<Value>> {
    static ValueDescription of(const UpTo<Value>& up_to) {
        ValueDescription description = Described<std::remove_const_t<Value>>::of(up_to.value);
        description.least = 0;
        description.most = up_to.most;
        return description;
    }
};

/// Collects what a record tells of its fields.
class FieldLister {
public:
    explicit FieldLister(RecordDescription& record) : record_(record) {}

    template <class Value>
    void required(const char* key, const Value& value, const char* meaning,
                  Since = Since::the_first_version) {
        FieldDescription field = described(key, value, meaning);
        field.is_required = true;
        record_.fields.push_back(std::move(field));
    }

    template <class Value> void made(const char* key, const Value& value, const char* meaning) {
        required(key, value, meaning);
    }

    template <class Value> void unless_empty(const char* key, const Value& value, const char* meaning) {
        record_.fields.push_back(described(key, value, meaning));
    }

    void if_true(const char* key, bool value, const char* meaning) {
        FieldDescription field = described(key, value, meaning);
        field.value.kind = ValueKind::always_true;
        record_.fields.push_back(std::move(field));
    }

    template <class Value>
    void where(const Condition& condition, const char* key, const Value& value, const char* meaning,
               Since = Since::the_first_version) {
        FieldDescription field = described(key, value, meaning);
        field.condition = condition;
        record_.fields.push_back(std::move(field));
    }

    template <class Value>
    void optional(const char* key, const Value& value, const Bare<Value>& fallback, const char* meaning) {
        FieldDescription field = described(key, value, meaning);
        field.fallback = json_of_fallback(fallback);
        record_.fields.push_back(std::move(field));
    }

    template <class Value>
    void optional(const char* key, const Value& value, const Derived<Bare<Value>>& fallback,
                  const char* meaning) {
        FieldDescription field = described(key, value, meaning);
        field.fallback_words = fallback.words;
        field.is_fallback_key = fallback.is_key;
        record_.fields.push_back(std::move(field));
    }

    template <class Value>
    void estimated(const char* key, const Value& value, const Derived<Value>& fallback, const char* meaning) {
        optional(key, value, fallback, meaning);
    }

    void flag(const char* key, std::uint16_t value, const char* meaning) {
        FieldDescription field = described(key, value, meaning);
        field.value.kind = ValueKind::flag;
        field.fallback = "0";
        record_.fields.push_back(std::move(field));
    }

private:
    template <class Value>
    static FieldDescription described(const char* key, const Value& value, const char* meaning) {
        FieldDescription field;
        field.key = key;
        field.value = Described<Value>::of(value);
        field.meaning = meaning;
        return field;
    }

    template <class Value> static std::string json_of_fallback(const Value& fallback) {
        if constexpr (std::is_same_v<Value, bool>)
            return fallback ? "true" : "false";
        else if constexpr (std::is_integral_v<Value>)
            return std::to_string(fallback);
        else
            return '"' + std::string(fallback) + '"';
    }

    RecordDescription& record_;
};

/// The description of a record; made once.
template <class Record> const RecordDescription& description_of() {
    static const RecordDescription description = [] {
        RecordDescription made{Fields<Record>::name, Fields<Record>::meaning, {}};
        FieldLister lister(made);
        Record record{};
        Fields<Record>::visit(lister, record);
        return made;
    }();
    return description;
}

} // namespace zarven::tool

#endif
