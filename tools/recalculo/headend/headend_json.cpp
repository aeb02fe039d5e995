#include "headend/headend_json.h"

#include <fmt/format.h>

#include "headend/headend_fields.h"
#include "records/json_cursor.h"
#include "records/read.h"
#include "records/write.h"

namespace zarven::tool {

namespace {

using nlohmann::ordered_json;

/// A text, a number, true or false, or a list of such with a blank after each comma.
std::string spaced(const ordered_json& value) {
    if (!value.is_array())
        return value.dump();
    std::string entries;
    for (const ordered_json& entry : value)
        entries += (entries.empty() ? "" : ", ") + entry.dump();
    return "[" + entries + "]";
}

/// `{ "key": value, ... }` on one line.
std::string on_one_line(const ordered_json& object) {
    std::string line;
    for (const auto& member : object.items())
        line += fmt::format("{}{}: {}", line.empty() ? "" : ", ", ordered_json(member.key()).dump(),
                            spaced(member.value()));
    return "{ " + line + " }";
}

/// Each record of a list on a line of its own.
std::string on_lines(const ordered_json& value) {
    if (!value.is_array())
        return value.dump();
    std::string lines;
    for (const ordered_json& record : value)
        lines += (lines.empty() ? "\n    " : ",\n    ") + on_one_line(record);
    return "[" + lines + (lines.empty() ? "]" : "\n  ]");
}

} // namespace

void check_kind(const Document& document) {
    const char* expected = "a head-end";
    if (document.has("summary"))
        document.complain("a result, which `recalculo run --json` writes", expected);
    if (document.has("inputs") && !document.has("modules"))
        document.complain("a single module", expected);
}

Headend headend_of(const Document& document) {
    return read_record<Headend, UnknownKeys::refused>(document);
}

Headend read_headend(const Document& document) {
    check_kind(document);
    return headend_of(document);
}

Headend read_headend(const std::string& file, const std::string& text) {
    return read_headend(Document(file, text));
}

Module read_module(const std::string& file, const std::string& text) {
    Document document(file, text);
    if (document.is_object() && !document.has("modules")) {
        document.value().emplace("mac", "");
        return read_record<Module, UnknownKeys::refused>(document);
    }
    const Headend headend = read_headend(document);
    if (headend.modules.size() != 1)
        JsonCursor(document.file(), document.value()).member("modules").complain("just one module");
    return headend.modules.front();
}

std::string write_headend(const Headend& headend) {
    const ordered_json json = json_of(headend);
    std::string members;
    for (const auto& member : json.items())
        members += fmt::format("{}\n  \"{}\": {}", members.empty() ? "" : ",", member.key(),
                               on_lines(member.value()));
    return "{" + members + "\n}\n";
}

const RecordDescription& headend_description() {
    return description_of<Headend>();
}

} // namespace zarven::tool
