// Neighbours that say the same share a row.

#include "records/key_tables.h"

#include <cctype>
#include <cstdint>
#include <limits>
#include <utility>
#include <vector>

#include <fmt/format.h>

namespace zarven::tool {

namespace {

/// A table of rows of Markdown: the keys, and what stands in the other columns.
class Table {
public:
    explicit Table(std::string heading) : text_(std::move(heading)) {}

    void add(const std::string& key, const std::string& others) {
        if (!keys_.empty() && others != others_)
            end_row();
        keys_ += fmt::format("{}`{}`", keys_.empty() ? "" : ", ", key);
        others_ = others;
    }

    std::string text() {
        if (!keys_.empty())
            end_row();
        return text_;
    }

private:
    void end_row() {
        text_ += fmt::format("| {} | {} |\n", keys_, others_);
        keys_.clear();
    }

    std::string text_;
    std::string keys_;
    std::string others_;
};

/// As it stands within a sentence: a word in capitals keeps them.
std::string uncapitalized(std::string text) {
    const auto is = [&text](std::size_t index, int (*kind)(int)) {
        return index < text.size() && kind(static_cast<unsigned char>(text[index])) != 0;
    };
    if (is(0, std::isupper) && !is(1, std::isupper))
        text[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(text[0])));
    return text;
}

std::string fallback_of(const FieldDescription& field) {
    if (field.is_required)
        return "required";
    if (!field.fallback_words.empty())
        return field.is_fallback_key ? "`" + field.fallback_words + "`" : field.fallback_words;
    return field.fallback.empty() || field.fallback == "\"\"" ? "empty" : field.fallback;
}

/// Of a number or of those in a list, unless it is the one that most have.
std::string range_of(const ValueDescription& value) {
    if (value.kind == ValueKind::list)
        return range_of(value.entry.front());
    if (value.kind != ValueKind::number || !value.most ||
        (value.least == 0 && *value.most == std::numeric_limits<std::uint16_t>::max()))
        return "";
    return fmt::format(", {} to {}", value.least, *value.most);
}

std::string others_of(const FieldDescription& field) {
    const char* list =
        field.value.kind == ValueKind::list && field.value.entry.front().record == nullptr ? "list: " : "";
    return fmt::format("{} | {}{}{}", fallback_of(field), list, uncapitalized(field.meaning),
                       range_of(field.value));
}

constexpr const char* key_heading = "| key | default | meaning |\n|---|---|---|\n";

std::string words_of(const std::vector<std::string>& words) {
    std::string list;
    for (const std::string& word : words)
        list += fmt::format("{}`{}`", list.empty() ? "" : ", ", word);
    return list;
}

/// What kind of value it is, in words.
std::string kind_of(const ValueDescription& value) {
    switch (value.kind) {
    case ValueKind::text:
        return "text";
    case ValueKind::truth:
        return "true or false";
    case ValueKind::always_true:
        return "true";
    case ValueKind::number:
    case ValueKind::flag:
        return "number";
    case ValueKind::word:
        return words_of(value.words);
    case ValueKind::record:
        return fmt::format("**{}**", value.record->name);
    case ValueKind::list:
        break;
    }
    return "list of " + (value.entry.front().kind == ValueKind::text     ? "texts"
                         : value.entry.front().kind == ValueKind::number ? "numbers"
                                                                         : kind_of(value.entry.front()));
}

std::string member_table(const RecordDescription& record) {
    Table table("| member | value | meaning |\n|---|---|---|\n");
    for (const FieldDescription& field : record.fields)
        table.add(field.key,
                  fmt::format("{}{} | {}", kind_of(field.value), field.value.may_be_null ? " or null" : "",
                              uncapitalized(field.meaning)));
    return table.text();
}

} // namespace

std::string key_table(const RecordDescription& record) {
    return key_table_of_others(record, {});
}

std::string key_table_of_others(const RecordDescription& record, const RecordDescription& known) {
    Table table(key_heading);
    for (const FieldDescription& field : record.fields) {
        const FieldDescription* same = known.field(field.key);
        if (same == nullptr || others_of(*same) != others_of(field))
            table.add(field.key, others_of(field));
    }
    return table.text();
}

std::string member_tables(const RecordDescription& document) {
    std::string text = member_table(document);
    for (const RecordDescription* record : records_within(document))
        text += fmt::format("\n**{}**: {}.\n\n{}", record->name, uncapitalized(record->meaning),
                            member_table(*record));
    return text;
}

} // namespace zarven::tool
