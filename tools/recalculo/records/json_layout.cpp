#include "records/json_layout.h"

#include <stdexcept>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace zarven::tool {

namespace {

using nlohmann::ordered_json;

constexpr std::size_t indent_of_level = 2;

std::string line_begin(std::size_t level) {
    return "\n" + std::string(level * indent_of_level, ' ');
}

/// What stands before a member of an object or an element of a list.
std::string label(const ordered_json& whole, const std::string& key) {
    return whole.is_object() ? ordered_json(key).dump() + ": " : "";
}

std::string on_one_line(const ordered_json& value) {
    if (!value.is_structured() || value.empty())
        return value.dump();
    std::string inside;
    for (const auto& member : value.items())
        inside += (inside.empty() ? "" : ", ") + label(value, member.key()) + on_one_line(member.value());
    return value.is_object() ? "{ " + inside + " }" : "[" + inside + "]";
}

class LayoutMaker {
public:
    explicit LayoutMaker(const JsonLayout& layout) : layout_(layout) {}

    /// A value on its level, behind so many characters.
    std::string text(const ordered_json& value, std::size_t level, std::size_t before) const {
        if (!value.is_structured() || value.empty())
            return value.dump();
        if (level < layout_.levels_on_lines)
            return on_lines(value, level);
        const std::string line = on_one_line(value);
        return before + line.size() + std::string(",").size() <= layout_.most_columns
                   ? line
                   : on_lines(value, level);
    }

private:
    std::string on_lines(const ordered_json& value, std::size_t level) const {
        std::string inside;
        for (const auto& member : value.items()) {
            const std::string begin = label(value, member.key());
            inside += (inside.empty() ? "" : ",") + line_begin(level + 1) + begin +
                      text(member.value(), level + 1, (level + 1) * indent_of_level + begin.size());
        }
        inside += line_begin(level);
        return value.is_object() ? "{" + inside + "}" : "[" + inside + "]";
    }

    const JsonLayout& layout_;
};

/// All on lines of their own, as `document_text` does it.
constexpr JsonLayout spread{std::numeric_limits<std::size_t>::max()};

} // namespace

std::string escaped_for_terminals(const std::string& text) {
    std::string escaped;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const auto byte = [&](std::size_t ahead) {
            return at + ahead < text.size() ? static_cast<unsigned char>(text[at + ahead]) : 0u;
        };
        if (byte(0) == 0x7F) {
            escaped += "\\u007f";
        } else if (byte(0) == 0xC2 && byte(1) < 0xA0) { // U+0080 to U+009F
            escaped += fmt::format("\\u{:04x}", byte(1));
            at += 1;
        } else if (byte(0) == 0xE2 && ((byte(1) == 0x80 && byte(2) >= 0xA8 && byte(2) <= 0xAE) ||
                                       (byte(1) == 0x81 && byte(2) >= 0xA6 && byte(2) <= 0xA9))) {
            escaped += fmt::format("\\u{:04x}", 0x2000 + ((byte(1) & 0x3F) << 6) + (byte(2) & 0x3F));
            at += 2;
        } else {
            escaped += text[at];
        }
    }
    return escaped;
}

std::string laid_out(const ordered_json& document, const JsonLayout& layout) {
    return escaped_for_terminals(LayoutMaker(layout).text(document, 0, 0)) + "\n";
}

OpenedList opened_at(const char* key, const ordered_json& document) {
    OpenedList list;
    bool is_open = false;
    for (const auto& member : document.items()) {
        std::string& text = is_open ? list.end : list.begin;
        text += (is_open || !text.empty() ? "," : "") + line_begin(1) + label(document, member.key());
        if (member.key() == key) {
            text += "[";
            is_open = true;
            list.end = line_begin(1) + "]";
        } else {
            text += LayoutMaker(spread).text(member.value(), 1, 0);
        }
    }
    if (!is_open)
        throw std::logic_error(fmt::format("a document without the list \"{}\"", key));
    return {"{" + escaped_for_terminals(list.begin), escaped_for_terminals(list.end) + "\n}\n"};
}

std::string entry_of_opened(const ordered_json& entry) {
    return line_begin(2) + escaped_for_terminals(LayoutMaker(spread).text(entry, 2, 0));
}

} // namespace zarven::tool
