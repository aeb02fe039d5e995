#include "report/page/result_unplaced.h"

#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "report/page/page_frame.h"
#include "report/page/result_causes.h"
#include "report/page/result_parts.h"

namespace zarven::tool {

namespace {

using kainjow::mustache::data;
using kainjow::mustache::list;

bool any_reason(const std::vector<StreamResult>& streams) {
    return std::any_of(streams.begin(), streams.end(), [](const StreamResult& stream) {
        return std::any_of(stream.services.begin(), stream.services.end(),
                           [](const ServiceResult& service) { return !service.reason.empty(); });
    });
}

data list_section(const UnplacedSection& kind, std::size_t number, const std::string& explanation,
                  const std::vector<StreamResult>& streams, const Result& result, const StreamMarks& marks) {
    const bool has_reasons = any_reason(streams);
    const std::vector<CauseCount> causes = causes_of(result);
    const Receptions receptions = by_stream(result.streams);
    std::size_t index = 0;
    list groups;
    for (const StreamResult& stream : streams) {
        data group;
        group["stream"] = to_string(stream.stream);
        set_mark(group, marks.of(stream.stream));
        set_reception(group, stream.stream, receptions);
        group["note"] = services_counted(stream.services.size());
        list rows = service_rows(stream.services, &stream.stream);
        for (std::size_t place = 0; place < rows.size(); ++place) {
            const Cause cause = stream.services[place].cause;
            rows[place]["row_id"] = unplaced_anchor(kind.anchor, ++index);
            if (is_told_once(causes, cause))
                rows[place]["told_by"] = cause_anchor(cause);
        }
        group["services"] = rows;
        groups.push_back(group);
    }
    data section;
    section["anchor"] = std::string(kind.anchor);
    section["title"] = std::string(kind.title);
    section["number"] = grouped(number);
    section["explanation"] = explanation;
    section["caption"] = fmt::format("{}, by stream", kind.title);
    section["has_reasons"] = has_reasons;
    section["columns"] = has_reasons ? "4" : "3";
    section["groups"] = groups;
    return section;
}

std::vector<StreamResult> grouped_by_stream(const std::vector<ServiceResult>& services) {
    std::map<Stream, StreamResult> streams;
    for (const ServiceResult& service : services) {
        StreamResult& stream = streams[service.stream];
        stream.stream = service.stream;
        stream.services.push_back(service);
    }
    std::vector<StreamResult> grouped_services;
    for (auto& [numbers, stream] : streams)
        grouped_services.push_back(std::move(stream));
    return grouped_services;
}

} // namespace

kainjow::mustache::list unplaced_sections(const Result& result, const StreamMarks& marks) {
    list sections;
    if (!result.left_out.empty())
        sections.push_back(list_section(left_out_section, result.counts.left_out,
                                        "Services that the engine has left out.", result.left_out, result,
                                        marks));
    if (!result.clones_waiting.empty())
        sections.push_back(list_section(waiting_section, result.clones_waiting.size(),
                                        "Clones that found no place beside a parent.",
                                        grouped_by_stream(result.clones_waiting), result, marks));
    if (!result.neither.empty())
        sections.push_back(list_section(neither_section, result.neither.size(),
                                        "Services that the engine's exchanges have lost.",
                                        grouped_by_stream(result.neither), result, marks));
    return sections;
}

} // namespace zarven::tool
