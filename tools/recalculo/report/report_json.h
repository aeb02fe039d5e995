// The result for a program: the same facts as the text report, described in docs/tool.md.

#ifndef RECALCULO_REPORT_JSON_H
#define RECALCULO_REPORT_JSON_H

#include <string>

#include <nlohmann/json_fwd.hpp>

#include "placement/result.h"
#include "placement/strategies.h"

namespace zarven::tool {

/// The service as an object of the report.
void to_json(nlohmann::ordered_json& json, const ServiceResult& service);

/// The whole result as indented JSON with a final line end, with the strategies if there are any.
std::string json_report(const Result& result, const Strategies* strategies = nullptr);

} // namespace zarven::tool

#endif
