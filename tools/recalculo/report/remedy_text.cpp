#include "report/remedy_text.h"

#include <vector>

#include <fmt/format.h>

#include "base/counted.h"
#include "report/raise_text.h"
#include "report/summary_text.h"

namespace zarven::tool {

namespace {

/// More of those lost are only counted.
constexpr std::size_t most_named = 8;

std::string change_of(const Remedy& remedy) {
    switch (remedy.kind) {
    case RemedyKind::raised_limit:
        return fmt::format("{} on module {}", change_of(remedy.raise),
                           module_name(remedy.raise.mac, remedy.raise.label));
    case RemedyKind::withheld_service:
        return fmt::format("without LCN {} \"{}\"", remedy.withheld.lcn, remedy.withheld.name);
    default:
        return "one more module like " + module_name(remedy.like, remedy.label);
    }
}

std::string cost_of(const Remedy& remedy) {
    if (remedy.lost.empty())
        return "no other service is lost";
    std::vector<std::string> names;
    for (const ServiceResult& service : remedy.lost)
        if (names.size() < most_named)
            names.push_back(fmt::format("{} \"{}\"", service.lcn, service.name));
    std::string text =
        fmt::format("it costs {}: {}", counted(remedy.lost.size(), "service"), fmt::join(names, ", "));
    if (remedy.lost.size() > names.size())
        text += fmt::format(" and {} more", remedy.lost.size() - names.size());
    return text;
}

std::string remedy_sentence(const Remedy& remedy) {
    const std::string setting = remedy.setting.empty() ? "" : fmt::format("; --set '{}'", remedy.setting);
    return fmt::format("{}: it is placed, {} in all; {}{}.", change_of(remedy),
                       counted(remedy.placed, "service"), cost_of(remedy), setting);
}

} // namespace

std::string remedies_text(const Remedies& remedies, const TextStyle& style) {
    const std::string tried = counted(remedies.tried, "change");
    if (remedies.found.empty())
        return paragraph_text(
            fmt::format("Remedy: none found ({} tried) with which it is placed and no limit broken.", tried),
            body_indent, Paint::none, style);
    std::string text = paragraph_text(fmt::format("Remedies, the smallest first ({} tried):", tried),
                                      body_indent, Paint::bold, style);
    for (const Remedy& remedy : remedies.found)
        text += paragraph_text(shown(remedy_sentence(remedy), style), 2 * body_indent, Paint::none, style);
    return text;
}

} // namespace zarven::tool
