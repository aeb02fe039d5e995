// Services listed one a line with what there is to say of each, as the smaller reports do.

#ifndef RECALCULO_SERVICE_LIST_H
#define RECALCULO_SERVICE_LIST_H

#include <string>
#include <vector>

#include "placement/result.h"
#include "report/table.h"

namespace zarven::tool {

/// Columns of every list of services.
Column column_of_lcn();
Column column_of_name();

/// The columns that identify a service, LCN, name and stream, then others.
std::vector<Column> with_identity(const std::vector<Column>& others);

/// A row for these columns.
Row with_identity(const ServiceResult& service, const Row& others, const TextStyle& style);

/// The title with the number of services, then each service with its bitrate and marks.
std::string services_list(const std::string& title, const std::vector<ServiceResult>& services,
                          const TextStyle& style);

/// The title with the number of services, then each service with its reason.
std::string services_with_reasons(const std::string& title, const std::vector<ServiceResult>& services,
                                  const TextStyle& style);

} // namespace zarven::tool

#endif
