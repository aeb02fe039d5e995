// Options that several commands have stand in shared_options.h, all others where their command is.

#include "commands/program.h"

#include <limits>
#include <memory>
#include <utility>

#include <tRec_Version.h>

#include "commands/commands.h"
#include "commands/shared_options.h"
#include "lineup/import_choices.h"
#include "lineup/lineup.h"

namespace zarven::tool {

namespace {

/// With the options that all have.
Command command(const char* name, const char* description, std::vector<Option> options,
                std::function<void()> perform) {
    options.insert(options.begin(), {{"-h", "--help"}, Answer::help, "Print this help message and exit"});
    options.push_back({{"--version"}, Answer::version, "Display program version information and exit"});
    return {name, description, std::move(options), std::move(perform)};
}

Command describe_run() {
    const auto options = std::make_shared<RunOptions>();
    return command(
        "run", "Place the services of a head-end and report where they went",
        {headend_argument(options->headend),
         set_option(options->headend),
         only_option(options->filter),
         exclude_option(options->filter),
         select_option(options->filter),
         wish_option(options->wishes, "Ask only for services"),
         wish_lcns_flag(options->wishes),
         verbose_flag(options->wishes.verbose),
         json_flag(options->output.json),
         html_option(options->output, "result"),
         named_file(with_value({"--live"}, "FILE", &options->live,
                               "Write the planner for a browser with this head-end inside, to go on there")),
         flag("--strategies", options->strategies,
              "Show first what each of the engine's four strategies alone would leave out"),
         flag("--summary", options->summary, "Report the numbers of services alone, in one line"),
         flag("--pauses", options->pauses, "Keep the engine's pauses, which take from seconds to minutes"),
         named_file(with_value({"--log"}, "FILE", &options->log,
                               "Write the engine's log to a file; - for standard error")),
         with_fallback(with_value({"--max-log"}, "MB", &options->limits.log_megabytes,
                                  "Stop a run whose log is longer, in millions of bytes; 0 for no limit")),
         fail_on_option(options->fail_on, "the placement"),
         trials_option(options->trials),
         reserve_option(options->reserve),
         max_seconds_option(options->limits),
         color_option(options->style)},
        [options] { run_command(*options); });
}

Command describe_explain() {
    const auto options = std::make_shared<ExplainOptions>();
    return command(
        "explain", "Tell why services are left out, and what each module answers",
        {headend_argument(options->headend), set_option(options->headend),
         with_value({"--service"}, "KEY", &options->services,
                    "A service by its LCN or its name; with @ONID/TSID for one stream only. May be given "
                    "several times. Without it, all that are on no output"),
         flag(
             "--remedy", options->remedy,
             "Look for the smallest change with which the engine places each service asked for, by running it"),
         trials_option(options->trials), flag("--json", options->json, "Answer as JSON"),
         reserve_option(options->reserve), all_cautions_flag(options->verbose),
         max_seconds_option(options->limits), color_option(options->style)},
        [options] { explain_command(*options); });
}

Command describe_compare() {
    const auto options = std::make_shared<CompareOptions>();
    return command(
        "compare", "Show two placements side by side",
        {argument("BEFORE", &options->before, "A head-end, or a result of run --json; - for standard input"),
         argument("AFTER", &options->after.path, "What to compare it with, of either kind"),
         set_option(options->after, "Change a value of AFTER, a head-end, for this run"),
         json_flag(options->output.json), html_option(options->output, "comparison"),
         fail_on_option(options->fail_on, "the second placement"), reserve_option(options->reserve),
         all_cautions_flag(options->verbose), max_seconds_option(options->limits),
         color_option(options->style)},
        [options] { compare_command(*options); });
}

Command describe_size() {
    const auto options = std::make_shared<SizeOptions>();
    return command(
        "size", "Tell what to change so that all services are placed",
        {headend_argument(options->headend), set_option(options->headend),
         required(with_value({"--add"}, "FILE", &options->add,
                             "The kind of module to add: a module, or a head-end file with one; - for "
                             "standard input. Of several kinds the cheapest mix is looked for")),
         within(0, 10000,
                with_fallback(with_value({"--most"}, "N", &options->most, "The most modules to add"))),
         flag(
             "--choose", options->choose,
             "With each number of modules, ask for what a search finds to ask for, as choose does, and not for "
             "everything"),
         jobs_option(options->jobs, "runs"), json_flag(options->json), max_seconds_option(options->limits),
         color_option(options->style)},
        [options] { size_command(*options); });
}

Command describe_choose() {
    const auto options = std::make_shared<ChooseOptions>();
    const int most_seconds = 86400;
    const int most = std::numeric_limits<std::int32_t>::max();
    return command(
        "choose", "Find which services to ask for, so that the most that matters is placed",
        {headend_argument(options->headend), set_option(options->headend),
         wish_option(options->wishes, "Choose only among services"), wish_lcns_flag(options->wishes),
         verbose_flag(options->wishes.verbose),
         with_value(
             {"--must"}, "KEY", &options->musts,
             "A service that must be placed, by its LCN or its name; with @ONID/TSID for one stream only. "
             "May be given several times"),
         with_value({"--value"}, "SELECTION=N", &options->values,
                    "What services are worth, from 0 (leave it out) to 1000; 1 by default. The selection is "
                    "as for --only of run; of several values for one service the last counts"),
         within(1, most_seconds,
                with_value({"--seconds"}, "N", &options->seconds,
                           "How long to search; 20 by default, with --runs as long as these take")),
         within(
             1, most,
             with_value({"--runs"}, "N", &options->runs,
                        "How many states to try on each core. The same number, seed and jobs give the same "
                        "answer")),
         within(0, most,
                with_fallback(with_value({"--seed"}, "N", &options->seed, "Where the search begins"))),
         jobs_option(options->jobs, "searches"),
         named_file(with_value({"--keep"}, "RESULT", &options->keep,
                               "A result of run --json: of what is worth the same, move the fewest services "
                               "that it places; - for standard input")),
         named_file(with_value({"-o", "--output"}, "FILE", &options->chosen,
                               "Write the head-end with the services marked that are not asked for; - for "
                               "standard output in the place of the report")),
         json_flag(options->output.json), html_option(options->output, "choice"),
         reserve_option(options->reserve), max_seconds_option(options->limits), color_option(options->style)},
        [options] { choose_command(*options); });
}

Command describe_drill() {
    const auto options = std::make_shared<DrillCommandOptions>();
    return command(
        "drill", "Tell what goes off the air when a module or an input fails, and what a new run saves",
        {headend_argument(options->headend), set_option(options->headend),
         flag("--streams", options->streams, "Each stream fails in turn, too"),
         named_file(with_value({"--spare"}, "FILE", &options->spare,
                               "The kind of a spare module: a module, or a head-end file with one; - for "
                               "standard input. Look for the smallest number of them with which no module or "
                               "input that fails loses a service marked as must, or where none is, any that "
                               "is placed now")),
         within(0, 1000,
                with_fallback(with_value({"--most"}, "N", &options->most, "The most spare modules to try"))),
         jobs_option(options->jobs, "runs"),
         flag("--all", options->all, "Tell every failure, and what the worst moves; by default the 20 worst"),
         json_flag(options->output.json), html_option(options->output, "drill"),
         max_seconds_option(options->limits), color_option(options->style)},
        [options] { drill_command(*options); });
}

Command describe_bound() {
    const auto options = std::make_shared<BoundOptions>();
    return command("bound", "Tell how many services any arrangement of a head-end could place",
                   {headend_argument(options->headend), set_option(options->headend),
                    json_flag(options->json), max_seconds_option(options->limits),
                    color_option(options->style)},
                   [options] { bound_command(*options); });
}

Command describe_import() {
    const auto options = std::make_shared<ImportOptions>();
    const auto estimate = [&](const EstimateChoice& choice) {
        return with_fallback(
            with_value({choice.option}, "KBITS", &(options->estimates.*choice.bitrate), choice.meaning));
    };
    return command(
        "import", "Make a head-end of a channel list and modules",
        {argument("CHANNELS", &options->channels,
                  "The lists, each channels.conf, dvbv5 or lamedb; - for standard input"),
         required(with_value({"--modules"}, "FILE", &options->modules,
                             "A head-end file whose modules to take; - for standard input")),
         one_of(lineup_format_names(), with_value({"--format"}, "", &options->format,
                                                  "What the list is; by default it shows that itself")),
         output_option(options->output, "Where to write the head-end; - for standard output"),
         estimate(estimate_choices[0]), estimate(estimate_choices[1]), estimate(estimate_choices[2]),
         estimate(estimate_choices[3]),
         flag("--keep-duplicates", options->keep_duplicates, meaning_of_keep_duplicates),
         named_file(
             with_value({"--measured"}, "FILE", &options->measured.files,
                        "Measured rates, which stand in the place of estimates: the analysis of a "
                        "stream as JSON, a log of such, or a table as CSV; - for standard input. May be "
                        "given several times")),
         margin_option(options->measured, "measured ones"), only_option(options->filter),
         exclude_option(options->filter), select_option(options->filter),
         wish_option(options->wishes, "Only services"), wish_lcns_flag(options->wishes),
         verbose_flag(options->verbose)},
        [options] { import_command(*options); });
}

Command describe_measure() {
    const auto options = std::make_shared<MeasureOptions>();
    return command(
        "measure", "Put measured rates into a head-end",
        {headend_argument(options->headend), set_option(options->headend),
         argument(
             "FILES", &options->measured.files,
             "Measured rates, each the analysis of a stream as JSON, a log of such, or a table as CSV; - for "
             "standard input"),
         output_option(options->output, "Where to write the head-end; - for standard output"),
         margin_option(options->measured, "those measured now"), verbose_flag(options->verbose)},
        [options] { measure_command(*options); });
}

Command describe_export() {
    const auto options = std::make_shared<ExportOptions>();
    return command("export", "Write the result of a run as a channel list, a table or a page",
                   {argument("RESULT", &options->result,
                             "The result, as `recalculo run --json` writes it; - for standard input"),
                    required(one_of({format_channels_conf, format_csv, format_html},
                                    with_value({"--format"}, "", &options->format, "What to write"))),
                    output_option(options->output, "Where to write it; - for standard output")},
                   [options] { export_command(*options); });
}

/// Answered where the command line is read (command_line.cpp), which knows the help.
Command describe_help(const std::vector<Command>& others) {
    std::vector<std::string> names;
    for (const Command& other : others)
        names.push_back(other.name);
    const auto about = std::make_shared<std::string>();
    Option argument_option =
        one_of(names, argument(help_argument, about.get(), "The command to tell of; by default all of them"));
    argument_option.value.clear();
    argument_option.may_be_missing = true;
    return command(help_command, "Tell what the program or a command does, as --help", {argument_option},
                   [about] {});
}

} // namespace

bool is_argument(const Option& option) {
    return option.names.front().front() != '-';
}

bool takes_several(const Option& option) {
    return std::holds_alternative<std::vector<std::string>*>(option.target);
}

Program describe_program() {
    std::vector<Command> commands = {
        describe_run(),   describe_explain(), describe_compare(), describe_size(),    describe_choose(),
        describe_drill(), describe_bound(),   describe_import(),  describe_measure(), describe_export()};
    commands.push_back(describe_help(commands));
    return {command("recalculo", "Places the television services of a head-end onto its modules.", {}, {}),
            std::move(commands), "recalculo " RECALCULO_VERSION};
}

} // namespace zarven::tool
