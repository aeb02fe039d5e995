#include "commands/shared_options.h"

#include <utility>
#include <variant>

#include <fmt/format.h>

#include "commands/fail_on.h"
#include "lineup/import_choices.h"
#include "report/terminal.h"

namespace zarven::tool {

Option argument(const char* name, Target target, const char* description) {
    return {{name}, target, description};
}

Option flag(const char* name, bool& value, const char* description) {
    return {{name}, &value, description};
}

Option with_value(std::vector<std::string> names, const char* value, Target target, std::string description) {
    return {std::move(names), target, std::move(description), value};
}

Option required(Option option) {
    option.is_required = true;
    return option;
}

Option named_file(Option option) {
    option.is_named_file = true;
    return option;
}

Option within(int least, int most, Option option) {
    option.range = {least, most};
    option.value += fmt::format(":INT in [{} - {}]", least, most);
    return option;
}

Option one_of(std::vector<std::string> words, Option option) {
    option.value = fmt::format("{}", fmt::join(words, "|"));
    option.words = std::move(words);
    return option;
}

Option with_fallback(Option option) {
    if (const auto* text = std::get_if<std::string*>(&option.target))
        option.fallback = **text;
    else if (const auto* number = std::get_if<std::uint32_t*>(&option.target))
        option.fallback = std::to_string(**number);
    return option;
}

Option headend_argument(HeadendInput& input) {
    return argument("HEADEND", &input.path, "The head-end, a JSON file; - for standard input");
}

Option set_option(HeadendInput& input, const std::string& what) {
    return with_value({"--set"}, "PATH=VALUE", &input.settings,
                      what +
                          ", as in modules[2].pids_max=64, counted from 0, or modules[MAC].pids_max=64; [*] "
                          "for all of a list; may be given several times");
}

Option json_flag(bool& json) {
    return flag("--json", json, "Report as JSON");
}

Option html_option(ReportOutput& output, const std::string& what) {
    return named_file(with_value({"--html"}, "FILE", &output.html,
                                 "Write the " + what +
                                     " as a page for a browser; - for standard output in the place of the "
                                     "report"));
}

Option fail_on_option(std::vector<std::string>& outcomes, const std::string& which) {
    return one_of(
        {fail_on_broken, fail_on_left_out},
        with_value({"--fail-on"}, "", &outcomes,
                   "End with exit code 3 if something in " + which +
                       " is broken, with 4 if services or clones are without a place. The report is "
                       "written all the same; may be given several times"));
}

Option jobs_option(std::uint32_t& jobs, const std::string& what) {
    return within(1, 256,
                  with_value({"--jobs"}, "N", &jobs,
                             "How many " + what + " at once; as many as there are cores by default"));
}

Option trials_option(std::uint32_t& trials) {
    return within(0, 1000000,
                  with_value({"--trials"}, "N", &trials,
                             "Look for the limit whose raise helps most by running the engine on about N "
                             "changed head-ends at the most; 0 for none. By default 200, fewer for more than "
                             "1000 services"));
}

Option max_seconds_option(EngineLimits& limits) {
    return with_fallback(
        with_value({"--max-seconds"}, "N", &limits.seconds,
                   "Stop a run of the engine that takes longer, pauses apart; 0 for no limit"));
}

Option color_option(StyleInput& style) {
    return one_of(colour_choices(),
                  with_value({"--color"}, "", &style.colour, "Colour the report; auto is on a terminal"));
}

Option output_option(std::string& path, const char* description) {
    return with_fallback(with_value({"-o", "--output"}, "FILE", &path, description));
}

Option only_option(FilterInput& filter) {
    return with_value({"--only"}, "TERMS", &filter.only,
                      std::string("Only services that are ") + meaning_of_terms +
                          ". Of several --only all must hold");
}

Option exclude_option(FilterInput& filter) {
    return with_value({"--exclude"}, "TERMS", &filter.exclude, "No services that are one of these");
}

Option select_option(FilterInput& filter) {
    return with_value({"--select"}, "FILE", &filter.selections,
                      "Only services that stand in this file, a name or LCN a line");
}

Option wish_option(WishInput& input, const std::string& effect) {
    return named_file(with_value({"--wish"}, "FILE", &input.files,
                                 effect +
                                     " that stand in this wish list, those first that stand first: a "
                                     "receiver's bouquet, a table as CSV, or a name or LCN a line; - for "
                                     "standard input. May be given several times"));
}

Option wish_lcns_flag(WishInput& input) {
    return flag("--wish-lcns", input.lcns, meaning_of_wished_lcns);
}

Option margin_option(MeasuredInput& input, const std::string& which) {
    return with_value({"--margin"}, "[KIND=]N%", &input.margins,
                      meaning_of_margins(which) + "; may be given several times");
}

Option verbose_flag(bool& verbose) {
    return flag("--verbose", verbose, "Tell every message; by default three of each kind");
}

Option reserve_option(ReserveInput& input) {
    return with_value({"--reserve"}, "N%", &input.percent, meaning_of_reserve);
}

Option all_cautions_flag(bool& verbose) {
    return flag("--verbose", verbose, "Tell every caution; by default three of each kind");
}

} // namespace zarven::tool
