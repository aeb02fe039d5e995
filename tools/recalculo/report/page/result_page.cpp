// The facts of a result are put into the names that result_page.mustache knows. As page_frame.cpp says, each
// object sets all of its names, and texts lose what no page can show.

#include "report/page/result_page.h"

#include <cstdint>
#include <string>

#include <fmt/format.h>

#include "base/utf8.h"
#include "report/causes_text.h"
#include "report/page/page_files.h"
#include "report/page/page_frame.h"
#include "report/page/result_causes.h"
#include "report/page/result_groups.h"
#include "report/page/result_lists.h"
#include "report/page/result_modules.h"
#include "report/page/result_parts.h"
#include "report/page/result_streams.h"
#include "report/page/result_unplaced.h"
#include "report/stream_marks.h"
#include "report/summary_text.h"

namespace zarven::tool {

namespace {

using kainjow::mustache::data;
using kainjow::mustache::list;

constexpr const char* swatch_template =
    R"(<svg class="swatch" aria-hidden="true"><rect class="c{{colour}}" width="100%" height="100%"/>{{#pattern}})"
    R"(<rect class="p{{pattern}}" width="100%" height="100%"/>{{/pattern}}</svg>)";

constexpr const char* segments_template =
    R"({{#segments}}<rect class="c{{colour}}" x="{{x}}%" width="{{width}}%" height="100%"/>{{#pattern}})"
    R"(<rect class="p{{pattern}}" x="{{x}}%" width="{{width}}%" height="100%"/>{{/pattern}})"
    R"(<rect class="edge" x="{{end}}%" width="1" height="100%"/>{{/segments}})";

list tiles_of(const Result& result) {
    const InputCounts inputs = inputs_of(result);
    std::uint64_t pids = 0;
    std::uint64_t pids_max = 0;
    Load load;
    for (const ModuleResult& module : result.modules) {
        pids += module.pids;
        pids_max += module.pids_max;
        load.used += load_of(module).used;
        load.max += load_of(module).max;
    }
    const Counts& counts = result.counts;
    const auto of = [](std::uint64_t max, const char* unit) {
        return fmt::format("of {}{}", grouped(max), unit);
    };
    list tiles;
    tiles.push_back(tile("Placed", grouped(counts.placed), of(counts.loaded, " loaded"),
                         share_text(counts.placed, counts.loaded)));
    tiles.push_back(
        tile("Left out", grouped(counts.left_out),
             result.left_out.empty() ? "" : "in " + counted(result.left_out.size(), "stream", "streams"),
             share_text(counts.left_out, counts.loaded)));
    if (counts.neither != 0)
        tiles.push_back(tile("Neither", grouped(counts.neither), "placed nor left out", false));
    if (counts.musts != 0)
        tiles.push_back(tile("Musts placed", grouped(counts.musts_placed), of(counts.musts, ""),
                             share_text(counts.musts_placed, counts.musts)));
    tiles.push_back(
        tile("Inputs in use", grouped(inputs.used), of(inputs.all, ""), share_text(inputs.used, inputs.all)));
    tiles.push_back(
        tile("Output bitrate", grouped(load.used), of(load.max, " kbit/s"), share_text(load.used, load.max)));
    tiles.push_back(tile("PIDs in use", grouped(pids), of(pids_max, ""), share_text(pids, pids_max)));
    if (counts.not_asked_for != 0)
        tiles.push_back(tile("Not asked for", grouped(counts.not_asked_for), "of the head-end", false));
    if (counts.clones_attached + counts.clones_waiting != 0)
        tiles.push_back(tile("Clones attached", grouped(counts.clones_attached),
                             fmt::format("{} waiting", grouped(counts.clones_waiting)), false));
    return tiles;
}

std::size_t outputs_in_use(const Result& result) {
    std::size_t number = 0;
    for (const ModuleResult& module : result.modules)
        for (const OutputResult& output : module.outputs)
            number += output.services.empty() ? 0 : 1;
    return number;
}

void add_links(list& sections, const Result& result, const StreamMarks& marks) {
    if (!causes_of(result).empty())
        sections.push_back(section_link("causes", "Why services are not placed", false));
    link_section(sections, "glance", "At a glance", result.modules.size());
    link_section(sections, "modules", "Modules", result.modules.size());
    link_section(sections, left_out_section.anchor, left_out_section.title, result.counts.left_out);
    link_section(sections, waiting_section.anchor, waiting_section.title, result.clones_waiting.size());
    link_section(sections, neither_section.anchor, neither_section.title, result.neither.size());
    link_section(sections, "groups", "Groups", result.groups.size());
    link_section(sections, "variants", "One of several", result.variants.size());
    link_section(sections, "streams", "Streams", marks.in_order().size());
    link_section(sections, "service-lists", "Service lists of the outputs", outputs_in_use(result));
}

std::string verdict(const Result& result) {
    const Counts& counts = result.counts;
    std::string text =
        counts.left_out != 0
            ? fmt::format("{} of {} left out", grouped(counts.left_out), services_counted(counts.loaded))
            : fmt::format("{} of {} placed", grouped(counts.placed), services_counted(counts.loaded));
    if (counts.neither != 0)
        text += fmt::format(", {} neither placed nor left out", grouped(counts.neither));
    if (counts.clones_waiting != 0)
        text += fmt::format(", {} waiting", counted(counts.clones_waiting, "clone", "clones"));
    if (has_broken(result))
        text += ", " + to_string(broken_in(result));
    return text;
}

PageFrame frame_of(const Result& result, const StreamMarks& marks) {
    const Counts& counts = result.counts;
    PageFrame frame;
    frame.title = result.name.empty() ? "Placement" : "Placement of " + result.name;
    frame.skip = "Skip to the plan";
    frame.eyebrow = "Head-end placement";
    if (!result.name.empty())
        frame.names = {result.name};
    frame.verdict = verdict(result);
    frame.is_good = counts.placed == counts.loaded && counts.left_out == 0 && counts.clones_waiting == 0 &&
                    !has_broken(result);
    frame.tiles = tiles_of(result);
    frame.remark = rates_in_figures(counts.rates);
    Anchors anchors;
    for (std::size_t index = 0; index < result.modules.size(); ++index)
        anchors.emplace(result.modules[index].mac, module_anchor(index));
    add_broken(frame, "broken", "Broken", result.findings, anchors);
    add_links(frame.sections, result, marks);
    add_notes(frame, "notes", "Notes", result.findings, anchors);
    add_cautions(frame, "cautions", "Cautions", cautions_of(result), anchors);
    frame.footer =
        "A stream is written as ONID/TSID. Its letters, colour and pattern are the same in all of the "
        "page. A clone stands where its parent stands and costs neither bitrate nor a place on the "
        "output.";
    return frame;
}

data facts_of(const Result& result, const StreamMarks& marks) {
    data facts;
    facts["swatch"] = swatch_template;
    facts["segments_of_bar"] = segments_template;
    const std::vector<CauseCount> causes = causes_of(result);
    facts["has_causes"] = !causes.empty();
    facts["causes"] = data(cause_entries(result, causes));
    facts["advice"] = text_or_nothing(printable(advice_sentence(result)));
    facts["has_modules"] = !result.modules.empty();
    facts["modules"] = data(module_entries(result, marks));
    facts["has_streams"] = !marks.in_order().empty();
    facts["streams"] = data(stream_entries(result, marks));
    // Above, looks come again, and the list would be longer than the table under it.
    facts["has_legend"] = marks.received() <= stream_colours * stream_patterns;
    facts["legend"] = data(legend_entries(marks));
    facts["lists"] = data(unplaced_sections(result, marks));
    facts["has_planned_groups"] = !result.groups.empty();
    facts["planned_groups"] = data(planned_groups(result));
    facts["has_asked_variants"] = !result.variants.empty();
    facts["asked_variants"] = data(asked_variants(result));
    const list service_lists = list_entries(result);
    facts["has_service_lists"] = !service_lists.empty();
    facts["service_lists"] = data(service_lists);
    facts["service_list_tables"] = service_lists_template;
    return facts;
}

} // namespace

std::string result_page(const Result& result) {
    const StreamMarks marks(result);
    return framed(frame_of(result, marks), result_page_template, facts_of(result, marks));
}

} // namespace zarven::tool
