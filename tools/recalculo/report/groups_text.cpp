#include "report/groups_text.h"

#include <algorithm>

#include <fmt/format.h>

#include "base/counted.h"
#include "report/service_list.h"

namespace zarven::tool {

namespace {

bool is_best(const VariantResult& variant) {
    return variant.place == 1 && variant.is_placed;
}

} // namespace

std::string groups_text(const std::vector<GroupResult>& groups, const TextStyle& style) {
    if (groups.empty())
        return "";
    std::vector<Row> rows;
    for (const GroupResult& group : groups)
        rows.push_back(
            {shown(group.name, style), fmt::format("{} of {} placed", group.placed, group.loaded)});
    return paragraph_text(fmt::format("Groups: {}", groups.size()), 0, Paint::bold, style) +
           table_text({column_of_name(), Column()}, rows, body_indent, style);
}

std::string variant_in_words(const VariantResult& variant) {
    return fmt::format("{} of \"{}\"{}",
                       variant.variants == 1 ? "the only variant"
                       : variant.place == 1
                           ? fmt::format("the best of {} variants", variant.variants)
                           : fmt::format("variant {} of {}", variant.place, variant.variants),
                       variant.one_of, variant.is_placed ? "" : ", not placed");
}

std::string variants_text(const std::vector<VariantResult>& variants, const TextStyle& style) {
    if (variants.empty())
        return "";
    std::vector<Row> rows;
    for (const VariantResult& variant : variants)
        if (!is_best(variant))
            rows.push_back(with_identity(variant.service, {shown(variant_in_words(variant), style)}, style));
    const auto best = std::count_if(variants.begin(), variants.end(), is_best);
    const std::string title =
        fmt::format("One of several is asked for in {}: {} with the best variant placed{}",
                    counted(variants.size(), "group"), best, rows.empty() ? "" : "; the others");
    Column last;
    last.wrapped_at = 30;
    return paragraph_text(title, 0, Paint::bold, style) +
           (rows.empty() ? "" : table_text(with_identity({last}), rows, body_indent, style));
}

} // namespace zarven::tool
