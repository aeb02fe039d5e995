// One writer per report; names share one column width in all of it, so that the eye can run down.

#include "report/report_text.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include <fmt/format.h>

#include "base/utf8.h"

namespace zarven::tool {

namespace {

constexpr int bar_cells = 24;
constexpr int narrowest_name = 16;
/// A longer name pushes its own line only.
constexpr int widest_name = 34;
/// Where names begin.
constexpr std::string_view under_the_name = "           ";

std::string counted(std::size_t number, std::string_view one, std::string_view many) {
    return fmt::format("{} {}", number, number == 1 ? one : many);
}

std::string services_counted(std::size_t number) {
    return counted(number, "service", "services");
}

/// What sets a service apart from a free SD programme.
std::string marks_of(const ServiceResult& service) {
    std::string marks;
    const auto add = [&marks](const std::string& mark) { marks += (marks.empty() ? "" : ", ") + mark; };
    if (service.is_clone)
        add(fmt::format("clone of SID {}", service.parent_sid));
    if (service.is_hd)
        add("HD");
    if (service.is_scrambled)
        add("scrambled");
    if (service.ca_pids != 0)
        add(counted(service.ca_pids, "CA PID", "CA PIDs"));
    if (service.is_transcoded)
        add("transcoded");
    if (service.output_name != service.name)
        add(fmt::format("sent as \"{}\"", printable(service.output_name)));
    return marks;
}

std::string outputs_of(const ServiceResult& service) {
    if (service.outputs.empty())
        return "on no output";
    return fmt::format("→ output {}", fmt::join(service.outputs, ", "));
}

/// A bar that is empty only for nothing and full only for all.
std::string bar(std::uint64_t used, std::uint64_t max) {
    int filled = 0;
    if (max != 0 && used >= max)
        filled = bar_cells;
    else if (max != 0 && used != 0)
        filled = std::clamp(static_cast<int>(used * bar_cells / max), 1, bar_cells - 1);
    std::string cells;
    for (int cell = 0; cell < bar_cells; ++cell)
        cells += cell < filled ? "█" : "░";
    return cells;
}

int digits(std::uint32_t number) {
    return static_cast<int>(fmt::formatted_size("{}", number));
}

std::string percentage(std::uint32_t used, std::uint32_t max) {
    return max == 0 ? "–" : fmt::format("{:.1f} %", 100.0 * used / max);
}

std::string pids(const ModuleResult& module) {
    const std::string usage = fmt::format("{} of {}", module.pids, module.pids_max);
    if (module.pids == module.pids_counted)
        return usage;
    return usage + fmt::format(" ({} by the engine's count)", module.pids_counted);
}

std::string transcoders(const ModuleResult& module) {
    std::vector<std::string> kinds;
    const auto add = [&kinds](std::string_view kind, Usage usage) {
        if (usage.max != 0 || usage.used != 0)
            kinds.push_back(fmt::format("{} {} of {}", kind, usage.used, usage.max));
    };
    add("SD", module.sd_transcoders);
    add("HD", module.hd_transcoders);
    add("AUX", module.aux_transcoders);
    return kinds.empty() ? "no transcoders" : fmt::format("transcoders in use: {}", fmt::join(kinds, ", "));
}

/// All services of a stream are left out for the same reason, which then stands once.
bool share_one_reason(const std::vector<ServiceResult>& services) {
    return services.size() > 1 && std::all_of(services.begin(), services.end(), [&](const auto& service) {
               return service.reason == services.front().reason;
           });
}

class Report {
public:
    explicit Report(const Result& result) : result_(result) { measure(); }

    std::string text() && {
        if (!result_.name.empty())
            line("{}\n", printable(result_.name));
        for (const ModuleResult& module : result_.modules)
            write(module);
        write_left_out();
        write_clones_waiting();
        write_warnings();
        write_summary();
        return std::move(text_);
    }

private:
    template <class... Values> void line(fmt::format_string<Values...> format, Values&&... values) {
        fmt::format_to(std::back_inserter(text_), format, std::forward<Values>(values)...);
        text_ += '\n';
    }

    void measure();
    void write(const ModuleResult& module);
    void write(const InputResult& input);
    void write(const OutputResult& output);
    void write(const ServiceResult& service, const std::string& where);
    void write_reason(const std::string& reason, std::string_view indent);
    void write_left_out();
    void write_clones_waiting();
    void write_warnings();
    void write_summary();

    const Result& result_;
    int name_width_ = narrowest_name;
    /// Digits of the largest bitrate of an output.
    int bitrate_width_ = 1;
    /// Digits of the largest number of an output.
    int number_width_ = 1;
    std::string text_;
};

void Report::measure() {
    const auto widen = [this](const std::vector<ServiceResult>& services) {
        for (const ServiceResult& service : services)
            name_width_ = std::clamp(display_width(printable(service.name)), name_width_, widest_name);
    };
    for (const ModuleResult& module : result_.modules) {
        for (const InputResult& input : module.inputs)
            widen(input.services);
        widen(module.without_input);
        for (const OutputResult& output : module.outputs) {
            bitrate_width_ = std::max(bitrate_width_, digits(std::max(output.bitrate, output.bitrate_max)));
            number_width_ = std::max(number_width_, digits(output.number));
        }
    }
    for (const StreamResult& stream : result_.left_out)
        widen(stream.services);
    widen(result_.clones_waiting);
}

void Report::write(const ModuleResult& module) {
    line("Module {} · model {}{}", printable(module.mac), module.model,
         module.is_controller ? " · controller" : "");
    line("  PIDs in use: {} · {}", pids(module), transcoders(module));
    for (const InputResult& input : module.inputs)
        write(input);
    if (!module.without_input.empty()) {
        line("  On no input · {}", services_counted(module.without_input.size()));
        for (const ServiceResult& service : module.without_input)
            write(service, outputs_of(service));
    }
    for (const OutputResult& output : module.outputs)
        write(output);
    line("");
}

void Report::write(const InputResult& input) {
    if (!input.is_tuned) {
        line("  Input {} · free", input.number);
        return;
    }
    line("  Input {} · stream {} · {}", input.number, to_string(input.stream),
         services_counted(input.services.size()));
    for (const ServiceResult& service : input.services)
        write(service, outputs_of(service));
}

void Report::write(const OutputResult& output) {
    const std::string load =
        fmt::format("{:>{}} of {:>{}} kbit/s  {:>7}", output.bitrate, bitrate_width_, output.bitrate_max,
                    bitrate_width_, percentage(output.bitrate, output.bitrate_max));
    line("  Output {:<{}}  {}  {}   {:>3} of {} services", output.number, number_width_,
         bar(output.bitrate, output.bitrate_max), load, output.service_count, output.service_max);
}

void Report::write(const ServiceResult& service, const std::string& where) {
    std::string row = fmt::format("    {:>5}  {} {:>6} kbit/s", service.lcn,
                                  pad_right(printable(service.name), name_width_), service.bitrate);
    if (!where.empty())
        row += "  " + where;
    const std::string marks = marks_of(service);
    if (!marks.empty())
        row += "  " + marks;
    line("{}", row);
}

void Report::write_reason(const std::string& reason, std::string_view indent) {
    if (!reason.empty())
        line("{}{}", indent, printable(reason));
}

void Report::write_left_out() {
    if (result_.left_out.empty())
        return;
    line("Left out: {} in {}", services_counted(result_.counts.left_out),
         counted(result_.left_out.size(), "stream", "streams"));
    for (const StreamResult& stream : result_.left_out) {
        line("  Stream {} · {}", to_string(stream.stream), services_counted(stream.services.size()));
        const bool is_shared = share_one_reason(stream.services);
        if (is_shared)
            write_reason(stream.services.front().reason, "    ");
        for (const ServiceResult& service : stream.services) {
            write(service, "");
            if (!is_shared)
                write_reason(service.reason, under_the_name);
        }
    }
    line("");
}

void Report::write_clones_waiting() {
    if (result_.clones_waiting.empty())
        return;
    line("Clones whose parent is on no output, or for which no AUX transcoder is left");
    for (const ServiceResult& clone : result_.clones_waiting) {
        write(clone, fmt::format("stream {}", to_string(clone.stream)));
        write_reason(clone.reason, under_the_name);
    }
    line("");
}

void Report::write_warnings() {
    if (result_.warnings.empty())
        return;
    line("Audit: {}", counted(result_.warnings.size(), "finding", "findings"));
    for (const std::string& warning : result_.warnings)
        line("Warning: {}", printable(warning));
    line("");
}

void Report::write_summary() {
    std::size_t inputs = 0;
    std::size_t inputs_in_use = 0;
    for (const ModuleResult& module : result_.modules) {
        inputs += module.inputs.size();
        inputs_in_use += static_cast<std::size_t>(std::count_if(
            module.inputs.begin(), module.inputs.end(), [](const auto& input) { return input.is_tuned; }));
    }
    const Counts& counts = result_.counts;
    std::string clones;
    if (counts.clones_attached + counts.clones_waiting != 0)
        clones = fmt::format("; {} attached, {} waiting", counted(counts.clones_attached, "clone", "clones"),
                             counts.clones_waiting);
    line("{} loaded: {} placed, {} left out{}; {} of {} in use on {}", services_counted(counts.loaded),
         counts.placed, counts.left_out, clones, inputs_in_use, counted(inputs, "input", "inputs"),
         counted(result_.modules.size(), "module", "modules"));
}

} // namespace

std::string text_report(const Result& result) {
    return Report(result).text();
}

} // namespace zarven::tool
