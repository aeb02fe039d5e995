#include "records/json_layout.h"

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

} // namespace

std::string laid_out(const ordered_json& document, const JsonLayout& layout) {
    return LayoutMaker(layout).text(document, 0, 0) + "\n";
}

} // namespace zarven::tool
