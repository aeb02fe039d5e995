// From a record to the text of a document. For the one source of a kind of document: its templates take long
// to compile.

#ifndef RECALCULO_RECORDS_WRITE_H
#define RECALCULO_RECORDS_WRITE_H

#include <stdexcept>
#include <string>

#include "records/fields.h"
#include "records/json_writer.h"

namespace zarven::tool {

/// Tells a value.
template <class Value> void tell(JsonWriter& json, const Value& value);

/// Tells what a record has to tell.
class RecordWriter {
public:
    explicit RecordWriter(JsonWriter& json) : json_(json) {}

    template <class Value>
    void required(const char* key, const Value& value, const char*, Since = Since::the_first_version) {
        json_.key(key);
        tell(json_, value);
    }

    template <class Value> void made(const char* key, const Value& value, const char* meaning) {
        required(key, value, meaning);
    }

    template <class Value> void unless_empty(const char* key, const Value& value, const char* meaning) {
        if (!value.empty())
            required(key, value, meaning);
    }

    void if_true(const char* key, bool value, const char* meaning) {
        if (value)
            required(key, true, meaning);
    }

    template <class Value>
    void where(const Condition& condition, const char* key, const Value& value, const char* meaning,
               Since = Since::the_first_version) {
        if (condition.holds)
            required(key, value, meaning);
    }

    template <class Value>
    void optional(const char* key, const Value& value, const Bare<Value>& fallback, const char* meaning) {
        if (bare(value) != fallback)
            required(key, value, meaning);
    }

    template <class Value>
    void optional(const char* key, const Value& value, const Derived<Bare<Value>>& fallback,
                  const char* meaning) {
        optional(key, value, fallback.value, meaning);
    }

    template <class Value>
    void estimated(const char* key, const Value& value, const Derived<Value>&, const char* meaning) {
        required(key, value, meaning);
    }

    void flag(const char* key, std::uint16_t value, const char* meaning) { optional(key, value, 0, meaning); }

private:
    template <class Value> static const Bare<Value>& bare(const Value& value) {
        if constexpr (is_wrapped<Value>)
            return bare(value.value);
        else
            return value;
    }

    JsonWriter& json_;
};

template <class Value> void tell(JsonWriter& json, const Value& value) {
    if constexpr (is_wrapped<Value>) {
        tell(json, value.value);
    } else if constexpr (IsRecord<Value>::value) {
        json.open('{');
        RecordWriter writer(json);
        Fields<Value>::visit(writer, value);
        json.close('}');
    } else if constexpr (HasWords<Value>::value) {
        json.string(Words<Value>::of(value));
    } else if constexpr (IsOptional<Value>::value) {
        if (value)
            tell(json, *value);
        else
            json.null();
    } else if constexpr (IsList<Value>::value) {
        json.open('[');
        for (const auto& entry : value) {
            json.entry();
            tell(json, entry);
        }
        json.close(']');
    } else {
        json.scalar(value);
    }
}

template <class Value>
std::string json_text(const Value& value, const JsonStyle& style, std::size_t level = 0) {
    JsonWriter json(style, level);
    tell(json, value);
    return json.take();
}

template <class Value> std::string text_on_one_line(const Value& value) {
    return json_text(value, JsonStyle::on_one_line());
}

/// A document as indented JSON with a final line end.
template <class Record> std::string document_text(const Record& record) {
    return json_text(record, {}) + "\n";
}

/// A document with a list that is written entry by entry, in the layout of `document_text`. Between two
/// entries stands a comma.
struct OpenedList {
    /// What stands before the first entry, and after the last.
    std::string begin;
    std::string end;
};

/// Opens the list that the document has under the key, and that is empty there.
template <class Record> OpenedList opened_at(const std::string& key, const Record& record) {
    const std::string text = document_text(record);
    // No line begins within a text.
    const std::string list = "\n  \"" + key + "\": [";
    const std::size_t place = text.find(list + "]");
    if (place == text.npos)
        throw std::logic_error("a document without the empty list \"" + key + "\"");
    return {text.substr(0, place + list.size()), "\n  " + text.substr(place + list.size())};
}

template <class Record> std::string entry_of_opened(const Record& record) {
    return "\n    " + json_text(record, {}, 2);
}

} // namespace zarven::tool

#endif
