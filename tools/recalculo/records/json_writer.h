// JSON text, written as its values are told: documents of up to some megabytes, without a tree of them in
// between.

#ifndef RECALCULO_JSON_WRITER_H
#define RECALCULO_JSON_WRITER_H

#include <cstddef>
#include <limits>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include <fmt/format.h>

namespace zarven::tool {

struct JsonStyle {
    /// The values of so many levels have a line for each entry, unless they are empty; the others stand on
    /// one.
    std::size_t levels_on_lines = std::numeric_limits<std::size_t>::max();
    /// No blank that is not needed.
    bool is_dense = false;

    static constexpr JsonStyle on_one_line() { return {0, true}; }
};

/// What is told of a list or an object stands between `open` and `close`. Characters that a terminal would
/// obey are escaped: controls, and those that end a line or turn it round. It says the same as without.
class JsonWriter {
public:
    explicit JsonWriter(const JsonStyle& style, std::size_t level = 0) : style_(style), level_(level) {}

    void open(char bracket);
    void close(char bracket);
    /// Comes before each member of an object, and before each entry of a list.
    void key(std::string_view name);
    void entry();

    void null() { text_ += "null"; }
    void string(std::string_view value);

    template <class Value> void scalar(const Value& value) {
        if constexpr (std::is_same_v<Value, bool>)
            text_ += value ? "true" : "false";
        else if constexpr (std::is_integral_v<Value>)
            text_.append(fmt::format_int(value).c_str());
        else
            string(value);
    }

    std::string take() { return std::move(text_); }

private:
    bool is_on_lines(std::size_t level) const { return level < style_.levels_on_lines; }
    void begin_line(std::size_t level);
    void next(bool is_member);

    JsonStyle style_;
    std::size_t level_;
    /// Nothing stands in the value that was opened last.
    bool is_empty_ = true;
    std::string text_;
};

} // namespace zarven::tool

#endif
