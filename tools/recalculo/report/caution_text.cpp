#include "report/caution_text.h"

#include <algorithm>
#include <iterator>

#include <fmt/format.h>

#include "base/counted.h"
#include "report/table.h"

namespace zarven::tool {

namespace {

const char* name_of_many(CautionKind kind) {
    switch (kind) {
    case CautionKind::no_room_for_tables:
        return "outputs without room for tables";
    case CautionKind::lcn_on_output:
        return "LCNs of several services on an output";
    case CautionKind::name_on_output:
        return "names of several services on an output";
    case CautionKind::sid_in_network:
        return "SIDs of services on different outputs";
    case CautionKind::lcn_in_network:
        return "LCNs of services on different outputs";
    case CautionKind::name_in_network:
        break;
    }
    return "names of services on different outputs";
}

} // namespace

std::vector<CautionGroup> groups_of(const std::vector<Caution>& cautions, Extent extent) {
    std::vector<CautionGroup> groups;
    const Caution* before = nullptr;
    for (const Caution& caution : cautions) {
        if (before == nullptr || before->kind != caution.kind)
            groups.push_back({name_of_many(caution.kind), {}, {}});
        before = &caution;
        CautionGroup& group = groups.back();
        const bool is_told = extent == Extent::all || group.told.size() < MessageDigest::most_of_a_kind;
        (is_told ? group.told : group.others).push_back(caution);
    }
    return groups;
}

std::string cautions_text(const std::vector<Caution>& cautions, const TextStyle& style, Extent extent,
                          const std::string& where) {
    if (cautions.empty())
        return "";
    std::string text =
        paragraph_text(fmt::format("Cautions{}: {}", where, cautions.size()), 0, Paint::yellow, style);
    for (const CautionGroup& group : groups_of(cautions, extent)) {
        for (const Finding& caution : group.told)
            text += paragraph_text(shown(text_of(caution), style), body_indent, Paint::none, style);
        if (!group.others.empty())
            text += paragraph_text(
                fmt::format("{} more, which --verbose tells: {}", group.others.size(), group.name),
                body_indent, Paint::none, style);
    }
    return text;
}

std::string closing_cautions_text(const std::vector<Caution>& cautions, const TextStyle& style, Extent extent,
                                  const std::string& where) {
    const std::string text = cautions_text(cautions, style, extent, where);
    return text.empty() ? "" : "\n" + text;
}

} // namespace zarven::tool
