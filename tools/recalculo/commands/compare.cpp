// Each side is a result, or a head-end that is run to get one.

#include "commands/compare.h"

#include <memory>

#include "base/failure.h"
#include "base/streams.h"
#include "headend/headend_json.h"
#include "headend/json_text.h"
#include "placement/comparison.h"
#include "placement/host.h"
#include "report/comparison_json.h"
#include "report/comparison_page.h"
#include "report/comparison_text.h"
#include "report/result_reader.h"

namespace zarven::tool {

namespace {

struct CompareOptions {
    std::string before;
    std::string after;
    bool json = false;
    /// Empty for no page.
    std::string html;
};

/// Every result has a summary, and no head-end does.
bool is_result(const nlohmann::json& document) {
    return document.is_object() && document.count("summary") != 0;
}

Result result_in(const std::string& path) {
    const std::string file = input_name(path);
    const std::string text = read_text(path);
    const nlohmann::json document = parse_json(file, text);
    if (is_result(document))
        return read_result(file, text);
    const Headend headend = headend_of(file, document);
    const host::Log no_log("");
    EngineRun run = load_engine(headend, file);
    run_engine(run, file);
    return result_of(run, headend.name);
}

/// The page goes first: when it cannot be written, nothing is reported.
void write_reports(const CompareOptions& options, const Comparison& comparison) {
    const ComparedFiles files{input_name(options.before), input_name(options.after)};
    if (!options.html.empty())
        write_text(options.html, comparison_page(comparison, files));
    if (options.html != standard_stream)
        write_text(standard_stream,
                   options.json ? comparison_json(comparison) : comparison_text(comparison, files));
}

void compare_command(const CompareOptions& options) {
    if (options.json && options.html == standard_stream)
        throw Failure("--json and --html - both write to standard output; expected a file for --html");
    if (options.before == standard_stream && options.after == standard_stream)
        throw Failure("standard input: found \"-\" for both, expected it once");
    const Result before = result_in(options.before);
    const Result after = result_in(options.after);
    write_reports(options, compare(before, after));
}

} // namespace

void add_compare(CLI::App& app) {
    const auto options = std::make_shared<CompareOptions>();
    CLI::App* compare = app.add_subcommand("compare", "Show two placements side by side");
    const auto add_side = [compare](const char* name, std::string& path, const char* description) {
        compare->add_option(name, path, description)->type_name("")->required();
    };
    add_side("BEFORE", options->before, "A head-end, or a result of run --json; - for standard input");
    add_side("AFTER", options->after, "What to compare it with, of either kind");
    compare->add_flag("--json", options->json, "Report as JSON");
    compare
        ->add_option(
            "--html", options->html,
            "Write the comparison as a page for a browser; - for standard output in the place of the "
            "report")
        ->type_name("FILE");
    compare->callback([options] { compare_command(*options); });
}

} // namespace zarven::tool
