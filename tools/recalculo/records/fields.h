// How a record is described: each of its fields told once. Beside a struct stands a specialization of
// `Fields`, whose `visit` tells a visitor the fields in the order in which they are written:
//
//     template <> struct Fields<Usage> {
//         static constexpr const char* name = "usage";
//         static constexpr const char* meaning = "Transcoders of one kind";
//         template <class Visitor, class Record> static void visit(Visitor& visit, Record& usage) {
//             visit.required("used", usage.used, "In use");
//             visit.required("max", usage.max, "All");
//         }
//     };
//
// Three visitors make everything of that: RecordReader (read.h) fills a record from JSON, RecordWriter
// (write.h) makes JSON of it, and FieldLister (describe.h) lists what there is to know of it, of which the
// JSON Schemas and the tables of keys in the manual are made. All take these calls:
//
//     required(key, value, meaning)            always written; a reader misses it, unless it is of a later
//                                              version
//     made(key, value, meaning)                always written, and never read: it follows from other fields
//     unless_empty(key, value, meaning)        a text or list, written where there is any
//     if_true(key, value, meaning)             written where it is true
//     where(condition, key, value, meaning)    written where the condition holds
//     optional(key, value, fallback, meaning)  for what people write: may be absent, and is written where it
//                                              is not the fallback, which is a value, or `Derived` from the
//                                              fields before it
//     estimated(key, value, derived, meaning)  the same, but always written: it may be an estimate to be
//                                              corrected
//     flag(key, value, meaning)                0 by default; true stands for 1, and false for 0
//
// Meanings are told in the manual and, without the backquotes, in the schema. A value is a text, a number,
// true or false, a record, an enumeration with `Words`, a list or optional of such, or one of the wrappers
// below. No document that is read has an optional or an array so far: RecordReader refuses to compile with
// these.

#ifndef RECALCULO_FIELDS_H
#define RECALCULO_FIELDS_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

namespace zarven::tool {

template <class Record> struct Fields;

/// The words that an enumeration is written as. A specialization has `name`, which is empty unless the schema
/// is to tell the words in one place, `all()` and `of(value)`.
template <class Value> struct Words;

template <class Enum> struct Word {
    Enum value;
    const char* word;
};

/// `Words` of a table: `struct Words<Verdict> : WordTable<Verdict, verdict_words>`.
template <class Enum, const auto& table> struct WordTable {
    static constexpr const char* name = "";

    static std::vector<std::string> all() {
        std::vector<std::string> words;
        for (const Word<Enum>& each : table)
            words.emplace_back(each.word);
        return words;
    }

    static const char* of(Enum value) {
        for (const Word<Enum>& each : table)
            if (each.value == value)
                return each.word;
        throw std::logic_error("a value that has no word");
    }

    /// The value of the word at this place of `all()`.
    static Enum at(std::size_t place) { return table[place].value; }
};

// ---- What a type does not tell of a value --------------------------------------------------------------

/// A number that memory alone limits, whatever the width of its type on this machine.
template <class Value> struct Counted { Value& value; };

/// A text or list that is never empty. The reader takes an empty one: its user tells what is wrong with it.
template <class Value> struct Filled { Value& value; };

/// A list with no more entries than that.
template <class Value> struct Limited {
    Value& value;
    std::size_t most;
};

/// A number that has to be this one. The reader takes others, as `Filled`.
template <class Value> struct Fixed {
    Value& value;
    std::remove_const_t<Value> the_one;
};

/// A number of 0 and more that ends before its type does.
template <class Value> struct UpTo {
    Value& value;
    std::remove_const_t<Value> most;
};

template <class Value> Counted<Value> count(Value& value) {
    return {value};
}

template <class Value> Counted<const Value> count(const Value&& value) {
    return {value};
}

template <class Value> Filled<Value> filled(Value& value) {
    return {value};
}

template <class Value> Limited<Value> limited(Value& value, std::size_t most) {
    return {value, most};
}

template <class Value> Fixed<Value> fixed(Value& value, std::remove_const_t<Value> the_one) {
    return {value, the_one};
}

template <class Value> UpTo<Value> up_to(Value& value, std::remove_const_t<Value> most) {
    return {value, most};
}

template <class Value> struct Unwrapped { using Type = std::remove_const_t<Value>; };
template <class Value> struct Unwrapped<Counted<Value>> : Unwrapped<Value> {};
template <class Value> struct Unwrapped<Filled<Value>> : Unwrapped<Value> {};
template <class Value> struct Unwrapped<Limited<Value>> : Unwrapped<Value> {};
template <class Value> struct Unwrapped<Fixed<Value>> : Unwrapped<Value> {};
template <class Value> struct Unwrapped<UpTo<Value>> : Unwrapped<Value> {};

/// The type of a value without its wrapper.
template <class Value> using Bare = typename Unwrapped<std::remove_const_t<Value>>::Type;

// ---- When a field is there -----------------------------------------------------------------------------

/// Whether results of earlier versions have a field.
enum class Since { the_first_version, a_later_version };

/// Where a field stands, and what a document shows of that.
struct Condition {
    bool holds;
    /// A member before it tells by its value: one of some words, or, without any, true. If no key tells, the
    /// field may be absent whatever the others are.
    const char* key = nullptr;
    std::vector<const char*> words = {};
    /// Fields with the same group stand together or not at all.
    const char* group = nullptr;
};

inline Condition if_so(const char* key, bool value) {
    return {value, key};
}

/// The member is one of these.
template <class Enum, class... Enums> Condition if_one_of(const char* key, Enum value, Enums... wanted) {
    return {((value == wanted) || ...), key, {Words<Enum>::of(wanted)...}};
}

/// What a value is where it is not told. Words say it to people; it is the value of a field before it if
/// `key`.
template <class Value> struct Derived {
    Value value;
    const char* words;
    bool is_key;
};

template <class Value> Derived<Value> same_as(const char* key, const Value& value) {
    return {value, key, true};
}

template <class Value> Derived<Value> derived(const char* words, const Value& value) {
    return {value, words, false};
}

// ---- Kinds of values -----------------------------------------------------------------------------------

template <class Value, class = void> struct IsRecord : std::false_type {};
template <class Value>
struct IsRecord<Value, std::void_t<decltype(Fields<Value>::meaning)>> : std::true_type {};

template <class Value, class = void> struct HasWords : std::false_type {};
template <class Value> struct HasWords<Value, std::void_t<decltype(Words<Value>::name)>> : std::true_type {};

template <class Value> struct IsList : std::false_type {};
template <class Entry> struct IsList<std::vector<Entry>> : std::true_type {};
template <class Entry, std::size_t size> struct IsList<std::array<Entry, size>> : std::true_type {};

template <class Value> struct IsOptional : std::false_type {};
template <class Value> struct IsOptional<std::optional<Value>> : std::true_type {};

template <class Value>
inline constexpr bool is_wrapped = !std::is_same_v<Bare<Value>, std::remove_const_t<Value>>;

} // namespace zarven::tool

#endif
