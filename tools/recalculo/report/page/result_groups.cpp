#include "report/page/result_groups.h"

#include "base/utf8.h"
#include "report/page/page_frame.h"

namespace zarven::tool {

using kainjow::mustache::data;
using kainjow::mustache::list;

list planned_groups(const Result& result) {
    list groups;
    for (const GroupResult& group : result.groups) {
        data entry;
        entry["group"] = printable(group.name);
        entry["placed"] = grouped(group.placed);
        entry["lacking"] = group.placed < group.loaded;
        entry["loaded"] = grouped(group.loaded);
        groups.push_back(entry);
    }
    return groups;
}

list asked_variants(const Result& result) {
    list variants;
    for (const VariantResult& variant : result.variants) {
        data entry;
        entry["one_of"] = printable(variant.one_of);
        entry["lcn"] = std::to_string(variant.service.lcn);
        entry["name"] = printable(variant.service.name);
        entry["stream"] = to_string(variant.service.stream);
        entry["place"] = grouped(variant.place);
        entry["variants"] = grouped(variant.variants);
        entry["lacking"] = !variant.is_placed;
        entry["outcome"] = variant.is_placed ? "placed" : "not placed";
        variants.push_back(entry);
    }
    return variants;
}

} // namespace zarven::tool
