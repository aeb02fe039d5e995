#include "report/page/result_lists.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <string>
#include <tuple>
#include <vector>

#include <fmt/format.h>

#include "base/utf8.h"
#include "headend/receptions.h"
#include "report/page/page_files.h"
#include "report/page/page_frame.h"
#include "report/page/result_parts.h"

namespace zarven::tool {

namespace {

using kainjow::mustache::data;
using kainjow::mustache::list;

/// The inputs of a module that have each service.
using InputsOf = std::map<ServiceKey, std::vector<std::uint16_t>>;

InputsOf inputs_of_services(const ModuleResult& module) {
    InputsOf inputs;
    for (const InputResult& input : module.inputs)
        for (const ServiceResult& service : input.services) {
            std::vector<std::uint16_t>& numbers = inputs[key_of(service)];
            if (numbers.empty() || numbers.back() != input.number)
                numbers.push_back(input.number);
        }
    return inputs;
}

/// Thousands of a unit as the unit, without zeros at the end; nothing for none.
data in_thousands(std::uint32_t number) {
    return text_or_nothing(number == 0 ? "" : fmt::format("{:.10g}", number / 1000.0));
}

data row_of(const ServiceResult& service, const std::vector<std::uint16_t>& inputs,
            const Reception& reception) {
    data row;
    row["lcn"] = std::to_string(service.lcn);
    row["name"] = printable(service.output_name);
    row["received_as"] = text_or_nothing(service.output_name == service.name ? "" : printable(service.name));
    row["clone"] = service.is_clone;
    row["sid"] = std::to_string(service.sid);
    row["bitrate"] = grouped(service.bitrate);
    row["input"] = text_or_nothing(fmt::format("{}", fmt::join(inputs, ", ")));
    row["position"] = printable(reception.satellite);
    row["frequency"] = in_thousands(reception.frequency);
    row["polarization"] = printable(reception.polarization);
    row["symbol_rate"] = in_thousands(reception.symbol_rate);
    return row;
}

/// By LCN, as a viewer has them.
list rows_of(const OutputResult& output, const InputsOf& inputs, const Receptions& receptions) {
    std::vector<const ServiceResult*> services;
    for (const ServiceResult& service : output.services)
        services.push_back(&service);
    std::stable_sort(services.begin(), services.end(),
                     [](const ServiceResult* one, const ServiceResult* other) {
                         return std::tie(one->lcn, one->is_clone) < std::tie(other->lcn, other->is_clone);
                     });
    list rows;
    for (const ServiceResult* service : services) {
        const auto input = inputs.find(key_of(*service));
        rows.push_back(row_of(*service, input == inputs.end() ? std::vector<std::uint16_t>() : input->second,
                              reception_of(service->stream, receptions)));
    }
    return rows;
}

} // namespace

list list_entries(const Result& result) {
    const Receptions receptions = by_stream(result.streams);
    list entries;
    for (std::size_t index = 0; index < result.modules.size(); ++index) {
        const ModuleResult& module = result.modules[index];
        const InputsOf inputs = inputs_of_services(module);
        for (const OutputResult& output : module.outputs) {
            if (output.services.empty())
                continue;
            data entry;
            entry["anchor"] = fmt::format("list-{}-{}", index + 1, output.number);
            entry["module_anchor"] = module_anchor(index);
            entry["mac"] = printable(module.mac);
            entry["module_label"] = text_or_nothing(printable(module.label));
            entry["number"] = std::to_string(output.number);
            entry["note"] = services_counted(output.services.size());
            entry["rows"] = rows_of(output, inputs, receptions);
            entries.push_back(entry);
        }
    }
    return entries;
}

std::string service_lists_markup(const Result& result) {
    data facts;
    facts["service_lists"] = data(list_entries(result));
    return kainjow::mustache::mustache(service_lists_template).render(facts);
}

} // namespace zarven::tool
