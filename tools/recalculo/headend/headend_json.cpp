#include "headend/headend_json.h"

#include <algorithm>

#include "headend/headend_fields.h"
#include "records/json_cursor.h"
#include "records/read.h"
#include "records/write.h"

namespace zarven::tool {

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
    const Document document(file, text);
    if (document.is_object() && !document.has("modules"))
        return read_record<SingleModule, UnknownKeys::refused>(document).module;
    const Headend headend = read_headend(document);
    if (headend.modules.size() != 1)
        JsonCursor(document.file(), document.value()).member("modules").complain("just one module");
    return headend.modules.front();
}

bool tells_price(const std::string& file, const std::string& text) {
    const Document document(file, text);
    if (!document.has("modules"))
        return document.has("price");
    const nlohmann::json& modules = document.value().at("modules");
    return modules.is_array() &&
           std::any_of(modules.begin(), modules.end(),
                       [](const nlohmann::json& module) { return module.contains("price"); });
}

std::string write_headend(const Headend& headend) {
    const std::size_t levels_of_lists = 2;
    return json_text(headend, {levels_of_lists}) + "\n";
}

const RecordDescription& headend_description() {
    return description_of<Headend>();
}

} // namespace zarven::tool
