// A name that an object lacks would be looked for in the objects around it, so each object sets all of its
// names, and `false` stands for nothing. The templates escape every text; here they lose what no page can
// show.

#include "report/page/page_frame.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include <fmt/format.h>

#include "base/utf8.h"
#include "report/page/page_files.h"
#include "report/service_marks.h"

namespace zarven::tool {

using kainjow::mustache::data;
using kainjow::mustache::list;

static list heading(const std::vector<std::string>& names) {
    list entries;
    for (const std::string& name : names) {
        data entry;
        entry["follows"] = !entries.empty();
        entry["name"] = printable(name);
        entries.push_back(entry);
    }
    return entries;
}

std::string framed(const PageFrame& frame, const char* content, data facts) {
    facts["style_hash"] = page_style_hash;
    facts["script_hash"] = page_script_hash;
    facts["style"] = page_style;
    facts["script"] = page_script;
    facts["content"] = content;
    facts["title"] = printable(frame.title);
    facts["skip"] = frame.skip;
    facts["eyebrow"] = frame.eyebrow;
    facts["names"] = heading(frame.names);
    facts["verdict"] = frame.verdict;
    facts["good"] = frame.is_good;
    facts["tiles"] = frame.tiles;
    facts["sections"] = frame.sections;
    facts["audits"] = frame.audits;
    facts["footer"] = frame.footer;
    kainjow::mustache::mustache page{page_frame_template};
    std::string text = page.render(facts);
    if (!page.is_valid())
        throw std::logic_error("the template of the page: " + page.error_message());
    return text;
}

data tile(const std::string& label, const std::string& figure, const std::string& note, data share) {
    data entry;
    entry["label"] = label;
    entry["figure"] = figure;
    entry["note"] = text_or_nothing(note);
    entry["share"] = std::move(share);
    return entry;
}

data section_link(const char* anchor, const char* title, data number) {
    data entry;
    entry["anchor"] = anchor;
    entry["title"] = title;
    entry["number"] = std::move(number);
    return entry;
}

void add_audit(PageFrame& frame, const char* anchor, const char* title,
               const std::vector<std::string>& warnings) {
    if (warnings.empty())
        return;
    list entries;
    for (const std::string& warning : warnings)
        entries.emplace_back(printable(warning));
    data audit;
    audit["anchor"] = anchor;
    audit["title"] = title;
    audit["warnings"] = entries;
    frame.audits.push_back(audit);
    link_section(frame.sections, anchor, title, warnings.size());
}

void link_section(list& sections, const char* anchor, const char* title, std::size_t number) {
    if (number != 0)
        sections.push_back(section_link(anchor, title, grouped(number)));
}

std::string grouped(std::uint64_t number) {
    std::string digits = std::to_string(number);
    for (std::size_t place = digits.size(); place > 3; place -= 3)
        digits.insert(place - 3, ",");
    return digits;
}

std::string counted(std::size_t number, std::string_view one, std::string_view many) {
    return fmt::format("{} {}", grouped(number), number == 1 ? one : many);
}

double share(std::uint64_t used, std::uint64_t max) {
    return max == 0 ? 0 : std::min(100.0, 100.0 * static_cast<double>(used) / static_cast<double>(max));
}

std::string share_text(std::uint64_t used, std::uint64_t max) {
    return fmt::format("{:.2f}", share(used, max));
}

std::string percentage(std::uint64_t used, std::uint64_t max) {
    return max == 0 ? "–"
                    : fmt::format("{:.1f} %", 100.0 * static_cast<double>(used) / static_cast<double>(max));
}

data text_or_nothing(const std::string& text) {
    return text.empty() ? data(false) : data(text);
}

list tags_of(const ServiceResult& service) {
    list tags;
    for (const std::string& mark : marks_of(service))
        tags.emplace_back(mark);
    return tags;
}

} // namespace zarven::tool
