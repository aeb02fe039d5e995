#include "report/page/result_parts.h"

#include <fmt/format.h>

#include "base/utf8.h"
#include "report/page/page_frame.h"

namespace zarven::tool {

namespace {

using kainjow::mustache::data;
using kainjow::mustache::list;

/// With the stream, where it is not the one under which the service is listed.
list tags_under(const ServiceResult& service, const Stream* listed_under) {
    list tags = tags_of(service);
    if (listed_under == nullptr || *listed_under != service.stream)
        tags.emplace_back("stream " + to_string(service.stream));
    return tags;
}

data result_row(const ServiceResult& service, const Stream* listed_under) {
    data row;
    row["lcn"] = std::to_string(service.lcn);
    row["name"] = printable(service.name);
    row["sent_as"] =
        text_or_nothing(service.output_name == service.name ? "" : printable(service.output_name));
    row["tags"] = data(tags_under(service, listed_under));
    row["bitrate"] = grouped(service.bitrate);
    row["outputs"] = text_or_nothing(fmt::format("{}", fmt::join(service.outputs, ", ")));
    row["reason"] = printable(service.reason);
    row["row_id"] = false;
    row["told_by"] = false;
    return row;
}

} // namespace

std::string services_counted(std::size_t number) {
    return counted(number, "service", "services");
}

list service_rows(const std::vector<ServiceResult>& services, const Stream* listed_under) {
    list rows;
    for (const ServiceResult& service : services)
        rows.push_back(result_row(service, listed_under));
    return rows;
}

void set_mark(data& object, const StreamMark& mark) {
    object["code"] = mark.code;
    object["colour"] = std::to_string(mark.colour);
    object["pattern"] = mark.pattern == 0 ? data(false) : data(std::to_string(mark.pattern));
}

void set_reception(data& object, Stream stream, const Receptions& receptions) {
    object["reception"] = text_or_nothing(printable(tuning_of(reception_of(stream, receptions))));
}

std::string module_anchor(std::size_t index) {
    return fmt::format("module-{}", index + 1);
}

Load load_of(const ModuleResult& module) {
    Load load;
    for (const OutputResult& output : module.outputs) {
        load.used += output.bitrate;
        load.max += output.bitrate_max;
    }
    return load;
}

} // namespace zarven::tool
