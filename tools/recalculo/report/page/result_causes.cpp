#include "report/page/result_causes.h"

#include <map>

#include <fmt/format.h>

#include "base/utf8.h"
#include "report/page/page_frame.h"
#include "report/page/result_unplaced.h"

namespace zarven::tool {

using kainjow::mustache::data;
using kainjow::mustache::list;

std::string unplaced_anchor(const std::string& section, std::size_t place) {
    return fmt::format("{}-{}", section, place);
}

std::string cause_anchor(Cause cause) {
    return fmt::format("cause-{}", static_cast<int>(cause));
}

static std::map<Cause, list> links_by_cause(const Result& result) {
    std::map<Cause, list> links;
    const auto add = [&links](const ServiceResult& service, const std::string& anchor) {
        if (service.is_clone)
            return;
        data link;
        link["anchor"] = anchor;
        link["lcn"] = std::to_string(service.lcn);
        link["name"] = printable(service.name);
        links[service.cause].push_back(link);
    };
    std::size_t place = 0;
    for (const StreamResult& stream : result.left_out)
        for (const ServiceResult& service : stream.services)
            add(service, unplaced_anchor(left_out_section.anchor, ++place));
    place = 0;
    for (const ServiceResult& service : result.neither)
        add(service, unplaced_anchor(neither_section.anchor, ++place));
    return links;
}

list cause_entries(const Result& result, const std::vector<CauseCount>& causes) {
    std::map<Cause, list> links = links_by_cause(result);
    list entries;
    for (const CauseCount& cause : causes) {
        data entry;
        entry["anchor"] = cause_anchor(cause.cause);
        entry["number"] = grouped(cause.services);
        entry["which"] = cause.services == 1 ? "Which one" : "Which ones";
        entry["sentence"] = printable(cause.sentence);
        entry["kept_out"] = links[cause.cause];
        entries.push_back(entry);
    }
    return entries;
}

} // namespace zarven::tool
