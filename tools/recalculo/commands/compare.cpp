// Each side is a result, or a head-end that is run to get one.

#include "commands/commands.h"

#include "base/failure.h"
#include "base/streams.h"
#include "commands/watched_run.h"
#include "headend/headend_json.h"
#include "placement/comparison.h"
#include "placement/documents.h"
#include "placement/host.h"
#include "placement/result_json.h"
#include "report/comparison_text.h"
#include "report/page/comparison_page.h"

namespace zarven::tool {

namespace {

Result result_in(const std::string& path) {
    const std::string file = input_name(path);
    const auto document = read_json_file(path, [](const std::string& name, const std::string& text) {
        return std::make_unique<Document>(name, text);
    });
    if (is_result(*document))
        return read_result(*document);
    const Headend headend = read_headend(*document);
    const host::Log no_log("");
    EngineRun run = load_engine(headend, file);
    run_watched(run, file);
    return result_of(run, headend.name);
}

} // namespace

void compare_command(const CompareOptions& options) {
    check(options.output);
    if (options.before == standard_stream && options.after == standard_stream)
        throw Failure("standard input: found \"-\" for both, expected it once");
    const Result before = result_in(options.before);
    const Result after = result_in(options.after);
    const Comparison comparison = compare(before, after);
    const ComparedFiles files{input_name(options.before), input_name(options.after)};
    write_reports(
        options.output, [&] { return comparison_page(comparison, files); },
        [&] {
            return options.output.json ? comparison_json(comparison)
                                       : comparison_text(comparison, files, style_of(options.style));
        });
}

} // namespace zarven::tool
