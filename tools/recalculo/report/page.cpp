// The facts of a result are put into the names that page.mustache knows. As page_frame.cpp says, each object
// sets all of its names, and texts lose what no page can show.

#include "report/page.h"

#include <algorithm>
#include <map>

#include <fmt/format.h>

#include "base/utf8.h"
#include "report/page_files.h"
#include "report/page_frame.h"
#include "report/stream_marks.h"

namespace zarven::tool {

namespace {

using kainjow::mustache::data;
using kainjow::mustache::list;

/// A segment of a bar narrower than this, in percent of the bar, has no room for its letters.
constexpr double narrowest_label = 7;

constexpr const char* swatch_template =
    R"(<svg class="swatch" aria-hidden="true"><rect class="c{{colour}}" width="100%" height="100%"/>{{#pattern}})"
    R"(<rect class="p{{pattern}}" width="100%" height="100%"/>{{/pattern}}</svg>)";

constexpr const char* segments_template =
    R"({{#segments}}<rect class="c{{colour}}" x="{{x}}%" width="{{width}}%" height="100%"/>{{#pattern}})"
    R"(<rect class="p{{pattern}}" x="{{x}}%" width="{{width}}%" height="100%"/>{{/pattern}})"
    R"(<rect class="edge" x="{{end}}%" width="1" height="100%"/>{{/segments}})";

std::string services_counted(std::size_t number) {
    return counted(number, "service", "services");
}

/// With the stream, where it is not the one under which the service is listed.
list tags_under(const ServiceResult& service, const Stream* listed_under) {
    list tags = tags_of(service);
    if (listed_under == nullptr || *listed_under != service.stream)
        tags.emplace_back("stream " + to_string(service.stream));
    return tags;
}

data service_row(const ServiceResult& service, const Stream* listed_under) {
    data row;
    row["lcn"] = std::to_string(service.lcn);
    row["name"] = printable(service.name);
    row["sent_as"] =
        text_or_nothing(service.output_name == service.name ? "" : printable(service.output_name));
    row["tags"] = data(tags_under(service, listed_under));
    row["bitrate"] = grouped(service.bitrate);
    row["outputs"] = text_or_nothing(fmt::format("{}", fmt::join(service.outputs, ", ")));
    row["reason"] = printable(service.reason);
    return row;
}

data service_rows(const std::vector<ServiceResult>& services, const Stream* listed_under) {
    list rows;
    for (const ServiceResult& service : services)
        rows.push_back(service_row(service, listed_under));
    return rows;
}

void set_mark(data& object, const StreamMark& mark) {
    object["code"] = mark.code;
    object["colour"] = std::to_string(mark.colour);
    object["pattern"] = mark.pattern == 0 ? data(false) : data(std::to_string(mark.pattern));
}

std::string module_anchor(std::size_t index) {
    return fmt::format("module-{}", index + 1);
}

std::uint64_t bitrate_of(const std::vector<ServiceResult>& services) {
    std::uint64_t sum = 0;
    for (const ServiceResult& service : services)
        sum += service.is_clone ? 0 : service.bitrate;
    return sum;
}

/// Used and most of all outputs of a module.
struct Load {
    std::uint64_t used = 0;
    std::uint64_t max = 0;
};

Load load_of(const ModuleResult& module) {
    Load load;
    for (const OutputResult& output : module.outputs) {
        load.used += output.bitrate;
        load.max += output.bitrate_max;
    }
    return load;
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

/// Gathers the page of one result.
class Page {
public:
    explicit Page(const Result& result) : result_(result), marks_(result) {}

    PageFrame frame() const;
    data facts() const;

private:
    struct StreamFacts {
        std::size_t placed = 0;
        std::size_t left_out = 0;
        list receivers{};
    };
    /// The bitrate of each stream on an output.
    using Mix = std::map<Stream, std::uint64_t>;
    using FactsOf = std::map<Stream, StreamFacts>;

    list tiles() const;
    void link(list& sections) const;
    data streams() const;
    data legend() const;
    FactsOf stream_facts() const;
    data module_entry(std::size_t index) const;
    data groups_of(const ModuleResult& module) const;
    data input_group(const InputResult& input) const;
    data output_entry(const OutputResult& output) const;
    static Mix mix_of(const OutputResult& output);
    list segments_of(const OutputResult& output) const;
    data lists() const;
    data list_section(const std::string& anchor, const std::string& title, std::size_t number,
                      const std::string& explanation, const std::vector<StreamResult>& streams) const;

    const Result& result_;
    StreamMarks marks_;
};

list Page::tiles() const {
    const InputCounts inputs = inputs_of(result_);
    std::uint64_t pids = 0;
    std::uint64_t pids_max = 0;
    Load load;
    for (const ModuleResult& module : result_.modules) {
        pids += module.pids;
        pids_max += module.pids_max;
        load.used += load_of(module).used;
        load.max += load_of(module).max;
    }
    const Counts& counts = result_.counts;
    const auto of = [](std::uint64_t max, const char* unit) {
        return fmt::format("of {}{}", grouped(max), unit);
    };
    list tiles;
    tiles.push_back(tile("Placed", grouped(counts.placed), of(counts.loaded, " loaded"),
                         share_text(counts.placed, counts.loaded)));
    tiles.push_back(
        tile("Left out", grouped(counts.left_out),
             result_.left_out.empty() ? "" : "in " + counted(result_.left_out.size(), "stream", "streams"),
             share_text(counts.left_out, counts.loaded)));
    if (counts.neither != 0)
        tiles.push_back(tile("Neither", grouped(counts.neither), "placed nor left out", false));
    tiles.push_back(tile("Inputs in use", grouped(inputs.tuned), of(inputs.all, ""),
                         share_text(inputs.tuned, inputs.all)));
    tiles.push_back(
        tile("Output bitrate", grouped(load.used), of(load.max, " kbit/s"), share_text(load.used, load.max)));
    tiles.push_back(tile("PIDs in use", grouped(pids), of(pids_max, ""), share_text(pids, pids_max)));
    if (counts.clones_attached + counts.clones_waiting != 0)
        tiles.push_back(tile("Clones attached", grouped(counts.clones_attached),
                             fmt::format("{} waiting", grouped(counts.clones_waiting)), false));
    return tiles;
}

void Page::link(list& sections) const {
    link_section(sections, "glance", "At a glance", result_.modules.size());
    link_section(sections, "modules", "Modules", result_.modules.size());
    link_section(sections, "left-out", "Left out", result_.counts.left_out);
    link_section(sections, "waiting", "Clones waiting", result_.clones_waiting.size());
    link_section(sections, "neither", "Neither placed nor left out", result_.neither.size());
    link_section(sections, "streams", "Streams", marks_.in_order().size());
}

Page::FactsOf Page::stream_facts() const {
    FactsOf facts;
    const auto count = [&facts](const std::vector<ServiceResult>& services) {
        for (const ServiceResult& service : services)
            if (!service.is_clone && !service.outputs.empty())
                ++facts[service.stream].placed;
    };
    for (std::size_t index = 0; index < result_.modules.size(); ++index) {
        const ModuleResult& module = result_.modules[index];
        for (const InputResult& input : module.inputs) {
            count(input.services);
            if (!input.is_tuned)
                continue;
            data receiver;
            receiver["anchor"] = module_anchor(index);
            receiver["mac"] = printable(module.mac);
            receiver["number"] = std::to_string(input.number);
            facts[input.stream].receivers.push_back(receiver);
        }
        count(module.without_input);
    }
    for (const StreamResult& stream : result_.left_out)
        facts[stream.stream].left_out += stream.services.size();
    return facts;
}

data Page::streams() const {
    FactsOf facts = stream_facts();
    list entries;
    for (const StreamMark& mark : marks_.in_order()) {
        StreamFacts& known = facts[mark.stream];
        data entry;
        set_mark(entry, mark);
        entry["stream"] = to_string(mark.stream);
        entry["placed"] = grouped(known.placed);
        entry["left_out"] = grouped(known.left_out);
        entry["any_left_out"] = known.left_out != 0;
        entry["receivers"] = known.receivers;
        entries.push_back(entry);
    }
    return entries;
}

/// The streams that the bars can show.
data Page::legend() const {
    list entries;
    for (std::size_t place = 0; place < marks_.received(); ++place) {
        data entry;
        set_mark(entry, marks_.in_order()[place]);
        entry["stream"] = to_string(marks_.in_order()[place].stream);
        entries.push_back(entry);
    }
    return entries;
}

data Page::module_entry(std::size_t index) const {
    const ModuleResult& module = result_.modules[index];
    const Load load = load_of(module);
    list outputs;
    for (const OutputResult& output : module.outputs)
        outputs.push_back(output_entry(output));
    data entry;
    entry["anchor"] = module_anchor(index);
    entry["mac"] = printable(module.mac);
    entry["model"] = std::to_string(module.model);
    entry["controller"] = module.is_controller;
    entry["inputs_used"] = grouped(inputs_of(module).tuned);
    entry["input_count"] = grouped(inputs_of(module).all);
    entry["service_total"] = grouped(services_of(module));
    entry["pids"] = grouped(module.pids);
    entry["pids_max"] = grouped(module.pids_max);
    entry["load"] = percentage(load.used, load.max);
    entry["meters"] = meters_of(module);
    entry["has_groups"] = !module.inputs.empty() || !module.without_input.empty();
    entry["groups"] = groups_of(module);
    entry["output_list"] = outputs;
    return entry;
}

data Page::input_group(const InputResult& input) const {
    data group;
    group["title"] = fmt::format("Input {}", input.number);
    group["marked"] = input.is_tuned;
    group["stream"] = input.is_tuned ? data(to_string(input.stream)) : data(false);
    if (input.is_tuned)
        set_mark(group, marks_.of(input.stream));
    group["note"] = input.is_tuned ? fmt::format("{}, {} kbit/s", services_counted(input.services.size()),
                                                 grouped(bitrate_of(input.services)))
                                   : std::string("free");
    group["services"] = service_rows(input.services, &input.stream);
    return group;
}

data Page::groups_of(const ModuleResult& module) const {
    list groups;
    for (const InputResult& input : module.inputs)
        groups.push_back(input_group(input));
    if (!module.without_input.empty()) {
        data group;
        group["title"] = "On no input";
        group["marked"] = false;
        group["stream"] = false;
        group["note"] = services_counted(module.without_input.size());
        group["services"] = service_rows(module.without_input, nullptr);
        groups.push_back(group);
    }
    return groups;
}

Page::Mix Page::mix_of(const OutputResult& output) {
    Mix mix;
    for (const ServiceResult& service : output.services)
        if (!service.is_clone && service.bitrate != 0)
            mix[service.stream] += service.bitrate;
    return mix;
}

/// The filled part of the bar is the engine's figure; the streams share it out, also where they do not add up
/// to it.
list Page::segments_of(const OutputResult& output) const {
    const Mix mix = mix_of(output);
    std::uint64_t sum = 0;
    for (const auto& [stream, bitrate] : mix)
        sum += bitrate;
    const double filled = share(output.bitrate, output.bitrate_max);
    list segments;
    double x = 0;
    for (const auto& [stream, bitrate] : mix) {
        const StreamMark& mark = marks_.of(stream);
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

data Page::output_entry(const OutputResult& output) const {
    std::string spoken = fmt::format("Output {}: {} of {} kbit/s", output.number, grouped(output.bitrate),
                                     grouped(output.bitrate_max));
    for (const auto& [stream, bitrate] : mix_of(output))
        spoken += fmt::format(", stream {} {}", marks_.of(stream).code, grouped(bitrate));
    const list segments = segments_of(output);
    data entry;
    entry["number"] = std::to_string(output.number);
    entry["percentage"] = percentage(output.bitrate, output.bitrate_max);
    entry["bitrate"] = grouped(output.bitrate);
    entry["bitrate_max"] = grouped(output.bitrate_max);
    entry["service_count"] = grouped(output.service_count);
    entry["service_max"] = grouped(output.service_max);
    entry["spoken"] = spoken;
    entry["has_segments"] = !segments.empty();
    entry["segments"] = segments;
    return entry;
}

bool any_reason(const std::vector<StreamResult>& streams) {
    return std::any_of(streams.begin(), streams.end(), [](const StreamResult& stream) {
        return std::any_of(stream.services.begin(), stream.services.end(),
                           [](const ServiceResult& service) { return !service.reason.empty(); });
    });
}

data Page::list_section(const std::string& anchor, const std::string& title, std::size_t number,
                        const std::string& explanation, const std::vector<StreamResult>& streams) const {
    const bool has_reasons = any_reason(streams);
    list groups;
    for (const StreamResult& stream : streams) {
        data group;
        group["stream"] = to_string(stream.stream);
        set_mark(group, marks_.of(stream.stream));
        group["note"] = services_counted(stream.services.size());
        group["services"] = service_rows(stream.services, &stream.stream);
        groups.push_back(group);
    }
    data section;
    section["anchor"] = anchor;
    section["title"] = title;
    section["number"] = grouped(number);
    section["explanation"] = explanation;
    section["caption"] = title + ", by stream";
    section["has_reasons"] = has_reasons;
    section["columns"] = has_reasons ? "4" : "3";
    section["groups"] = groups;
    return section;
}

std::vector<StreamResult> by_stream(const std::vector<ServiceResult>& services) {
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

data Page::lists() const {
    list sections;
    if (!result_.left_out.empty())
        sections.push_back(list_section("left-out", "Left out", result_.counts.left_out,
                                        "Services that the engine has left out.", result_.left_out));
    if (!result_.clones_waiting.empty())
        sections.push_back(list_section("waiting", "Clones waiting", result_.clones_waiting.size(),
                                        "Clones that found no place beside a parent.",
                                        by_stream(result_.clones_waiting)));
    if (!result_.neither.empty())
        sections.push_back(list_section("neither", "Neither placed nor left out", result_.neither.size(),
                                        "Services that the engine's exchanges have lost.",
                                        by_stream(result_.neither)));
    return sections;
}

std::string verdict(const Counts& counts) {
    std::string text =
        counts.left_out != 0
            ? fmt::format("{} of {} left out", grouped(counts.left_out), services_counted(counts.loaded))
            : fmt::format("{} of {} placed", grouped(counts.placed), services_counted(counts.loaded));
    if (counts.neither != 0)
        text += fmt::format(", {} neither placed nor left out", grouped(counts.neither));
    if (counts.clones_waiting != 0)
        text += fmt::format(", {} waiting", counted(counts.clones_waiting, "clone", "clones"));
    return text;
}

PageFrame Page::frame() const {
    const Counts& counts = result_.counts;
    PageFrame frame;
    frame.title = result_.name.empty() ? "Placement" : "Placement of " + result_.name;
    frame.skip = "Skip to the plan";
    frame.eyebrow = "Head-end placement";
    if (!result_.name.empty())
        frame.names = {result_.name};
    frame.verdict = verdict(counts);
    frame.is_good = counts.placed == counts.loaded && counts.left_out == 0 && counts.clones_waiting == 0 &&
                    result_.warnings.empty();
    frame.tiles = tiles();
    add_audit(frame, "audit", "What does not add up", result_.warnings);
    link(frame.sections);
    frame.footer =
        "A stream is written as ONID/TSID. Its letters, colour and pattern are the same in all of the "
        "page. A clone stands where its parent stands and costs neither bitrate nor a place on the "
        "output.";
    return frame;
}

data Page::facts() const {
    list modules;
    for (std::size_t index = 0; index < result_.modules.size(); ++index)
        modules.push_back(module_entry(index));
    data facts;
    facts["swatch"] = swatch_template;
    facts["segments_of_bar"] = segments_template;
    facts["has_modules"] = !result_.modules.empty();
    facts["modules"] = modules;
    facts["has_streams"] = !marks_.in_order().empty();
    facts["streams"] = streams();
    // Above, looks come again, and the list would be longer than the table under it.
    facts["has_legend"] = marks_.received() <= stream_colours * stream_patterns;
    facts["legend"] = legend();
    facts["lists"] = lists();
    return facts;
}

} // namespace

std::string html_page(const Result& result) {
    const Page page(result);
    return framed(page.frame(), page_template, page.facts());
}

} // namespace zarven::tool
