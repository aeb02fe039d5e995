// A name that an object lacks would be looked for in the objects around it, so each object sets all of its
// names, and `false` stands for nothing. The templates escape every text; here they lose what no page can
// show.

#include "report/page/page_frame.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include <fmt/format.h>

#include "base/utf8.h"
#include "report/caution_text.h"
#include "report/page/page_files.h"
#include "report/service_marks.h"

namespace zarven::tool {

using kainjow::mustache::data;
using kainjow::mustache::list;

/// The heading of a list of findings and the list.
constexpr const char* findings_template =
    R"(<h2 id="{{anchor}}-title">{{title}}</h2>
<ul>
{{#findings}}
<li><bdi>{{>finding}}</bdi></li>
{{/findings}}
{{#folded}}
<li><details><summary>{{summary}}</summary><ul>{{#others}}<li><bdi>{{>finding}}</bdi></li>{{/others}}</ul></details></li>
{{/folded}}
</ul>)";

constexpr const char* finding_template =
    R"({{#parts}}{{#link}}<a href="#{{link}}">{{text}}</a>{{/link}}{{^link}}{{text}}{{/link}}{{/parts}})";

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
    facts["remark"] = text_or_nothing(frame.remark);
    facts["good"] = frame.is_good;
    facts["tiles"] = frame.tiles;
    facts["sections"] = frame.sections;
    facts["audits"] = frame.audits;
    facts["notes"] = frame.notes;
    facts["findings_of_audit"] = findings_template;
    facts["finding"] = finding_template;
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

static data part_of_finding(const std::string& text, data link) {
    data part;
    part["text"] = printable(text);
    part["link"] = std::move(link);
    return part;
}

/// The sentence in parts, of which the names of modules are links.
static list parts_of(const Finding& finding, const Anchors& anchors) {
    const std::string text = text_of(finding);
    list parts;
    std::size_t begin = 0;
    while (begin < text.size()) {
        std::size_t next = text.npos;
        const Anchors::value_type* named = nullptr;
        for (const Anchors::value_type& module : anchors) {
            const std::size_t found = text.find(module.first, begin);
            // Of two that begin in one place the longer.
            if (found < next ||
                (named != nullptr && found == next && module.first.size() > named->first.size())) {
                next = found;
                named = &module;
            }
        }
        parts.push_back(part_of_finding(text.substr(begin, next - begin), false));
        if (named == nullptr)
            break;
        parts.push_back(part_of_finding(named->first, data(named->second)));
        begin = next + named->first.size();
    }
    return parts;
}

/// Each in parts.
static list entries_of(const std::vector<Finding>& findings, const Anchors& anchors) {
    list entries;
    for (const Finding& finding : findings) {
        Anchors named;
        for (const auto& module : anchors)
            if (std::find(finding.macs.begin(), finding.macs.end(), module.first) != finding.macs.end())
                named.emplace("module " + module.first, module.second);
        data entry;
        entry["parts"] = parts_of(finding, named);
        entries.push_back(entry);
    }
    return entries;
}

static void add_section(list& place, PageFrame& frame, const char* anchor, const char* title,
                        std::size_t number, const list& findings, const list& folded) {
    if (number == 0)
        return;
    data audit;
    audit["anchor"] = anchor;
    audit["title"] = title;
    audit["findings"] = findings;
    audit["folded"] = folded;
    place.push_back(audit);
    link_section(frame.sections, anchor, title, number);
}

static void add_findings(list& place, PageFrame& frame, const char* anchor, const char* title,
                         const std::vector<Finding>& findings, const Anchors& anchors) {
    add_section(place, frame, anchor, title, findings.size(), entries_of(findings, anchors), {});
}

void add_broken(PageFrame& frame, const char* anchor, const char* title, const std::vector<Finding>& findings,
                const Anchors& anchors) {
    add_findings(frame.audits, frame, anchor, title, only(true, findings), anchors);
}

void add_notes(PageFrame& frame, const char* anchor, const char* title, const std::vector<Finding>& findings,
               const Anchors& anchors) {
    add_findings(frame.notes, frame, anchor, title, only(false, findings), anchors);
}

void add_cautions(PageFrame& frame, const char* anchor, const char* title,
                  const std::vector<Caution>& cautions, const Anchors& anchors) {
    std::vector<Finding> told;
    list folded;
    for (const CautionGroup& group : groups_of(cautions, Extent::few_of_each)) {
        told.insert(told.end(), group.told.begin(), group.told.end());
        if (group.others.empty())
            continue;
        data more;
        more["summary"] = fmt::format("{} more: {}", grouped(group.others.size()), group.name);
        more["others"] = entries_of(group.others, anchors);
        folded.push_back(more);
    }
    add_section(frame.notes, frame, anchor, title, cautions.size(), entries_of(told, anchors), folded);
}

void link_section(list& sections, const char* anchor, const char* title, std::size_t number) {
    if (number != 0)
        sections.push_back(section_link(anchor, title, grouped(number)));
}

void add_listing(list& listings, list& sections, const Heading& heading, std::size_t number, data listing) {
    if (number == 0)
        return;
    listing["anchor"] = heading.anchor;
    listing["title"] = heading.title;
    listing["number"] = grouped(number);
    listing["explanation"] = heading.explanation;
    listings.push_back(std::move(listing));
    link_section(sections, heading.anchor, heading.title, number);
}

std::string grouped(std::uint64_t number) {
    std::string digits = std::to_string(number);
    for (std::size_t place = digits.size(); place > 3; place -= 3)
        digits.insert(place - 3, ",");
    return digits;
}

std::string counted(std::uint64_t number, std::string_view one, std::string_view many) {
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
