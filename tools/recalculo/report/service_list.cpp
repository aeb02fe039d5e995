// The columns are those of the main report.

#include "report/service_list.h"

#include <algorithm>

#include <fmt/format.h>

#include "base/utf8.h"

namespace zarven::tool {

using nlohmann::ordered_json;

std::string services_counted(std::size_t number) {
    return fmt::format("{} service{}", number, number == 1 ? "" : "s");
}

std::string identity_columns(const ServiceResult& service, int name_width) {
    return fmt::format("{:>5}  {}  {:<11}", service.lcn, pad_right(printable(service.name), name_width),
                       to_string(service.stream));
}

int name_width(const std::vector<ServiceResult>& services, int at_least) {
    const int widest = 34;
    int width = at_least;
    for (const ServiceResult& service : services)
        width = std::max(width, display_width(printable(service.name)));
    return std::min(width, widest);
}

namespace {

/// The title, then each service with what there is to say of it.
template <class Say>
std::string titled_list(const std::string& title, const std::vector<ServiceResult>& services, Say say) {
    std::string text = fmt::format("{}: {}\n", title, services_counted(services.size()));
    const int width = name_width(services);
    for (const ServiceResult& service : services)
        text += fmt::format("  {}  {}\n", identity_columns(service, width), say(service));
    return text;
}

} // namespace

std::string services_list(const std::string& title, const std::vector<ServiceResult>& services) {
    return titled_list(title, services, [](const ServiceResult& service) {
        return fmt::format("{:>6} kbit/s  {:>2} PIDs{}", service.bitrate, service.ca_pids,
                           service.is_transcoded ? "  transcoded" : "");
    });
}

std::string services_with_reasons(const std::string& title, const std::vector<ServiceResult>& services) {
    return titled_list(title, services,
                       [](const ServiceResult& service) { return printable(service.reason); });
}

ordered_json identity_json(const ServiceResult& service) {
    return {{"lcn", service.lcn},
            {"name", service.name},
            {"onid", service.stream.onid},
            {"tsid", service.stream.tsid},
            {"sid", service.sid}};
}

ordered_json services_with_reasons_json(const std::vector<ServiceResult>& services) {
    ordered_json list = ordered_json::array();
    for (const ServiceResult& service : services) {
        list.push_back(identity_json(service));
        list.back()["reason"] = service.reason;
    }
    return list;
}

} // namespace zarven::tool
