// One row for each failure, with the names of those that it loses; the worst moves stand below.

#include "report/page/drill_page.h"

#include <utility>
#include <vector>

#include <fmt/format.h>

#include "base/utf8.h"
#include "report/comparison_text.h"
#include "report/drill_text.h"
#include "report/page/page_files.h"
#include "report/page/page_frame.h"
#include "report/sizing_text.h"
#include "report/summary_text.h"

namespace zarven::tool {

namespace {

using kainjow::mustache::data;
using kainjow::mustache::list;

std::string names_of(const std::vector<DrilledService>& services) {
    std::vector<std::string> names;
    for (const DrilledService& one : services)
        names.push_back(
            fmt::format("{} {}{}", one.service.lcn, printable(one.service.name), one.must ? " (must)" : ""));
    return fmt::format("{}", fmt::join(names, ", "));
}

std::string remark_of(const DrilledFailure& failure) {
    std::vector<std::string> parts;
    const auto add = [&parts](const char* title, const std::string& text) {
        if (!text.empty())
            parts.push_back(title + text);
    };
    add("", remark_on(failure));
    add("", printable(failure.problem));
    add("Lost: ", names_of(failure.lost));
    add("Lost besides: ", names_of(failure.lost_besides));
    return fmt::format("{}", fmt::join(parts, ". "));
}

list failures_of(const Drill& drill) {
    list rows;
    for (const DrilledFailure& failure : drill.failures) {
        data row;
        row["part"] = printable(part_text(failure.part));
        row["mac"] = printable(failure.part.mac);
        row["stream"] = failure.part.kind == PartKind::module ? "" : to_string(failure.part.stream);
        row["off_air"] = grouped(failure.off_air());
        row["saved"] = grouped(failure.saved.size());
        row["lost"] = grouped(failure.lost.size());
        row["besides"] = grouped(failure.lost_besides.size());
        row["has_musts"] = drill.musts != 0;
        row["musts"] = grouped(failure.musts_lost());
        row["moved"] = grouped(failure.moved);
        row["gained"] = grouped(failure.gained.size());
        row["remark"] = remark_of(failure);
        rows.push_back(row);
    }
    return rows;
}

list moved_of(const Drill& drill) {
    const TextStyle style;
    list rows;
    for (const ServiceChange& change : drill.worst_moved) {
        data row;
        row["lcn"] = std::to_string(change.service.lcn);
        row["name"] = printable(change.service.name);
        row["stream"] = to_string(change.service.stream);
        row["places"] = fmt::format("{} → {}", printable(places_text(change.before, drill.labels, style)),
                                    printable(places_text(change.after, drill.labels, style)));
        std::string macs;
        for (const std::vector<Place>* places : {&change.before, &change.after})
            for (const Place& place : *places)
                macs += printable(place.mac) + " ";
        row["macs"] = macs;
        rows.push_back(row);
    }
    return rows;
}

data spare_of(const Drill& drill) {
    data facts;
    facts["kind"] = describe_kind(drill.spare->kind);
    facts["answer"] = answer_of(*drill.spare, drill.is_partial, drill.musts != 0);
    list rows;
    for (const SpareAttempt& attempt : drill.spare->attempts) {
        data row;
        const auto figure = [&attempt](std::size_t number) {
            return attempt.is_broken ? std::string("broken") : grouped(number);
        };
        row["number"] = grouped(attempt.number);
        row["missing"] = figure(attempt.missing);
        row["failures"] = figure(attempt.failures);
        row["worst"] = figure(attempt.worst);
        rows.push_back(row);
    }
    facts["attempts"] = rows;
    return facts;
}

list tiles_of(const Drill& drill) {
    list tiles;
    const DrilledFailure none;
    const DrilledFailure& worst = drill.failures.empty() ? none : drill.failures.front();
    tiles.push_back(tile("Placed now", grouped(drill.now.placed),
                         fmt::format("of {}", grouped(drill.now.loaded)),
                         share_text(drill.now.placed, drill.now.loaded)));
    if (drill.musts != 0)
        tiles.push_back(tile("Musts lost at worst", grouped(worst.musts_lost()),
                             fmt::format("of {}", grouped(drill.musts_placed)), false));
    tiles.push_back(tile("Lost at worst", grouped(worst.all_lost()), "", false));
    tiles.push_back(tile("Failures", grouped(drill.failures.size()),
                         fmt::format("of {}", grouped(drill.taken_out.all())), false));
    return tiles;
}

} // namespace

std::string drill_page(const Drill& drill) {
    PageFrame frame;
    frame.title = drill.name.empty() ? "Drill" : "Drill for " + drill.name;
    frame.skip = "Skip to the failures";
    frame.eyebrow = "What if a part fails";
    if (!drill.name.empty())
        frame.names = {drill.name};
    frame.verdict =
        (drill.is_partial ? fmt::format("{} ", interrupted_note) : "") + printable(verdict_of(drill));
    frame.is_good = (drill.failures.empty() || drill.failures.front().all_lost() == 0) &&
                    broken_among(drill.findings).all() == 0;
    frame.tiles = tiles_of(drill);
    frame.footer = "A stream is written as ONID/TSID. Each part fails alone, and the engine then places anew "
                   "what is asked for on what is left; clones do not count.";
    add_broken(frame, "broken", "Broken before anything fails", drill.findings);
    link_section(frame.sections, "failures", "Failures", drill.failures.size());
    link_section(frame.sections, "moved", "Moved at worst", drill.worst_moved.size());
    if (drill.spare)
        frame.sections.push_back(section_link("spare", "Spare modules", false));
    add_notes(frame, "notes", "Notes", drill.findings);
    data facts;
    facts["has_failures"] = !drill.failures.empty();
    facts["number_of_failures"] = grouped(drill.failures.size());
    facts["has_musts"] = drill.musts != 0;
    facts["failures"] = failures_of(drill);
    facts["has_moved"] = !drill.worst_moved.empty();
    facts["number_moved"] = grouped(drill.worst_moved.size());
    facts["worst"] = drill.failures.empty() ? "" : printable(part_text(drill.failures.front().part));
    facts["moved"] = moved_of(drill);
    facts["spare"] = drill.spare ? spare_of(drill) : data(false);
    return framed(frame, drill_page_template, std::move(facts));
}

} // namespace zarven::tool
