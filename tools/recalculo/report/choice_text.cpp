// Lists without entries are left out. Values are told only where services differ in them.

#include "report/choice_text.h"

#include <algorithm>
#include <utility>

#include <fmt/format.h>

#include "base/counted.h"
#include "placement/one_of.h"
#include "report/comparison_text.h"
#include "report/groups_text.h"
#include "report/service_list.h"
#include "report/summary_text.h"
#include "report/table.h"

namespace zarven::tool {

namespace {

Column figures(const char* heading) {
    Column column;
    column.heading = heading;
    column.align = Align::right;
    column.least = 7;
    return column;
}

class ChoiceText {
public:
    ChoiceText(const ChoiceReport& report, const std::string& kept, const TextStyle& style, Extent extent)
        : report_(report), kept_(kept), style_(style), extent_(extent) {}

    std::string text() && {
        text_ = title_text(report_.name, style_);
        text_ += broken_text(report_.all.findings, style_, " with everything asked for");
        text_ += broken_text(report_.chosen.findings, style_);
        paragraph(verdict_of(report_) + broken_in_figures(broken_among(report_.chosen.findings)));
        if (const std::string doubt = doubt_of(report_); !doubt.empty())
            paragraph(doubt);
        if (const std::string remainder = remainder_of(report_); !remainder.empty())
            paragraph(remainder);
        text_ += '\n' + table_of_figures();
        write_missed();
        write_moves();
        write_withheld();
        if (const std::string variants = variants_text(report_.variants, style_); !variants.empty())
            text_ += '\n' + variants;
        write_changes("Gained", report_.gained);
        write_changes("Lost", report_.lost);
        text_ += '\n';
        paragraph(fmt::format("{} tried, {} of the engine", counted(report_.states, "state"),
                              counted(report_.engine_runs, "run")));
        text_ += closing_notes_text(report_.all.findings, style_, " with everything asked for");
        text_ += closing_notes_text(report_.chosen.findings, style_);
        text_ += closing_cautions_text(report_.chosen.cautions, style_, extent_);
        return std::move(text_);
    }

private:
    void paragraph(const std::string& text, Paint paint = Paint::none) {
        text_ += paragraph_text(text, 0, paint, style_);
    }

    void heading(const char* title, std::size_t number, Paint paint = Paint::bold) {
        text_ += '\n';
        paragraph(fmt::format("{}: {}", title, counted(number, "service")), paint);
    }

    std::string table_of_figures() const {
        Column name;
        name.least = 16;
        std::vector<Row> rows;
        const auto row = [&rows](const char* what, std::uint64_t all, std::uint64_t chosen,
                                 const Reach* reach) {
            rows.push_back({what, std::to_string(all), std::to_string(chosen),
                            reach == nullptr ? "" : std::to_string(reach->most),
                            reach == nullptr ? "" : std::to_string(reach->wanted)});
        };
        if (report_.musts.wanted != 0)
            row("Musts placed", report_.all.musts, report_.chosen.musts, &report_.musts);
        if (report_.has_values)
            row("Value", report_.all.value, report_.chosen.value, &report_.value);
        row("Services placed", report_.all.counts.placed, report_.chosen.counts.placed,
            report_.has_values ? nullptr : &report_.value);
        return table_text({name, figures("all"), figures("chosen"), figures("at most"), figures("wanted")},
                          rows, 2, style_);
    }

    void write_missed() {
        if (report_.missed.empty())
            return;
        std::vector<ServiceResult> services;
        for (const MissedMust& missed : report_.missed)
            services.push_back(missed.service);
        text_ += '\n' + services_with_reasons("Must be placed and is not", services, style_);
        paragraph(proof_of_musts(report_));
    }

    void write_moves() {
        if (!report_.moves)
            return;
        text_ += '\n';
        paragraph(moves_in_figures(*report_.moves, shown(kept_, style_)));
        std::vector<Row> rows;
        for (const ServiceChange& change : report_.moves->moved)
            rows.push_back(with_identity(change.service,
                                         {arrow(places_text(change.before, report_.labels, style_),
                                                places_text(change.after, report_.labels, style_))},
                                         style_));
        write_rows(rows);
    }

    void write_withheld() {
        if (report_.withheld.empty())
            return;
        heading("Withheld", report_.withheld.size());
        std::vector<Row> rows;
        for (const ValuedService& service : report_.withheld)
            rows.push_back(row_of(service, ""));
        write_rows(rows);
    }

    void write_changes(const char* title, const std::vector<ValuedChange>& changes) {
        if (changes.empty())
            return;
        const bool is_gain = &changes == &report_.gained;
        heading(title, changes.size(), is_gain ? Paint::bold : Paint::red);
        std::vector<Row> rows;
        for (const ValuedChange& change : changes) {
            const std::string places = places_text(change.places, report_.labels, style_);
            rows.push_back(
                row_of(change.service,
                       is_gain ? places : arrow(places, change.is_withheld ? "withheld" : "left out")));
        }
        write_rows(rows);
    }

    std::string arrow(const std::string& before, const std::string& after) const {
        return fmt::format("{} {} {}", before, symbols_of(style_).arrow, after);
    }

    Row row_of(const ValuedService& service, const std::string& text) const {
        std::string worth = service.must ? "must" : "";
        if (report_.has_values)
            worth += fmt::format("{}value {}", worth.empty() ? "" : ", ", service.value);
        if (!worth.empty() && !text.empty())
            worth += "; ";
        return with_identity(service.service, {worth + text}, style_);
    }

    void write_rows(const std::vector<Row>& rows) {
        if (rows.empty())
            return;
        Column last;
        last.wrapped_at = 30;
        text_ += table_text(with_identity({last}), rows, body_indent, style_);
    }

    const ChoiceReport& report_;
    const std::string& kept_;
    const TextStyle style_;
    const Extent extent_;
    std::string text_;
};

} // namespace

std::string verdict_of(const ChoiceReport& report) {
    const std::string until = report.is_interrupted ? ", when it was interrupted" : "";
    if (report.withheld.empty() && report.all.counts.loaded == 0)
        return "Nothing is asked for, and so there is nothing to choose";
    const std::string gain =
        fmt::format("{} placed in the place of {}, {} gained, {} lost", report.chosen.counts.placed,
                    report.all.counts.placed, report.gained.size(), report.lost.size());
    const std::string exchanged =
        report.exchanged_variants == 0
            ? ""
            : fmt::format("another variant of {} asked for", report.exchanged_variants);
    if (report.withheld.empty() && !exchanged.empty())
        return fmt::format("Nothing withheld, {}{}: {}", exchanged, until, gain);
    if (report.withheld.empty())
        return fmt::format("Nothing better than asking for all {} was found{}: {} placed",
                           counted(report.all.counts.loaded, "service"), until, report.all.counts.placed);
    return fmt::format("{} of {} withheld{}{}{}: {}", report.withheld.size(),
                       counted(report.chosen.counts.loaded + report.withheld.size(), "service"),
                       exchanged.empty() ? "" : ", ", exchanged, until, gain);
}

std::string proof_of_musts(const ChoiceReport& report) {
    if (report.missed.empty())
        return "";
    if (report.chosen.musts >= report.musts.most)
        return fmt::format(
            "It is proven that no arrangement places more than {} of the {} that must be placed.",
            report.musts.most, report.musts.wanted);
    return fmt::format("It is not proven that they cannot be placed: the bound would allow {} of the {}.",
                       report.musts.most, report.musts.wanted);
}

namespace {

/// What everything asked for comes to, and the choice does not.
std::string more_of_all(const ChoiceReport& report) {
    if (!is_sound(report.chosen))
        return "nothing is broken";
    if (report.all.musts != report.chosen.musts)
        return fmt::format("more is reached, {} of {} musts in the place of {}", report.all.musts,
                           report.musts.wanted, report.chosen.musts);
    return fmt::format("more is reached, a value of {} in the place of {}", report.all.value,
                       report.chosen.value);
}

} // namespace

std::string doubt_of(const ChoiceReport& report) {
    if (is_less_than_all(report))
        return fmt::format(
            "With everything asked for {}: that asks for {} of value 0, too, which no choice does.",
            more_of_all(report), counted(never_asked_for(report), "service"));
    if (is_sound(report.all))
        return "";
    if (!is_sound(report.chosen))
        return "Something is broken with everything asked for, and no choice was found that breaks nothing.";
    return report.all.is_stopped
               ? "With everything asked for the engine does not end within its limits: there is no placement "
                 "to compare the choice with."
               : "Something is broken with everything asked for: that placement does not count, even where "
                 "it places more than the choice.";
}

std::string remainder_of(const ChoiceReport& report) {
    return is_to_be_given_back(report)
               ? "The search ended before each service withheld was tried once more: some may be asked for "
                 "without loss."
               : "";
}

std::string moves_in_figures(const MovesAgainstKept& moves, const std::string& kept) {
    return fmt::format("Against {}: {} in another place, {} where they were, {} no longer placed", kept,
                       counted(moves.moved.size(), "service"), moves.unmoved, moves.gone);
}

std::string choice_text(const ChoiceReport& report, const std::string& kept, const TextStyle& style,
                        Extent extent) {
    return ChoiceText(report, kept, style, extent).text();
}

std::vector<std::string> progress_in_figures(const ChoosingProgress& progress, const Headend& headend) {
    const std::size_t musts = musts_wanted(headend.services);
    const bool has_values = std::any_of(headend.services.begin(), headend.services.end(),
                                        [](const Service& service) { return service.value != 1; });
    std::vector<std::string> parts;
    if (musts != 0)
        parts.push_back(fmt::format("{} of {} musts", progress.best.musts, musts));
    if (has_values)
        parts.push_back(fmt::format("value {}", progress.best.value));
    parts.push_back(fmt::format("{} placed", progress.best.placed));
    parts.push_back(counted(progress.states, "state"));
    return parts;
}

} // namespace zarven::tool
