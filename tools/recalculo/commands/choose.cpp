// The wishes are read, the search is watched, and what it finds is confirmed and told.

#include "commands/commands.h"

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "base/counted.h"
#include "base/failure.h"
#include "base/interruption.h"
#include "base/streams.h"
#include "base/utf8.h"
#include "commands/standard_input.h"
#include "headend/headend_json.h"
#include "placement/choosing/choice.h"
#include "placement/choosing/choice_wishes.h"
#include "placement/documents.h"
#include "placement/one_of.h"
#include "placement/result_json.h"
#include "placement/running/host.h"
#include "report/choice_text.h"
#include "report/page/choice_page.h"
#include "report/progress_line.h"
#include "report/terminal.h"

namespace zarven::tool {

namespace {

void check(const ChooseOptions& options) {
    const bool is_told = options.chosen != standard_stream;
    if (!is_told && (options.output.json || options.output.html == standard_stream))
        throw Failure(fmt::format("{} and -o - both write to standard output; expected a file for -o",
                                  options.output.json ? "--json" : "--html -"));
    // With -o - there is no other report.
    check(options.output, {{"-o", is_told ? options.chosen : ""}});
    expect_one_standard_input(standard_inputs(options.headend.path) + standard_inputs(options.keep),
                              "the head-end and for --keep");
    expect_one_standard_input(is_standard_input_in(options.wishes.files) + standard_inputs(options.keep),
                              "--wish and for --keep");
}

ChoosingLimits limits_of(const ChooseOptions& options) {
    const std::uint32_t day = 86400;
    ChoosingLimits limits;
    limits.time = std::chrono::seconds(options.seconds != 0 ? options.seconds
                                       : options.runs != 0  ? day
                                                            : ChooseOptions::usual_seconds);
    limits.runs = options.runs;
    limits.seed = options.seed;
    limits.jobs = options.jobs;
    return limits;
}

/// The head-end with what the command line says of its services.
Headend with_wishes(const ChooseOptions& options, const std::string& file, Headend headend) {
    demand_services(options.musts, file, headend);
    for (const std::string& value : value_services(options.values, headend))
        write_message(fmt::format("--value '{}': no service of {} is meant", value, file));
    return headend;
}

/// `run` does not count them among the musts either, but this command is asked for them.
void warn_of_withheld_musts(const std::string& file, const Headend& headend) {
    const std::size_t most_named = 3;
    std::vector<std::string> names;
    std::size_t withheld = 0;
    for (const Service& service : headend.services)
        if (service.must && !service.ask && ++withheld <= most_named)
            names.push_back(fmt::format("LCN {} \"{}\"", service.lcn, shortened(service.name)));
    if (withheld == 0)
        return;
    if (withheld > most_named)
        names.push_back(fmt::format("{} more", withheld - most_named));
    write_message(fmt::format("{}: {} with \"must\": true and \"ask\": false, which no choice asks for: {}",
                              file, counted(withheld, "service"), fmt::join(names, ", ")));
}

Result read_kept(const std::string& path) {
    return read_result(input_name(path), read_text(path));
}

/// A slip of the pen: the search would keep nothing, and say so only by its figures.
void warn_of_another_headend(const ChooseOptions& options, const std::string& file, const Result& kept,
                             const StaysPut& stays) {
    const bool has_none = std::all_of(stays.module.begin(), stays.module.end(),
                                      [](const std::string& mac) { return mac.empty(); });
    if (kept.counts.placed != 0 && has_none)
        write_message(fmt::format("{}: {} placed, and none of them is in {}: nothing is kept",
                                  input_name(options.keep), counted(kept.counts.placed, "service"), file));
}

Choice search(const Headend& headend, const std::string& file, const ChoosingLimits& limits,
              const StaysPut& stays) {
    // What the search complains of it calls by the name, and the planner knows the file.
    Headend named = headend;
    named.name = file;
    LineOnStandardError line;
    return choose_services(named, limits, stays, [&](const ChoosingProgress& progress) {
        line.draw([&] { return progress_in_figures(progress, headend); });
        return !interruption::is_pending();
    });
}

} // namespace

void choose_command(const ChooseOptions& options) {
    check(options);
    apply(options.limits);
    const Reserve reserve = reserve_of(options.reserve);
    const std::string file = input_name(options.headend.path);
    Headend written = read_input(options.headend);
    warn_of_withheld_musts(file, written);
    ask_for_wishes(options.wishes, options.headend.path, written);
    std::optional<Result> kept;
    if (!options.keep.empty())
        kept = read_kept(options.keep);
    if (!options.chosen.empty())
        expect_writable(options.chosen);
    expect_writable(options.output);
    const host::Log no_log("");
    Headend headend = with_wishes(options, file, written);
    settle_variants(headend, file);

    StaysPut stays;
    if (kept) {
        stays = stays_put(headend, *kept);
        warn_of_another_headend(options, file, *kept, stays);
    }

    // Up to the end: what has been found is told, and only then the interruption.
    const interruption::Deferred deferred;
    const Choice choice = search(headend, file, limits_of(options), stays);
    ChoiceReport report = report_of(headend, choice, kept ? &*kept : nullptr, file, reserve);
    report.is_interrupted = interruption::is_pending();

    const std::string kept_name = input_name(options.keep);
    const bool is_told = options.chosen != standard_stream;
    const auto text = [&]() -> std::string {
        if (!is_told)
            return "";
        return options.output.json ? choice_json(report)
                                   : choice_text(report, kept_name, style_of(options.style),
                                                 extent_of(options.wishes.verbose));
    };
    write_each({[&] {
                    if (!options.chosen.empty())
                        write_text(options.chosen, write_headend(with_choice(written, choice)));
                },
                [&] {
                    write_reports(
                        options.output, [&] { return choice_page(report, kept_name); }, text);
                }});
}

} // namespace zarven::tool
