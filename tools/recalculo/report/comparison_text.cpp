// Groups without entries are left out; the services of all groups share their columns.

#include "report/comparison_text.h"

#include <utility>

#include <fmt/format.h>

#include "base/counted.h"
#include "report/change_text.h"
#include "report/service_list.h"
#include "report/summary_text.h"
#include "report/table.h"

namespace zarven::tool {

namespace {

std::string effect_text(const StepEffect& effect) {
    std::vector<std::uint16_t> lcns;
    for (const ServiceResult& service : effect.services)
        lcns.push_back(service.lcn);
    return fmt::format("{}: LCN {}", effect.what, fmt::join(lcns, ", "));
}

std::vector<Column> columns_of_services() {
    Column change;
    change.wrapped_at = 30;
    return with_identity({change});
}

std::string limit_text(const TightLimit& limit) {
    const std::string used = fmt::format("{} of {}", limit.used, limit.max);
    switch (limit.kind) {
    case TightKind::inputs:
        return fmt::format("inputs: {} in use", used);
    case TightKind::pids:
        return fmt::format("PIDs: {}", used);
    case TightKind::bitrate:
        break;
    }
    return fmt::format("output {}: {} kbit/s", limit.output, used);
}

class ComparisonText {
public:
    ComparisonText(const Comparison& comparison, const ComparedFiles& files, const TextStyle& style,
                   Extent extent)
        : comparison_(comparison), files_(files), style_(style), extent_(extent) {
        for (const auto* changes : {&comparison.gained, &comparison.lost, &comparison.added,
                                    &comparison.removed, &comparison.moved})
            for (const ServiceChange& change : *changes)
                services_.measure(row_of(change));
        services_.fit();
    }

    std::string text() && {
        text_ = broken_text(comparison_.before.findings, style_, " before") +
                broken_text(comparison_.after.findings, style_, " after");
        write_summary();
        write("Inputs tuned to another stream", comparison_.inputs_retuned);
        write("Moved", comparison_.moved);
        write("Renamed", comparison_.renamed);
        write("Gained", comparison_.gained);
        write("Lost", comparison_.lost, Paint::red);
        write("Added to the line-up", comparison_.added);
        write("Removed from the line-up", comparison_.removed);
        write("Modules gone", comparison_.modules_gone);
        write("Modules new", comparison_.modules_new);
        write("Inputs freed", comparison_.inputs_freed);
        write("Inputs taken", comparison_.inputs_taken);
        write("Became tight", comparison_.became_tight);
        write("No longer tight", comparison_.relaxed);
        write_order();
        text_ += closing_notes_text(comparison_.before.findings, style_, " before");
        text_ += closing_notes_text(comparison_.after.findings, style_, " after");
        text_ += closing_cautions_text(comparison_.after.cautions, style_, extent_, " after");
        return std::move(text_);
    }

private:
    void write_summary();
    void write_order();
    void write_side(const char* which, const std::string& file, const Side& side);
    void paragraph(const std::string& text, Paint paint = Paint::none) {
        text_ += paragraph_text(text, 0, paint, style_);
    }

    template <class Entry>
    void write(const char* title, const std::vector<Entry>& entries, Paint paint = Paint::bold) {
        if (entries.empty())
            return;
        text_ += '\n';
        paragraph(fmt::format("{}: {}", title, entries.size()), paint);
        write_rows(entries);
    }

    void write_rows(const std::vector<ServiceChange>& changes) {
        for (const ServiceChange& change : changes)
            text_ += services_.lines(row_of(change));
    }

    /// Other entries: what it is about, then what there is to say of it.
    template <class Entry> void write_rows(const std::vector<Entry>& entries) {
        Column facts;
        facts.wrapped_at = 16;
        std::vector<Row> rows;
        for (const Entry& entry : entries)
            rows.push_back(row_of(entry));
        text_ += table_text({Column(), facts}, rows, body_indent, style_);
    }

    std::string name_of(const std::string& mac) const { return shown(comparison_.name_of(mac), style_); }

    std::string text_of(const std::vector<Place>& places, Absence absence) const {
        return places.empty() ? to_string(absence) : places_text(places, comparison_.labels, style_);
    }

    Row row_of(const ServiceChange& change) const {
        return with_identity(change.service,
                             {change_text(text_of(change.before, change.absence_before),
                                          text_of(change.after, change.absence_after), style_)},
                             style_);
    }

    Row row_of(const ServiceRename& rename) const {
        return {name_text(rename.before, style_),
                fmt::format("{} {}", symbols_of(style_).arrow, name_text(rename.after, style_))};
    }

    Row row_of(const std::string& mac) const { return {name_of(mac)}; }

    Row row_of(const InputChange& change) const {
        return {fmt::format("{} in {}", name_of(change.mac), change.number), change_text(change, style_)};
    }

    Row row_of(const TightLimit& limit) const { return {name_of(limit.mac), limit_text(limit)}; }

    const Comparison& comparison_;
    const ComparedFiles& files_;
    const TextStyle style_;
    const Extent extent_;
    Table services_{columns_of_services(), body_indent, style_};
    std::string text_;
};

/// What a step does to the services; nothing where it interrupts none.
std::string effects_text(const ChangeStep& step) {
    std::vector<std::string> texts;
    for (const StepEffect& effect : effects_of(step))
        texts.push_back(effect_text(effect));
    return fmt::format("{}", fmt::join(texts, "; "));
}

void ComparisonText::write_order() {
    const ChangeOrder& order = comparison_.order;
    if (order.steps.empty())
        return;
    text_ += '\n';
    paragraph(order_text(order), Paint::bold);
    Column number;
    number.align = Align::right;
    Column effects;
    effects.wrapped_at = 16;
    std::vector<Row> rows;
    for (const ChangeStep& step : order.steps) {
        Row row{std::to_string(rows.size() + 1)};
        for (Cell& cell : row_of(step.input))
            row.push_back(std::move(cell));
        row.push_back(effects_text(step));
        rows.push_back(std::move(row));
    }
    text_ += table_text({number, Column(), Column(), effects}, rows, body_indent, style_);
}

void ComparisonText::write_side(const char* which, const std::string& file, const Side& side) {
    const Counts& counts = side.counts;
    paragraph(fmt::format(
        "{} {}{}: {} of {} placed{}{}{}", which, shown(file, style_),
        side.name.empty() ? "" : fmt::format(" ({})", shown(side.name, style_)), counts.placed,
        counted(counts.loaded, "service"),
        counts.neither == 0 ? "" : fmt::format(", {} neither placed nor left out", counts.neither),
        counts.not_asked_for == 0 ? "" : fmt::format(", {} not asked for", counts.not_asked_for),
        broken_in_figures(broken_among(side.findings))));
}

void ComparisonText::write_summary() {
    paragraph(change_in_figures(comparison_));
    text_ += '\n';
    write_side("Before", files_.before, comparison_.before);
    write_side("After ", files_.after, comparison_.after);
}

} // namespace

std::string places_text(const std::vector<Place>& places, const Labels& labels, const TextStyle& style) {
    std::vector<std::string> texts;
    for (const Place& place : places)
        texts.push_back(shown(module_name(place.mac, labels), style) + " " + ports_text(place));
    return fmt::format("{}", fmt::join(texts, ", "));
}

std::string comparison_text(const Comparison& comparison, const ComparedFiles& files, const TextStyle& style,
                            Extent extent) {
    return ComparisonText(comparison, files, style, extent).text();
}

} // namespace zarven::tool
