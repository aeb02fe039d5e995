// One writer per report; names share one column width in all of it, so that the eye can run down. Colour
// repeats what the text says anyway.

#include "report/result_text.h"

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "base/counted.h"
#include "base/utf8.h"
#include "report/causes_text.h"
#include "report/groups_text.h"
#include "report/service_list.h"
#include "report/service_marks.h"
#include "report/summary_text.h"
#include "report/table.h"

namespace zarven::tool {

namespace {

constexpr int service_indent = 4;
/// More of its bitrate in use deserves a look, in percent.
constexpr std::uint64_t nearly_full = 90;

/// Columns of the rows of services.
enum ServiceColumn : std::size_t { lcn_column, name_column, bitrate_column, place_column };
/// Columns of the rows of outputs.
enum OutputColumn : std::size_t { number_column, bar_column };

std::vector<Column> service_columns() {
    Column name = column_of_name();
    name.least = 16;
    Column bitrate;
    bitrate.align = Align::right;
    bitrate.least = 12;
    bitrate.dispensable = 2;
    Column place;
    place.dispensable = 1;
    Column marks;
    marks.wrapped_at = 18;
    return {column_of_lcn(), name, bitrate, place, marks};
}

std::vector<Column> output_columns() {
    Column number;
    Column bar;
    bar.least = 24;
    bar.narrowest = 8;
    bar.dispensable = 2;
    Column load;
    Column percentage;
    percentage.align = Align::right;
    percentage.least = 7;
    percentage.dispensable = 1;
    Column services;
    services.dispensable = 3;
    return {number, bar, load, percentage, services};
}

/// The marks with the stream, if that is not the one under which the service is listed, and with the name
/// that viewers see, if that is another.
std::string marks_text(const ServiceResult& service, const Stream* listed_under, const TextStyle& style) {
    std::vector<std::string> marks = marks_of(service);
    if (listed_under != nullptr && *listed_under != service.stream)
        marks.push_back("stream " + to_string(service.stream));
    if (service.output_name != service.name)
        marks.push_back(fmt::format("sent as \"{}\"", shown(service.output_name, style)));
    return fmt::format("{}", fmt::join(marks, ", "));
}

Cell outputs_of(const ServiceResult& service, const TextStyle& style) {
    if (service.outputs.empty())
        return {"on no output", Paint::yellow};
    return fmt::format("{} output {}", symbols_of(style).arrow, fmt::join(service.outputs, ", "));
}

Row row_of(const ServiceResult& service, const Cell& place, const Stream* listed_under,
           const TextStyle& style) {
    return {std::to_string(service.lcn), shown(service.name, style),
            fmt::format("{} kbit/s", service.bitrate), place, marks_text(service, listed_under, style)};
}

/// A bar that is empty only for nothing and full only for all.
Cell bar(std::uint64_t used, std::uint64_t max, int width, const TextStyle& style) {
    const Symbols& symbols = symbols_of(style);
    int filled = 0;
    if (max != 0 && used >= max)
        filled = width;
    else if (max != 0 && used != 0)
        // In this order, because a bar that is only measured has no width.
        filled = std::max(
            1, std::min(static_cast<int>(used * static_cast<std::uint64_t>(width) / max), width - 1));
    Cell cell;
    for (int place = 0; place < width; ++place)
        cell.text += place < filled ? symbols.full_cell : symbols.empty_cell;
    if (max != 0 && used >= max)
        cell.paint = Paint::red;
    else if (used * 100 > max * nearly_full)
        cell.paint = Paint::yellow;
    return cell;
}

int digits(std::uint32_t number) {
    return static_cast<int>(fmt::formatted_size("{}", number));
}

std::string load_text(std::uint32_t used, std::uint32_t max, const TextStyle& style) {
    return max == 0 ? std::string(symbols_of(style).dash) : fmt::format("{:.1f} %", 100.0 * used / max);
}

/// "33000 of 49186 kbit/s (67.1 %)"
std::string fill_text(const InputResult& input) {
    const std::uint64_t carried = carried_from(input);
    return fmt::format("{} of {} kbit/s ({:.1f} %)", carried, input.net_rate,
                       100.0 * static_cast<double>(carried) / input.net_rate);
}

std::string pids(const ModuleResult& module) {
    const std::string usage = fmt::format("{} of {}", module.pids, module.pids_max);
    if (module.pids == module.pids_counted)
        return usage;
    return usage + fmt::format(" ({} by the engine's count)", module.pids_counted);
}

std::string transcoders(const ModuleResult& module) {
    const TranscoderPool pool = transcoder_pool(module);
    const Usage aux = module.aux_transcoders;
    std::vector<std::string> kinds;
    if (pool.max != 0 || pool.used != 0 || !pool.note.empty())
        kinds.push_back(fmt::format("{} of {}{}", pool.used, pool.max,
                                    pool.note.empty() ? "" : fmt::format(" ({})", pool.note)));
    if (aux.max != 0 || aux.used != 0)
        kinds.push_back(fmt::format("AUX {} of {}", aux.used, aux.max));
    return kinds.empty() ? "no transcoders" : fmt::format("transcoders in use: {}", fmt::join(kinds, ", "));
}

/// The one reason for all of them, if they share it; else empty.
std::string common_reason(const std::vector<ServiceResult>& services) {
    const std::string& reason = services.empty() ? std::string() : services.front().reason;
    const bool is_common = services.size() > 1 &&
                           std::all_of(services.begin(), services.end(),
                                       [&reason](const auto& service) { return service.reason == reason; });
    return is_common ? reason : "";
}

class Report {
public:
    Report(const Result& result, const TextStyle& style, Extent extent)
        : result_(result), style_(style), extent_(extent), causes_(causes_of(result)),
          receptions_(by_stream(result.streams)) {
        measure_services();
        measure_outputs();
    }

    std::string text() && {
        text_ = title_text(result_.name, style_) + broken_text(result_.findings, style_);
        text_ += causes_text(result_, style_);
        for (const ModuleResult& module : result_.modules)
            write(module);
        write_left_out();
        write_without_place("Clones that found no place", result_.clones_waiting);
        write_without_place("Neither placed nor left out", result_.neither);
        write_notes();
        for (const std::string& text :
             {groups_text(result_.groups, style_), variants_text(result_.variants, style_)})
            text_ += text.empty() ? "" : text + '\n';
        text_ += result_summary_text(result_, style_);
        return std::move(text_);
    }

private:
    void measure(const ServiceResult& service, const Cell& place, const Stream* listed_under, Table& table);
    void measure_services();
    void measure_outputs();
    void write(const ModuleResult& module);
    void write(const InputResult& input);
    void write(const StreamResult& stream);
    void write(const ServiceResult& service, const Cell& place, const Stream* listed_under);
    void write_left_out();
    void write_without_place(const std::string& title, const std::vector<ServiceResult>& services);
    void write_notes();

    void paragraph(int indent, const std::string& text, Paint paint = Paint::none);
    std::string joined(const std::vector<std::string>& parts) const { return tool::joined(parts, style_); }
    Row row_of(const OutputResult& output, int bar_width) const;
    Cell place_of(const ServiceResult& service) const { return outputs_of(service, style_); }
    Cell stream_of(const ServiceResult& service) const { return "stream " + to_string(service.stream); }

    const Result& result_;
    const TextStyle style_;
    const Extent extent_;
    const std::vector<CauseCount> causes_;
    const Receptions receptions_;
    Table services_{service_columns(), service_indent, style_};
    /// The same columns without places, which no service left out has.
    Table left_out_{service_columns(), service_indent, style_};
    Table outputs_{output_columns(), body_indent, style_};
    /// Digits of the largest bitrate of an output.
    int bitrate_width_ = 1;
    std::string text_;
};

/// Has both tables of services widened by what they share, and one of them by all of the row.
void Report::measure(const ServiceResult& service, const Cell& place, const Stream* listed_under,
                     Table& table) {
    const Row row = tool::row_of(service, place, listed_under, style_);
    const Row shared(row.begin(), row.begin() + place_column);
    services_.measure(shared);
    left_out_.measure(shared);
    table.measure(row);
}

void Report::measure_services() {
    for (const ModuleResult& module : result_.modules) {
        for (const InputResult& input : module.inputs)
            for (const ServiceResult& service : input.services)
                measure(service, place_of(service), &input.stream, services_);
        for (const ServiceResult& service : module.without_input)
            measure(service, place_of(service), nullptr, services_);
    }
    for (const StreamResult& stream : result_.left_out)
        for (const ServiceResult& service : stream.services)
            measure(service, {}, &stream.stream, left_out_);
    for (const auto* services : {&result_.clones_waiting, &result_.neither})
        for (const ServiceResult& service : *services)
            measure(service, stream_of(service), nullptr, services_);
    services_.fit();
    left_out_.fit();
}

void Report::measure_outputs() {
    for (const ModuleResult& module : result_.modules)
        for (const OutputResult& output : module.outputs)
            bitrate_width_ = std::max(bitrate_width_, digits(std::max(output.bitrate, output.bitrate_max)));
    for (const ModuleResult& module : result_.modules)
        for (const OutputResult& output : module.outputs)
            outputs_.measure(row_of(output, 0));
    outputs_.fit();
}

Row Report::row_of(const OutputResult& output, int bar_width) const {
    return {fmt::format("Output {}", output.number),
            bar(output.bitrate, output.bitrate_max, bar_width, style_),
            fmt::format("{:>{}} of {:>{}} kbit/s", output.bitrate, bitrate_width_, output.bitrate_max,
                        bitrate_width_),
            load_text(output.bitrate, output.bitrate_max, style_),
            fmt::format("{:>4} of {} services", output.service_count, output.service_max)};
}

void Report::paragraph(int indent, const std::string& text, Paint paint) {
    text_ += paragraph_text(text, indent, paint, style_);
}

void Report::write(const ModuleResult& module) {
    std::vector<std::string> heading{"Module " + shown(module_name(module.mac, module.label), style_),
                                     fmt::format("model {}", module.model)};
    if (module.is_controller)
        heading.emplace_back("controller");
    paragraph(0, joined(heading), Paint::bold);
    paragraph(2, joined({"PIDs in use: " + pids(module), transcoders(module)}));
    for (const InputResult& input : module.inputs)
        write(input);
    if (!module.without_input.empty()) {
        paragraph(2, joined({"On no input", counted(module.without_input.size(), "service")}), Paint::yellow);
        for (const ServiceResult& service : module.without_input)
            write(service, place_of(service), nullptr);
    }
    for (const OutputResult& output : module.outputs)
        text_ += outputs_.lines(row_of(output, outputs_.width(bar_column)));
    text_ += '\n';
}

void Report::write(const InputResult& input) {
    const std::string number = fmt::format("Input {}", input.number);
    if (!input.is_tuned) {
        paragraph(2, joined({number, "free"}));
        return;
    }
    if (is_free(input)) {
        paragraph(2, joined({number, "free",
                             "tuned to stream " + shown(described(input.stream, receptions_), style_)}));
        return;
    }
    std::vector<std::string> heading{number, "stream " + shown(described(input.stream, receptions_), style_),
                                     counted(input.services.size(), "service")};
    if (input.net_rate != 0)
        heading.push_back(fill_text(input));
    paragraph(2, joined(heading), Paint::bold);
    for (const ServiceResult& service : input.services)
        write(service, place_of(service), &input.stream);
}

void Report::write(const ServiceResult& service, const Cell& place, const Stream* listed_under) {
    text_ += services_.lines(tool::row_of(service, place, listed_under, style_));
}

void Report::write(const StreamResult& stream) {
    paragraph(2,
              joined({"Stream " + shown(described(stream.stream, receptions_), style_),
                      counted(stream.services.size(), "service")}),
              Paint::bold);
    const std::string common = common_reason(stream.services);
    const auto is_told_above = [this](const ServiceResult& service) {
        return is_told_once(causes_, service.cause);
    };
    if (!common.empty() && !is_told_above(stream.services.front()))
        paragraph(service_indent, shown(common, style_));
    for (const ServiceResult& service : stream.services) {
        text_ += left_out_.lines(tool::row_of(service, {}, &stream.stream, style_));
        if (common.empty() && !service.reason.empty() && !is_told_above(service))
            paragraph(left_out_.begin(name_column), shown(service.reason, style_));
    }
}

void Report::write_left_out() {
    if (result_.left_out.empty())
        return;
    paragraph(0,
              fmt::format("Left out: {} in {}", counted(result_.counts.left_out, "service"),
                          counted(result_.left_out.size(), "stream")),
              Paint::red);
    for (const StreamResult& stream : result_.left_out)
        write(stream);
    text_ += '\n';
}

void Report::write_without_place(const std::string& title, const std::vector<ServiceResult>& services) {
    if (services.empty())
        return;
    paragraph(0, fmt::format("{}: {}", title, services.size()), Paint::red);
    for (const ServiceResult& service : services) {
        write(service, stream_of(service), nullptr);
        if (!service.reason.empty())
            paragraph(services_.begin(name_column), shown(service.reason, style_));
    }
    text_ += '\n';
}

void Report::write_notes() {
    for (const std::string& notes :
         {notes_text(result_.findings, style_), cautions_text(cautions_of(result_), style_, extent_)})
        if (!notes.empty())
            text_ += notes + '\n';
}

} // namespace

std::string result_summary_text(const Result& result, const TextStyle& style) {
    const InputCounts inputs = inputs_of(result);
    const Counts& counts = result.counts;
    std::string clones;
    if (counts.clones_attached + counts.clones_waiting != 0)
        clones = fmt::format("; {} attached, {} waiting", counted(counts.clones_attached, "clone"),
                             counts.clones_waiting);
    const std::string summary =
        fmt::format("{}{}{}; {} of {} in use on {}{}", services_in_figures(counts),
                    musts_in_figures(counts.musts_placed, counts.musts), clones, inputs.used,
                    counted(inputs.all, "input"), counted(result.modules.size(), "module"),
                    broken_in_figures(broken_in(result)));
    std::string text = paragraph_text(summary, 0, Paint::none, style);
    if (counts.rates.measured_loaded != 0)
        text += paragraph_text(rates_in_figures(counts.rates), 0, Paint::none, style);
    return text;
}

std::string result_text(const Result& result, const TextStyle& style, Extent extent) {
    return Report(result, style, extent).text();
}

} // namespace zarven::tool
