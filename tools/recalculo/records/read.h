// From JSON to a record. For the one source of a kind of document: the library's header takes long to
// compile.

#ifndef RECALCULO_RECORDS_READ_H
#define RECALCULO_RECORDS_READ_H

#include <cstdint>
#include <string>
#include <type_traits>
#include <vector>

#include "records/describe.h"
#include "records/document.h"
#include "records/fields.h"
#include "records/json_cursor.h"

namespace zarven::tool {

/// Whether keys that a record does not know are an error: in what people write, where a slip of the pen
/// should not pass unseen. What programs write may come from a later version that tells more.
enum class UnknownKeys { refused, passed_over };

/// Fills a record from an object.
template <UnknownKeys unknown> class RecordReader {
public:
    explicit RecordReader(const JsonCursor& object) : object_(object) {}

    template <class Value>
    void required(const char* key, Value&& value, const char*, Since since = Since::the_first_version) {
        const JsonCursor place = object_.member(key);
        if (since == Since::the_first_version || place.present())
            read(place, value);
    }

    template <class Value> void made(const char*, const Value&, const char*) {}

    template <class Value> void unless_empty(const char* key, Value& value, const char*) {
        read_if_present(key, value);
    }

    void if_true(const char* key, bool& value, const char*) { read_if_present(key, value); }

    template <class Value>
    void where(const Condition& condition, const char* key, Value&& value, const char*,
               Since since = Since::the_first_version) {
        if (since == Since::a_later_version)
            read_if_present(key, value);
        else if (condition.holds)
            read(object_.member(key), value);
    }

    template <class Value>
    void optional(const char* key, Value&& value, const Bare<std::remove_reference_t<Value>>& fallback,
                  const char*) {
        const JsonCursor place = object_.member(key);
        if (place.present())
            read(place, value);
        else
            bare(value) = fallback;
    }

    template <class Value>
    void optional(const char* key, Value&& value,
                  const Derived<Bare<std::remove_reference_t<Value>>>& fallback, const char* meaning) {
        optional(key, value, fallback.value, meaning);
    }

    template <class Value>
    void estimated(const char* key, Value& value, const Derived<Value>& estimate, const char* meaning) {
        optional(key, value, estimate.value, meaning);
    }

    void flag(const char* key, std::uint16_t& value, const char*) {
        const JsonCursor place = object_.member(key);
        value = place.present() ? place.flag() : std::uint16_t{0};
    }

    template <class Record> static void read_record(const JsonCursor& place, Record& record) {
        if constexpr (unknown == UnknownKeys::refused)
            place.check_keys(description_of<Record>());
        else
            place.check_object();
        RecordReader reader(place);
        Fields<Record>::visit(reader, record);
    }

private:
    template <class Value> void read_if_present(const char* key, Value& value) {
        const JsonCursor place = object_.member(key);
        if (place.present())
            read(place, value);
    }

    template <class Value> static Bare<Value>& bare(Value& value) {
        if constexpr (is_wrapped<Value>)
            return bare(value.value);
        else
            return value;
    }

    template <class Value> static void read(const JsonCursor& place, Filled<Value>& filled) {
        read(place, filled.value);
    }
    template <class Value> static void read(const JsonCursor& place, Fixed<Value>& fixed) {
        read(place, fixed.value);
    }
    template <class Value> static void read(const JsonCursor& place, UpTo<Value>& up_to) {
        up_to.value = static_cast<Value>(place.whole(0, up_to.most));
    }
    /// As many as there can be of anything.
    template <class Value> static void read(const JsonCursor& place, Counted<Value>& counted) {
        counted.value = place.whole<std::uint32_t>();
    }
    template <class Value> static void read(const JsonCursor& place, Limited<Value>& limited) {
        read_list(place.elements(limited.most), limited.value);
    }
    template <class Entry> static void read(const JsonCursor& place, std::vector<Entry>& list) {
        read_list(place.elements(), list);
    }
    static void read(const JsonCursor& place, std::string& text) { text = place.text(); }
    static void read(const JsonCursor& place, bool& truth) { truth = place.boolean(); }
    template <class Value> static void read(const JsonCursor& place, Value& value) {
        if constexpr (IsRecord<Value>::value) {
            read_record(place, value);
        } else if constexpr (HasWords<Value>::value) {
            value = Words<Value>::at(place.word(Words<Value>::all()));
        } else {
            static_assert(std::is_integral_v<Value>,
                          "only texts, words, numbers, truths, records and vectors are read");
            value = place.whole<Value>();
        }
    }

    template <class Entry>
    static void read_list(const std::vector<JsonCursor>& places, std::vector<Entry>& list) {
        for (const JsonCursor& place : places) {
            list.emplace_back();
            read(place, list.back());
        }
    }

    const JsonCursor& object_;
};

/// Reads a document as a record. Throws `DocumentFailure`.
template <class Record, UnknownKeys unknown> Record read_record(const Document& document) {
    Record record;
    RecordReader<unknown>::read_record(JsonCursor(document.file(), document.value()), record);
    return record;
}

} // namespace zarven::tool

#endif
