// The table has a column of musts only where services are marked so.

#include "report/drill_text.h"

#include <algorithm>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "base/counted.h"
#include "report/comparison_text.h"
#include "report/service_list.h"
#include "report/sizing_text.h"
#include "report/summary_text.h"
#include "report/table.h"

namespace zarven::tool {

namespace {

/// More are for those who ask for all.
constexpr std::size_t failures_shown = 20;

Column drill_figures(const char* heading, int dispensable = 0) {
    Column column;
    column.heading = heading;
    column.align = Align::right;
    column.least = 7;
    column.dispensable = dispensable;
    return column;
}

std::string and_joined(const std::vector<std::string>& parts) {
    std::string text = parts.front();
    for (std::size_t part = 1; part < parts.size(); ++part)
        text += (part + 1 == parts.size() ? " and " : ", ") + parts[part];
    return text;
}

class DrillText {
public:
    DrillText(const Drill& drill, FailuresShown shown, const TextStyle& style)
        : drill_(drill), shown_(shown), style_(style) {}

    std::string text() && {
        text_ = title_text(drill_.name, style_);
        text_ += broken_text(drill_.findings, style_, " before anything fails");
        paragraph(services_in_figures(drill_.now) + musts_in_figures(drill_.musts_placed, drill_.musts) +
                  broken_in_figures(broken_among(drill_.findings)));
        if (drill_.is_partial)
            text_ += interrupted_text(style_);
        paragraph(shown(verdict_of(drill_), style_));
        write_failures();
        if (drill_.spare)
            write_spare(*drill_.spare);
        write_worst();
        text_ += closing_notes_text(drill_.findings, style_, " before anything fails");
        return std::move(text_);
    }

private:
    void paragraph(const std::string& text, Paint paint = Paint::none, int indent = 0) {
        text_ += paragraph_text(text, indent, paint, style_);
    }

    void heading(const std::string& title, Paint paint = Paint::bold) {
        text_ += '\n';
        paragraph(title, paint);
    }

    void write_failures() {
        if (drill_.failures.empty())
            return;
        const std::size_t number = shown_ == FailuresShown::all
                                       ? drill_.failures.size()
                                       : std::min(drill_.failures.size(), failures_shown);
        heading("What fails, the worst first");
        std::vector<Row> rows;
        for (std::size_t index = 0; index < number; ++index)
            rows.push_back(row_of(drill_.failures[index]));
        Column part;
        part.narrowest = 20;
        std::vector<Column> columns = {part, drill_figures("off air"), drill_figures("saved", 1),
                                       drill_figures("lost"), drill_figures("besides")};
        if (drill_.musts != 0)
            columns.push_back(drill_figures("musts"));
        columns.push_back(drill_figures("moved"));
        columns.push_back(drill_figures("gained", 2));
        Column remark;
        remark.wrapped_at = 30;
        columns.push_back(remark);
        text_ += table_text(columns, rows, body_indent, style_);
        if (number < drill_.failures.size())
            paragraph(fmt::format("{} more, which --all tells", drill_.failures.size() - number), Paint::none,
                      body_indent);
    }

    Row row_of(const DrilledFailure& failure) const {
        Row row = {shown(part_text(failure.part), style_), std::to_string(failure.off_air()),
                   std::to_string(failure.saved.size()), std::to_string(failure.lost.size()),
                   std::to_string(failure.lost_besides.size())};
        if (drill_.musts != 0)
            row.push_back(std::to_string(failure.musts_lost()));
        row.push_back(std::to_string(failure.moved));
        row.push_back(std::to_string(failure.gained.size()));
        row.push_back(shown(remark_on(failure), style_));
        return row;
    }

    void write_worst() {
        if (drill_.failures.empty())
            return;
        const DrilledFailure& worst = drill_.failures.front();
        heading("The worst case: " + shown(part_text(worst.part), style_));
        if (!worst.problem.empty())
            paragraph(shown(worst.problem, style_), Paint::none, body_indent);
        write_services("Lost", worst.lost, Paint::red);
        write_services("Lost besides", worst.lost_besides, Paint::red);
        write_services("Off the air until the new run", worst.saved, Paint::bold);
        write_services("Gained", worst.gained, Paint::bold);
        write_moved();
    }

    void write_services(const char* title, const std::vector<DrilledService>& services, Paint paint) {
        if (services.empty())
            return;
        heading(fmt::format("{}: {}", title, counted(services.size(), "service")), paint);
        std::vector<Row> rows;
        for (const DrilledService& service : services)
            rows.push_back(with_identity(service.service, {service.must ? "must" : ""}, style_));
        text_ += table_text(with_identity({Column()}), rows, body_indent, style_);
    }

    void write_moved() {
        if (drill_.worst_moved.empty())
            return;
        const bool are_told = shown_ == FailuresShown::all;
        heading(fmt::format("Moved: {}{}", counted(drill_.worst_moved.size(), "service"),
                            are_told ? "" : ", which --all tells"));
        if (!are_told)
            return;
        std::vector<Row> rows;
        for (const ServiceChange& change : drill_.worst_moved)
            rows.push_back(with_identity(
                change.service,
                {fmt::format("{} {} {}", places_text(change.before, drill_.labels, style_),
                             symbols_of(style_).arrow, places_text(change.after, drill_.labels, style_))},
                style_));
        Column last;
        last.wrapped_at = 30;
        text_ += table_text(with_identity({last}), rows, body_indent, style_);
    }

    void write_spare(const Spare& spare) {
        heading(fmt::format("Spare modules ({})", describe_kind(spare.kind)));
        paragraph(answer_of(spare, drill_.is_partial, drill_.musts != 0), Paint::none, body_indent);
        if (spare.attempts.empty())
            return;
        text_ += '\n';
        std::vector<Row> rows;
        for (const SpareAttempt& attempt : spare.attempts)
            rows.push_back({std::to_string(attempt.number), figure(attempt, attempt.missing),
                            figure(attempt, attempt.failures), figure(attempt, attempt.worst)});
        text_ += table_text({drill_figures("spares"), drill_figures("missing"), drill_figures("failures"),
                             drill_figures("worst")},
                            rows, body_indent, style_);
    }

    /// Nothing else is known of one that is broken.
    static std::string figure(const SpareAttempt& attempt, std::size_t number) {
        return attempt.is_broken ? "broken" : std::to_string(number);
    }

    const Drill& drill_;
    const FailuresShown shown_;
    const TextStyle& style_;
    std::string text_;
};

} // namespace

std::string part_text(const FailedPart& part) {
    switch (part.kind) {
    case PartKind::stream:
        return "stream " + to_string(part.stream);
    case PartKind::input:
        return fmt::format("input {} of {}, stream {}", part.input, module_name(part.mac, part.label),
                           to_string(part.stream));
    case PartKind::module:
        break;
    }
    return fmt::format("module {}{}", module_name(part.mac, part.label),
                       part.is_controller ? ", the controller" : "");
}

std::string remark_on(const DrilledFailure& failure) {
    switch (failure.run) {
    case NewRun::broken:
        return "the new run breaks something and does not count";
    case NewRun::stopped:
        return "the new run was stopped";
    case NewRun::impossible:
        return "no module is left";
    case NewRun::usable:
        break;
    }
    return failure.all_lost() > failure.off_air()
               ? fmt::format("without a new run fewer are lost: {}", failure.off_air())
               : "";
}

std::string parts_text(const PartCounts& parts) {
    std::vector<std::string> texts = {counted(parts.modules, "module"), counted(parts.inputs, "input")};
    if (parts.streams != 0)
        texts.push_back(counted(parts.streams, "stream"));
    return and_joined(texts);
}

std::string verdict_of(const Drill& drill) {
    const auto losing = std::count_if(drill.failures.begin(), drill.failures.end(),
                                      [](const DrilledFailure& one) { return one.all_lost() != 0; });
    std::string text = fmt::format("{} taken out one by one: {} take services off the air, {} without effect",
                                   parts_text(drill.taken_out), drill.failures.size(), drill.harmless.all());
    const std::size_t untried = drill.taken_out.all() - drill.failures.size() - drill.harmless.all();
    if (untried != 0)
        text += fmt::format(", {} not tried", untried);
    text += ". ";
    if (drill.failures.empty())
        return text + "Nothing was lost.";
    if (losing == 0)
        return text + "After a new run nothing is lost.";
    const DrilledFailure& worst = drill.failures.front();
    return text + fmt::format("After a new run {} of these lose services, at worst {}{}: {}.", losing,
                              worst.all_lost(),
                              drill.musts == 0
                                  ? ""
                                  : fmt::format(", with {} among them", counted(worst.musts_lost(), "must")),
                              part_text(worst.part));
}

std::string answer_of(const Spare& spare, bool is_partial, bool are_musts) {
    const std::string kept =
        fmt::format("of the {} placed now", counted(spare.kept, are_musts ? "must" : "service"));
    if (spare.number == std::size_t{0})
        return fmt::format("None is needed: no module or input that fails alone loses any {}.", kept);
    if (spare.number)
        return fmt::format("{}: then no module or input that fails alone loses any {}.",
                           *spare.number == 1 ? "1 is enough" : fmt::format("{} are enough", *spare.number),
                           kept);
    if (is_partial)
        return "None of the numbers tried before the interruption is enough.";
    return fmt::format(
        "Up to {} are not enough: with each number a module or an input fails and loses some {}.", spare.most,
        kept);
}

std::string drill_text(const Drill& drill, FailuresShown shown, const TextStyle& style) {
    return DrillText(drill, shown, style).text();
}

} // namespace zarven::tool
