// From a record to JSON. For the one source of a kind of document: the library's header takes long to
// compile.

#ifndef RECALCULO_RECORDS_WRITE_H
#define RECALCULO_RECORDS_WRITE_H

#include <nlohmann/json.hpp>

#include "records/fields.h"
#include "records/json_layout.h"

namespace zarven::tool {

template <class Value> nlohmann::ordered_json json_of(const Value& value);

/// Collects what a record has to tell.
class RecordWriter {
public:
    template <class Value>
    void required(const char* key, const Value& value, const char*, Since = Since::the_first_version) {
        object_[key] = json_of(value);
    }

    template <class Value> void unless_empty(const char* key, const Value& value, const char*) {
        if (!value.empty())
            object_[key] = json_of(value);
    }

    void if_true(const char* key, bool value, const char*) {
        if (value)
            object_[key] = true;
    }

    template <class Value>
    void where(const Condition& condition, const char* key, const Value& value, const char*,
               Since = Since::the_first_version) {
        if (condition.holds)
            object_[key] = json_of(value);
    }

    template <class Value>
    void optional(const char* key, const Value& value, const Bare<Value>& fallback, const char*) {
        if (bare(value) != fallback)
            object_[key] = json_of(value);
    }

    template <class Value>
    void optional(const char* key, const Value& value, const Derived<Bare<Value>>& fallback,
                  const char* meaning) {
        optional(key, value, fallback.value, meaning);
    }

    template <class Value>
    void estimated(const char* key, const Value& value, const Derived<Value>&, const char*) {
        object_[key] = json_of(value);
    }

    void flag(const char* key, std::uint16_t value, const char* meaning) { optional(key, value, 0, meaning); }

    nlohmann::ordered_json take() { return std::move(object_); }

private:
    template <class Value> static const Bare<Value>& bare(const Value& value) {
        if constexpr (is_wrapped<Value>)
            return bare(value.value);
        else
            return value;
    }

    nlohmann::ordered_json object_ = nlohmann::ordered_json::object();
};

template <class Value> nlohmann::ordered_json json_of(const Value& value) {
    if constexpr (is_wrapped<Value>) {
        return json_of(value.value);
    } else if constexpr (IsRecord<Value>::value) {
        RecordWriter writer;
        Fields<Value>::visit(writer, value);
        return writer.take();
    } else if constexpr (HasWords<Value>::value) {
        return Words<Value>::of(value);
    } else if constexpr (IsOptional<Value>::value) {
        return value ? json_of(*value) : nlohmann::ordered_json();
    } else if constexpr (IsList<Value>::value) {
        nlohmann::ordered_json list = nlohmann::ordered_json::array();
        for (const auto& entry : value)
            list.push_back(json_of(entry));
        return list;
    } else {
        return value;
    }
}

/// A document as indented JSON with a final line end.
template <class Record> std::string document_text(const Record& record) {
    return escaped_for_terminals(json_of(record).dump(2)) + "\n";
}

} // namespace zarven::tool

#endif
