#include "report/service_list.h"

#include <fmt/format.h>

#include "base/counted.h"
#include "report/service_marks.h"

namespace zarven::tool {

namespace {

/// These services are those that are or stay left out.
std::string heading_text(const std::string& title, const std::vector<ServiceResult>& services,
                         const TextStyle& style) {
    return paragraph_text(title + ": " + counted(services.size(), "service"), 0, Paint::red, style);
}

} // namespace

Column column_of_lcn() {
    Column lcn;
    lcn.align = Align::right;
    lcn.least = 5;
    return lcn;
}

Column column_of_name() {
    Column name;
    name.most = 34;
    name.narrowest = 12;
    name.readable = 20;
    return name;
}

std::vector<Column> with_identity(const std::vector<Column>& others) {
    Column stream;
    stream.least = 11;
    stream.dispensable = 1;
    std::vector<Column> columns = {column_of_lcn(), column_of_name(), stream};
    columns.insert(columns.end(), others.begin(), others.end());
    return columns;
}

Row with_identity(const ServiceResult& service, const Row& others, const TextStyle& style) {
    Row row = {std::to_string(service.lcn), shown(service.name, style), to_string(service.stream)};
    row.insert(row.end(), others.begin(), others.end());
    return row;
}

std::string services_list(const std::string& title, const std::vector<ServiceResult>& services,
                          const TextStyle& style) {
    Column bitrate;
    bitrate.align = Align::right;
    bitrate.least = 13;
    bitrate.dispensable = 2;
    Column marks;
    marks.wrapped_at = 18;
    std::vector<Row> rows;
    for (const ServiceResult& service : services)
        rows.push_back(with_identity(service,
                                     {fmt::format("{} kbit/s", service.bitrate),
                                      fmt::format("{}", fmt::join(marks_of(service), ", "))},
                                     style));
    return heading_text(title, services, style) +
           table_text(with_identity({bitrate, marks}), rows, body_indent, style);
}

std::string services_with_reasons(const std::string& title, const std::vector<ServiceResult>& services,
                                  const TextStyle& style) {
    Column reason;
    reason.wrapped_at = 30;
    std::vector<Row> rows;
    for (const ServiceResult& service : services)
        rows.push_back(with_identity(service, {shown(service.reason, style)}, style));
    return heading_text(title, services, style) +
           table_text(with_identity({reason}), rows, body_indent, style);
}

} // namespace zarven::tool
