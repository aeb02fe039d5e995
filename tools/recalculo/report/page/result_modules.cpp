#include "report/page/result_modules.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "base/utf8.h"
#include "placement/audit/caution.h"
#include "report/page/page_frame.h"
#include "report/page/result_parts.h"

namespace zarven::tool {

namespace {

using kainjow::mustache::data;
using kainjow::mustache::list;

/// A segment of a bar narrower than this, in percent of the bar, has no room for its letters.
constexpr double narrowest_label = 7;

/// "3 services, 25,500 of 38,014 kbit/s, 67.1 %"; the part behind "of" where it is known.
std::string fill_of(const InputResult& input) {
    const std::uint64_t carried = carried_from(input);
    const std::string text = fmt::format("{}, {}", services_counted(input.services.size()), grouped(carried));
    if (input.net_rate == 0)
        return text + " kbit/s";
    return fmt::format("{} of {} kbit/s, {}", text, grouped(input.net_rate),
                       percentage(carried, input.net_rate));
}

std::size_t services_of(const ModuleResult& module) {
    std::size_t number = module.without_input.size();
    for (const InputResult& input : module.inputs)
        number += input.services.size();
    return number;
}

data meter(const std::string& label, std::uint32_t used, std::uint32_t max, const std::string& note) {
    data entry;
    entry["label"] = label;
    entry["used"] = grouped(used);
    entry["max"] = grouped(max);
    entry["share"] = share_text(used, max);
    entry["note"] = text_or_nothing(note);
    return entry;
}

data meters_of(const ModuleResult& module) {
    list meters;
    meters.push_back(meter("PIDs", module.pids, module.pids_max,
                           module.pids == module.pids_counted
                               ? ""
                               : fmt::format("{} by the engine's count", grouped(module.pids_counted))));
    const TranscoderPool pool = transcoder_pool(module);
    const auto add = [&meters](const char* label, std::uint32_t used, std::uint32_t max,
                               const std::string& note) {
        if (max != 0 || used != 0 || !note.empty())
            meters.push_back(meter(label, used, max, note));
    };
    add("Transcoders", pool.used, pool.max, pool.note);
    add("AUX transcoders", module.aux_transcoders.used, module.aux_transcoders.max, "");
    return meters;
}

data input_group(const InputResult& input, const Receptions& receptions, const StreamMarks& marks) {
    data group;
    group["title"] = fmt::format("Input {}", input.number);
    group["marked"] = input.is_tuned;
    group["stream"] = input.is_tuned ? data(to_string(input.stream)) : data(false);
    group["reception"] = data(false);
    if (input.is_tuned) {
        set_mark(group, marks.of(input.stream));
        set_reception(group, input.stream, receptions);
    }
    group["note"] = is_free(input) ? std::string("free") : fill_of(input);
    group["services"] = data(service_rows(input.services, &input.stream));
    return group;
}

data groups_of(const ModuleResult& module, const Receptions& receptions, const StreamMarks& marks) {
    list groups;
    for (const InputResult& input : module.inputs)
        groups.push_back(input_group(input, receptions, marks));
    if (!module.without_input.empty()) {
        data group;
        group["title"] = "On no input";
        group["marked"] = false;
        group["stream"] = false;
        group["reception"] = false;
        group["note"] = services_counted(module.without_input.size());
        group["services"] = data(service_rows(module.without_input, nullptr));
        groups.push_back(group);
    }
    return groups;
}

/// The bitrate of each stream on an output.
using BitrateByStream = std::map<Stream, std::uint64_t>;

BitrateByStream mix_of(const OutputResult& output) {
    BitrateByStream mix;
    for (const ServiceResult& service : output.services)
        if (!service.is_clone && service.bitrate != 0)
            mix[service.stream] += service.bitrate;
    return mix;
}

/// The filled part of the bar is the engine's figure; the streams share it out, also where they do not add up
/// to it.
list segments_of(const OutputResult& output, const StreamMarks& marks) {
    const BitrateByStream mix = mix_of(output);
    std::uint64_t sum = 0;
    for (const auto& [stream, bitrate] : mix)
        sum += bitrate;
    const double filled = share(output.bitrate, output.bitrate_max);
    list segments;
    double x = 0;
    for (const auto& [stream, bitrate] : mix) {
        const StreamMark& mark = marks.of(stream);
        const double width = filled * static_cast<double>(bitrate) / static_cast<double>(sum);
        data segment;
        set_mark(segment, mark);
        segment["x"] = fmt::format("{:.2f}", x);
        segment["width"] = fmt::format("{:.2f}", width);
        segment["middle"] = fmt::format("{:.2f}", x + width / 2);
        segment["label"] = width < narrowest_label ? data(false) : data(mark.code);
        segment["segment_bitrate"] = grouped(bitrate);
        x += width;
        segment["end"] = fmt::format("{:.2f}", x);
        segments.push_back(segment);
    }
    return segments;
}

data output_entry(const OutputResult& output, const StreamMarks& marks) {
    std::string spoken = fmt::format("Output {}: {} of {} kbit/s", output.number, grouped(output.bitrate),
                                     grouped(output.bitrate_max));
    for (const auto& [stream, bitrate] : mix_of(output))
        spoken += fmt::format(", stream {} {}", marks.of(stream).code, grouped(bitrate));
    const list segments = segments_of(output, marks);
    data entry;
    entry["number"] = std::to_string(output.number);
    entry["percentage"] = percentage(output.bitrate, output.bitrate_max);
    entry["bitrate"] = grouped(output.bitrate);
    entry["bitrate_max"] = grouped(output.bitrate_max);
    entry["service_count"] = grouped(output.service_count);
    entry["service_max"] = grouped(output.service_max);
    entry["reserve"] = output.reserve == 0 ? data(false) : data(grouped(output.reserve));
    const std::uint64_t lacking = lacking_for_tables(output);
    entry["lacking"] = lacking == 0 ? data(false) : data(grouped(lacking));
    entry["spoken"] = spoken;
    entry["has_segments"] = !segments.empty();
    entry["segments"] = segments;
    return entry;
}

data module_entry(const ModuleResult& module, std::size_t index, const Receptions& receptions,
                  const StreamMarks& marks) {
    const Load load = load_of(module);
    list outputs;
    for (const OutputResult& output : module.outputs)
        outputs.push_back(output_entry(output, marks));
    data entry;
    entry["anchor"] = module_anchor(index);
    entry["mac"] = printable(module.mac);
    entry["module_label"] = text_or_nothing(printable(module.label));
    entry["model"] = std::to_string(module.model);
    entry["controller"] = module.is_controller;
    entry["inputs_used"] = grouped(inputs_of(module).used);
    entry["input_count"] = grouped(inputs_of(module).all);
    entry["service_total"] = grouped(services_of(module));
    entry["pids"] = grouped(module.pids);
    entry["pids_max"] = grouped(module.pids_max);
    entry["load"] = percentage(load.used, load.max);
    entry["meters"] = meters_of(module);
    entry["has_groups"] = !module.inputs.empty() || !module.without_input.empty();
    entry["groups"] = groups_of(module, receptions, marks);
    entry["output_list"] = outputs;
    return entry;
}

} // namespace

kainjow::mustache::list module_entries(const Result& result, const StreamMarks& marks) {
    const Receptions receptions = by_stream(result.streams);
    list entries;
    for (std::size_t index = 0; index < result.modules.size(); ++index)
        entries.push_back(module_entry(result.modules[index], index, receptions, marks));
    return entries;
}

} // namespace zarven::tool
