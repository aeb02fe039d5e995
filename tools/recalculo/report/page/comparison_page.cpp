// The facts of a comparison are put into the names that comparison_page.mustache knows. Services have tables
// of their own; inputs, limits and modules share one form of table.

#include "report/page/comparison_page.h"

#include <tuple>
#include <utility>

#include <fmt/format.h>

#include "base/utf8.h"
#include "report/change_text.h"
#include "report/page/page_files.h"
#include "report/page/page_frame.h"

namespace zarven::tool {

namespace {

using kainjow::mustache::data;
using kainjow::mustache::list;

constexpr const char* place_template =
    R"(<span class="place"><span class="mac">{{mac}}</span> {{#module_label}}<bdi class="note">{{module_label}}</bdi> {{/module_label}}<span class="ports">{{input}}, {{outputs}}</span></span>)";

// ---- Services -----------------------------------------------------------------------------------------

/// The MAC of a module, and its label beside it.
void set_module(data& entry, const std::string& mac, const Comparison& comparison) {
    const auto label = comparison.labels.find(mac);
    entry["mac"] = printable(mac);
    entry["module_label"] = text_or_nothing(label == comparison.labels.end() ? "" : printable(label->second));
}

list places(const std::vector<Place>& places, const Comparison& comparison) {
    list entries;
    for (const Place& place : places) {
        data entry;
        set_module(entry, place.mac, comparison);
        entry["input"] = place.input == 0 ? "no input" : fmt::format("input {}", place.input);
        entry["outputs"] =
            fmt::format("output{} {}", place.outputs.size() == 1 ? "" : "s", fmt::join(place.outputs, ", "));
        entries.push_back(entry);
    }
    return entries;
}

/// What the search looks for.
std::string macs_of(const ServiceChange& change, const Comparison& comparison) {
    std::string macs;
    for (const auto* places : {&change.before, &change.after})
        for (const Place& place : *places)
            macs += printable(comparison.name_of(place.mac)) + " ";
    return macs;
}

data change_row(const ServiceChange& change, const Comparison& comparison) {
    data row;
    row["stream"] = to_string(change.service.stream);
    row["macs"] = macs_of(change, comparison);
    row["lcn"] = std::to_string(change.service.lcn);
    row["name"] = printable(change.service.name);
    row["tags"] = data(tags_of(change.service));
    row["bitrate"] = grouped(change.service.bitrate);
    row["before"] = data(places(change.before, comparison));
    row["absent_before"] = std::string(to_string(change.absence_before));
    row["after"] = data(places(change.after, comparison));
    row["absent_after"] = std::string(to_string(change.absence_after));
    return row;
}

struct Changes {
    Heading heading;
    const std::vector<ServiceChange>& services;
};

std::vector<Changes> changes_of(const Comparison& comparison) {
    return {{{"gained", "Gained", "Services that are placed after and were not before."}, comparison.gained},
            {{"lost", "Lost", "Services that were placed before and are wanted, but not placed after."},
             comparison.lost},
            {{"added", "Added", "Services that are placed after and were not in the line-up before."},
             comparison.added},
            {{"removed", "Removed", "Services that were placed before and are not in the line-up after."},
             comparison.removed},
            {{"moved", "Moved", "Services that are placed in both, with another module, input or output."},
             comparison.moved}};
}

data changes_entry(const Changes& changes, const Comparison& comparison) {
    list rows;
    for (const ServiceChange& change : changes.services)
        rows.push_back(change_row(change, comparison));
    data entry;
    entry["found"] = changes.heading.anchor;
    entry["services"] = rows;
    return entry;
}

// ---- Inputs, limits and modules -----------------------------------------------------------------------

struct PageCell {
    std::string text;
    bool is_number = false;
    /// Left away where there is no room for it, as on a phone.
    bool is_roomy = false;
};

list cells(const std::vector<PageCell>& row, const char* name) {
    list entries;
    for (const PageCell& cell : row) {
        data entry;
        entry[name] = cell.text;
        entry["is_number"] = cell.is_number;
        entry["is_roomy"] = cell.is_roomy;
        entry["is_plain"] = !cell.is_number && !cell.is_roomy;
        entries.push_back(entry);
    }
    return entries;
}

/// A table of modules with further columns, and rows in groups of which none is empty.
class ModuleTable {
public:
    ModuleTable(const Comparison& comparison, Heading heading, std::vector<PageCell> columns)
        : comparison_(comparison), heading_(std::move(heading)), columns_(std::move(columns)) {}

    template <class Entry, class CellsOf>
    void add(const char* title, const std::vector<Entry>& entries, CellsOf cells_of) {
        if (entries.empty())
            return;
        list rows;
        for (const Entry& entry : entries) {
            data row;
            set_module(row, mac_of(entry), comparison_);
            row["cells"] = data(cells(cells_of(entry), "text"));
            rows.push_back(row);
        }
        data group;
        group["title"] = title;
        group["number"] = grouped(entries.size());
        group["width"] = std::to_string(columns_.size() + 1);
        group["rows"] = rows;
        groups_.push_back(group);
        number_ += entries.size();
    }

    void put_into(list& tables, list& sections) const {
        data table;
        table["caption"] = std::string(heading_.title) + ", by what became of them";
        table["columns"] = data(cells(columns_, "name"));
        table["groups"] = groups_;
        add_listing(tables, sections, heading_, number_, std::move(table));
    }

private:
    static const std::string& mac_of(const std::string& mac) { return mac; }
    static const std::string& mac_of(const ChangeStep& step) { return step.input.mac; }
    template <class Entry> static const std::string& mac_of(const Entry& entry) { return entry.mac; }

    const Comparison& comparison_;
    Heading heading_;
    std::vector<PageCell> columns_;
    std::size_t number_ = 0;
    list groups_{};
};

ModuleTable inputs_table(const Comparison& comparison) {
    ModuleTable table(comparison, {"inputs", "Inputs", "Inputs that are not tuned as before."},
                      {{"Input", true}, {"Before"}, {"After"}});
    const auto cells_of = [](const InputChange& change) -> std::vector<PageCell> {
        return {{std::to_string(change.number), true},
                {stream_or_free(change.was_tuned, change.before)},
                {stream_or_free(change.is_tuned, change.after)}};
    };
    table.add("Freed", comparison.inputs_freed, cells_of);
    table.add("Taken", comparison.inputs_taken, cells_of);
    table.add("Tuned to another stream", comparison.inputs_retuned, cells_of);
    return table;
}

std::string limit_name(const TightLimit& limit) {
    switch (limit.kind) {
    case TightKind::inputs:
        return "Inputs";
    case TightKind::pids:
        return "PIDs";
    case TightKind::bitrate:
        break;
    }
    return fmt::format("Output {}, kbit/s", limit.output);
}

ModuleTable limits_table(const Comparison& comparison) {
    ModuleTable table(
        comparison,
        {"limits", "Limits",
         "Limits that became tight or no longer are, with the figures after: an output or a PID budget "
         "is tight from 95 % on, a module's inputs are when none is free."},
        {{"Limit"}, {"In use", true}, {"Of", true}, {"Share", true}});
    const auto cells_of = [](const TightLimit& limit) -> std::vector<PageCell> {
        return {{limit_name(limit)},
                {grouped(limit.used), true},
                {grouped(limit.max), true},
                {percentage(limit.used, limit.max), true}};
    };
    table.add("Became tight", comparison.became_tight, cells_of);
    table.add("No longer tight", comparison.relaxed, cells_of);
    return table;
}

/// The step with which a service comes on the air again.
std::size_t return_of(const ServiceResult& service, const ChangeOrder& order) {
    std::size_t number = 0;
    for (const ChangeStep& step : order.steps) {
        ++number;
        for (const ServiceResult& back : step.comes_back)
            if (key_of(back) == key_of(service))
                return number;
    }
    return number;
}

/// LCN and name of each service that goes off the air, and until when.
std::string interruptions_of(const ChangeStep& step, const ChangeOrder& order) {
    std::vector<std::string> texts;
    for (const ServiceResult& service : step.goes_off)
        texts.push_back(
            fmt::format("{} {} (step {})", service.lcn, printable(service.name), return_of(service, order)));
    return fmt::format("{}", fmt::join(texts, ", "));
}

ModuleTable order_table(const Comparison& comparison) {
    ModuleTable table(
        comparison, {"order", "Change on air", meaning_of_steps},
        {{"Step", true}, {"Input", true}, {"Before", false, true}, {"After"}, {"Off the air until"}});
    std::size_t number = 0;
    table.add(comparison.order.is_least ? "The best order" : "The best order that was found",
              comparison.order.steps, [&](const ChangeStep& step) -> std::vector<PageCell> {
                  return {{std::to_string(++number), true},
                          {std::to_string(step.input.number), true},
                          {stream_or_free(step.input.was_tuned, step.input.before), false, true},
                          {stream_or_free(step.input.is_tuned, step.input.after)},
                          {interruptions_of(step, comparison.order)}};
              });
    return table;
}

ModuleTable modules_table(const Comparison& comparison) {
    ModuleTable table(comparison, {"modules", "Modules", "Modules that only one side has."}, {});
    const auto no_cells = [](const std::string&) { return std::vector<PageCell>(); };
    table.add("Gone", comparison.modules_gone, no_cells);
    table.add("New", comparison.modules_new, no_cells);
    return table;
}

// ---- Summary ------------------------------------------------------------------------------------------

/// `is_better` is for more.
data figure(const char* label, std::size_t before, std::size_t after, bool is_better) {
    data entry;
    entry["label"] = label;
    entry["before"] = grouped(before);
    entry["after"] = grouped(after);
    entry["difference"] = after == before  ? "0"
                          : after > before ? "+" + grouped(after - before)
                                           : "−" + grouped(before - after);
    entry["is_worse"] = is_better ? after < before : after > before;
    return entry;
}

list figures_of(const Counts& before, const Counts& after) {
    list figures;
    figures.push_back(figure("Services loaded", before.loaded, after.loaded, true));
    figures.push_back(figure("Placed", before.placed, after.placed, true));
    figures.push_back(figure("Left out", before.left_out, after.left_out, false));
    if (before.neither + after.neither != 0)
        figures.push_back(figure("Neither placed nor left out", before.neither, after.neither, false));
    if (before.not_asked_for + after.not_asked_for != 0)
        figures.push_back(figure("Not asked for", before.not_asked_for, after.not_asked_for, false));
    const auto clones = [](const Counts& counts) { return counts.clones_attached + counts.clones_waiting; };
    if (clones(before) + clones(after) == 0)
        return figures;
    figures.push_back(figure("Clones attached", before.clones_attached, after.clones_attached, true));
    figures.push_back(figure("Clones waiting", before.clones_waiting, after.clones_waiting, false));
    return figures;
}

list figures_of(const Side& before, const Side& after) {
    list figures = figures_of(before.counts, after.counts);
    const std::size_t broken_before = broken_among(before.findings).all();
    const std::size_t broken_after = broken_among(after.findings).all();
    if (broken_before + broken_after != 0)
        figures.push_back(figure("Broken", broken_before, broken_after, false));
    return figures;
}

list tiles_of(const Comparison& comparison) {
    const auto placed = [](const char* label, const Counts& counts) {
        return tile(label, grouped(counts.placed), fmt::format("of {} loaded", grouped(counts.loaded)),
                    share_text(counts.placed, counts.loaded));
    };
    list tiles;
    tiles.push_back(placed("Placed before", comparison.before.counts));
    tiles.push_back(placed("Placed after", comparison.after.counts));
    const bool is_lineup_the_same = comparison.added.empty() && comparison.removed.empty();
    for (const Changes& changes : changes_of(comparison))
        if (!is_lineup_the_same ||
            (&changes.services != &comparison.added && &changes.services != &comparison.removed))
            tiles.push_back(tile(changes.heading.title, grouped(changes.services.size()), "", false));
    tiles.push_back(tile("In the same place", grouped(comparison.unmoved), "", false));
    tiles.push_back(tile("Placed in neither", grouped(comparison.never_placed), "", false));
    return tiles;
}

std::string verdict_on(const Comparison& comparison) {
    std::string verdict;
    bool is_any = false;
    const bool is_lineup_the_same = comparison.added.empty() && comparison.removed.empty();
    for (const auto& [number, word, is_told] : {std::tuple(comparison.gained.size(), "gained", true),
                                                {comparison.lost.size(), "lost", true},
                                                {comparison.added.size(), "added", !is_lineup_the_same},
                                                {comparison.removed.size(), "removed", !is_lineup_the_same},
                                                {comparison.moved.size(), "moved", true}}) {
        is_any = is_any || number != 0;
        if (is_told)
            verdict += fmt::format("{}{} {}", verdict.empty() ? "" : ", ", grouped(number), word);
    }
    return is_any ? verdict : "Every service stands where it stood";
}

/// Once if both sides have the same; a side without a name is called by its file.
std::vector<std::string> names_of(const Comparison& comparison, const ComparedFiles& files) {
    const std::string& before = comparison.before.name.empty() ? files.before : comparison.before.name;
    const std::string& after = comparison.after.name.empty() ? files.after : comparison.after.name;
    if (before == after)
        return {before};
    return {before, after};
}

PageFrame frame_of(const Comparison& comparison, const ComparedFiles& files) {
    PageFrame frame;
    frame.names = names_of(comparison, files);
    frame.title = fmt::format("Comparison of {}", fmt::join(frame.names, " and "));
    frame.skip = "Skip to the comparison";
    frame.eyebrow = "Two placements compared";
    frame.verdict = verdict_on(comparison);
    frame.is_good = comparison.lost.empty() && broken_among(comparison.after.findings).all() == 0;
    frame.tiles = tiles_of(comparison);
    frame.footer =
        "A stream is written as ONID/TSID. A service is the same in both placements if stream, LCN and SID "
        "are, or else its name. Clones stand with their parents and are not told.";
    return frame;
}

} // namespace

std::string comparison_page(const Comparison& comparison, const ComparedFiles& files) {
    PageFrame frame = frame_of(comparison, files);
    add_broken(frame, "broken-before", "Broken before", comparison.before.findings);
    add_broken(frame, "broken-after", "Broken after", comparison.after.findings);
    frame.sections.push_back(section_link("sides", "Before and after", false));
    list changes;
    for (const Changes& one : changes_of(comparison))
        add_listing(changes, frame.sections, one.heading, one.services.size(),
                    changes_entry(one, comparison));
    list tables;
    for (const ModuleTable& table : {order_table(comparison), inputs_table(comparison),
                                     limits_table(comparison), modules_table(comparison)})
        table.put_into(tables, frame.sections);
    add_notes(frame, "notes-before", "Notes before", comparison.before.findings);
    add_notes(frame, "notes-after", "Notes after", comparison.after.findings);
    add_cautions(frame, "cautions-after", "Cautions after", comparison.after.cautions);
    data facts;
    facts["place"] = place_template;
    facts["file_before"] = printable(files.before);
    facts["file_after"] = printable(files.after);
    facts["name_before"] = printable(comparison.before.name);
    facts["name_after"] = printable(comparison.after.name);
    facts["figures"] = figures_of(comparison.before, comparison.after);
    facts["changes"] = changes;
    facts["tables"] = tables;
    return framed(frame, comparison_page_template, std::move(facts));
}

} // namespace zarven::tool
