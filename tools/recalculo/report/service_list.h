// Services listed one a line with what there is to say of each, as the smaller reports do.

#ifndef RECALCULO_SERVICE_LIST_H
#define RECALCULO_SERVICE_LIST_H

#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "placement/result.h"

namespace zarven::tool {

/// "1 service", "2 services".
std::string services_counted(std::size_t number);

/// The columns that identify a service: LCN, name, stream. Names are padded to `name_width`.
std::string identity_columns(const ServiceResult& service, int name_width);

/// The width for the names of a list.
int name_width(const std::vector<ServiceResult>& services, int at_least = 0);

/// The title with the number of services, then each service with its bitrate and PIDs.
std::string services_list(const std::string& title, const std::vector<ServiceResult>& services);

/// The title with the number of services, then each service with its reason.
std::string services_with_reasons(const std::string& title, const std::vector<ServiceResult>& services);

/// `lcn`, `name`, `onid`, `tsid`, `sid`.
nlohmann::ordered_json identity_json(const ServiceResult& service);

/// A list of identities, each with `reason`.
nlohmann::ordered_json services_with_reasons_json(const std::vector<ServiceResult>& services);

} // namespace zarven::tool

#endif
