// All lists of services are tables of one form; what there is to say of each service is one text.

#include "report/page/choice_page.h"

#include <utility>
#include <vector>

#include <fmt/format.h>

#include "base/utf8.h"
#include "report/choice_text.h"
#include "report/comparison_text.h"
#include "report/groups_text.h"
#include "report/page/page_files.h"
#include "report/page/page_frame.h"

namespace zarven::tool {

namespace {

using kainjow::mustache::data;
using kainjow::mustache::list;

const TextStyle page_style_of_texts;

std::string text_of(const std::vector<Place>& places, const Labels& labels) {
    return printable(places_text(places, labels, page_style_of_texts));
}

std::string macs_of(const std::vector<Place>& places, const Labels& labels) {
    std::string macs;
    for (const Place& place : places)
        macs += printable(module_name(place.mac, labels)) + " ";
    return macs;
}

/// A list of services while it is made.
class ServiceTable {
public:
    /// Without `column` there is nothing more to say of a service.
    ServiceTable(Heading heading, const char* column, bool has_values = false)
        : heading_(std::move(heading)), column_(column), has_values_(has_values) {}

    void add(const ServiceResult& service, const std::string& text, const std::string& macs = "") {
        add({service, 0, false}, text, macs);
    }

    void add(const ValuedService& valued, const std::string& text, const std::string& macs = "") {
        const ServiceResult& service = valued.service;
        list tags = tags_of(service);
        if (valued.must)
            tags.push_back("must");
        data row;
        row["stream"] = to_string(service.stream);
        row["macs"] = macs;
        row["lcn"] = std::to_string(service.lcn);
        row["name"] = printable(service.name);
        row["tags"] = data(tags);
        row["bitrate"] = grouped(service.bitrate);
        row["has_values"] = has_values_;
        row["value"] = std::to_string(valued.value);
        row["has_text"] = column_ != nullptr;
        row["text"] = text;
        rows_.push_back(row);
        ++number_;
    }

    void put_into(list& lists, list& sections) const {
        data table;
        table["has_values"] = has_values_;
        table["column"] = column_ == nullptr ? data(false) : data(std::string(column_));
        table["services"] = rows_;
        add_listing(lists, sections, heading_, number_, std::move(table));
    }

private:
    Heading heading_;
    const char* column_;
    bool has_values_;
    list rows_{};
    std::size_t number_ = 0;
};

std::vector<ServiceTable> tables_of(const ChoiceReport& report, const std::string& kept) {
    ServiceTable missed({"missed", "Must be placed and is not", proof_of_musts(report)}, "Why");
    for (const MissedMust& one : report.missed)
        missed.add(one.service, printable(one.service.reason));
    ServiceTable withheld({"withheld", "Withheld", "Services not to ask for."}, nullptr, report.has_values);
    for (const ValuedService& service : report.withheld)
        withheld.add(service, "");
    ServiceTable variants({"variants", "One of several", "What is asked for of each group of variants."},
                          "Which it is");
    for (const VariantResult& variant : report.variants)
        variants.add(variant.service, printable(variant_in_words(variant)));
    ServiceTable gained({"gained", "Gained", "Placed as chosen, and not with everything asked for."}, "Where",
                        report.has_values);
    for (const ValuedChange& change : report.gained)
        gained.add(change.service, text_of(change.places, report.labels),
                   macs_of(change.places, report.labels));
    ServiceTable lost({"lost", "Lost", "Placed with everything asked for, and not as chosen."},
                      "Where it was", report.has_values);
    for (const ValuedChange& change : report.lost)
        lost.add(change.service,
                 fmt::format("{} → {}", text_of(change.places, report.labels),
                             change.is_withheld ? "withheld" : "left out"),
                 macs_of(change.places, report.labels));
    ServiceTable moved(
        {"moved", "Moved", report.moves ? moves_in_figures(*report.moves, printable(kept)) + "." : ""},
        "From where to where");
    if (report.moves)
        for (const ServiceChange& change : report.moves->moved)
            moved.add(change.service,
                      fmt::format("{} → {}", text_of(change.before, report.labels),
                                  text_of(change.after, report.labels)),
                      macs_of(change.before, report.labels) + macs_of(change.after, report.labels));
    return {missed, withheld, variants, gained, lost, moved};
}

data figure(const char* label, std::uint64_t all, std::uint64_t chosen, const Reach* reach) {
    data entry;
    entry["label"] = label;
    entry["all"] = grouped(all);
    entry["chosen"] = grouped(chosen);
    entry["most"] = reach == nullptr ? "" : grouped(reach->most);
    entry["wanted"] = reach == nullptr ? "" : grouped(reach->wanted);
    return entry;
}

list figures_of(const ChoiceReport& report) {
    list figures;
    if (report.musts.wanted != 0)
        figures.push_back(figure("Musts placed", report.all.musts, report.chosen.musts, &report.musts));
    if (report.has_values)
        figures.push_back(figure("Value", report.all.value, report.chosen.value, &report.value));
    figures.push_back(figure("Services placed", report.all.counts.placed, report.chosen.counts.placed,
                             report.has_values ? nullptr : &report.value));
    return figures;
}

list tiles_of(const ChoiceReport& report) {
    const auto of = [](std::uint64_t all) { return fmt::format("of {}", grouped(all)); };
    list tiles;
    if (report.musts.wanted != 0)
        tiles.push_back(tile("Musts placed", grouped(report.chosen.musts), of(report.musts.wanted),
                             share_text(report.chosen.musts, report.musts.wanted)));
    if (report.has_values)
        tiles.push_back(tile("Value", grouped(report.chosen.value), of(report.value.wanted),
                             share_text(report.chosen.value, report.value.wanted)));
    const std::size_t services = report.all.counts.loaded;
    tiles.push_back(tile("Placed", grouped(report.chosen.counts.placed), of(services),
                         share_text(report.chosen.counts.placed, services)));
    tiles.push_back(tile("Withheld", grouped(report.withheld.size()), of(services), false));
    tiles.push_back(tile("Gained", grouped(report.gained.size()), "", false));
    tiles.push_back(tile("Lost", grouped(report.lost.size()), "", false));
    if (report.moves)
        tiles.push_back(tile("Moved", grouped(report.moves->moved.size()), "", false));
    return tiles;
}

} // namespace

std::string choice_page(const ChoiceReport& report, const std::string& kept) {
    PageFrame frame;
    frame.title = report.name.empty() ? "Choice of services" : "Choice of services for " + report.name;
    frame.skip = "Skip to the choice";
    frame.eyebrow = "What to ask for";
    if (!report.name.empty())
        frame.names = {report.name};
    frame.verdict = verdict_of(report);
    frame.is_good = report.missed.empty() && broken_among(report.chosen.findings).all() == 0;
    frame.tiles = tiles_of(report);
    frame.footer =
        "A stream is written as ONID/TSID. A service that is withheld stays in the head-end, and the "
        "engine is not asked for it; its clones go with it.";
    add_broken(frame, "broken-all", "Broken with everything asked for", report.all.findings);
    add_broken(frame, "broken", "Broken", report.chosen.findings);
    frame.sections.push_back(section_link("figures", "In figures", false));
    list lists;
    for (const ServiceTable& table : tables_of(report, kept))
        table.put_into(lists, frame.sections);
    data facts;
    add_notes(frame, "notes-all", "Notes with everything asked for", report.all.findings);
    add_notes(frame, "notes", "Notes", report.chosen.findings);
    add_cautions(frame, "cautions", "Cautions", report.chosen.cautions);
    facts["figures"] = figures_of(report);
    if (const std::string doubt = doubt_of(report); !doubt.empty())
        facts["doubt"] = doubt;
    if (const std::string remainder = remainder_of(report); !remainder.empty())
        facts["remainder"] = remainder;
    facts["searched"] = fmt::format("{} tried, {} of the engine.", counted(report.states, "state", "states"),
                                    counted(report.engine_runs, "run", "runs"));
    facts["lists"] = lists;
    return framed(frame, choice_page_template, std::move(facts));
}

} // namespace zarven::tool
