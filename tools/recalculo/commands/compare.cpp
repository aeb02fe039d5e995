// Each side is a result, or a head-end that is run to get one.

#include "commands/commands.h"

#include <string>

#include <fmt/format.h>

#include "base/streams.h"
#include "commands/fail_on.h"
#include "commands/standard_input.h"
#include "commands/watched_run.h"
#include "headend/headend_json.h"
#include "headend/override.h"
#include "placement/change/comparison.h"
#include "placement/documents.h"
#include "placement/one_of.h"
#include "placement/result_json.h"
#include "placement/running/host.h"
#include "report/comparison_text.h"
#include "report/page/comparison_page.h"

namespace zarven::tool {

namespace {

Result result_of_run(Headend headend, const std::string& file) {
    warn_of_odd_macs(file, headend);
    const host::Log no_log("");
    settle_variants(headend, file);
    EngineRun run = load_engine(headend, file);
    run_watched(run, file);
    return result_of(run, headend.name);
}

Result result_in(const HeadendInput& input) {
    return read_json_file(input.path, [&](const std::string& name, const std::string& text) {
        const Document document(name, text);
        const bool is_changed = !input.settings.empty();
        if (is_result(document) && is_changed)
            document.complain("a result", "a head-end, which alone --set can change");
        if (is_result(document))
            return read_result(document);
        return result_of_run(is_changed ? read_headend(name, text, input.settings) : read_headend(document),
                             name);
    });
}

/// The file, and what is changed in it.
std::string name_of(const HeadendInput& input) {
    std::string name = input_name(input.path);
    for (const std::string& setting : input.settings)
        name += fmt::format(" --set '{}'", setting);
    return name;
}

} // namespace

void compare_command(const CompareOptions& options) {
    apply(options.limits);
    check(options.output);
    expect_one_standard_input(standard_inputs(options.before) + standard_inputs(options.after.path), "both");
    reserve_of(options.reserve); // before anything takes long
    Result before = result_in({options.before, {}});
    Result after = result_in(options.after);
    for (Result* result : {&before, &after})
        apply_reserve(options.reserve, *result);
    const Comparison comparison = compare(before, after);
    const ComparedFiles files{input_name(options.before), name_of(options.after)};
    write_reports(
        options.output, [&] { return comparison_page(comparison, files); },
        [&] {
            return options.output.json ? comparison_json(comparison)
                                       : comparison_text(comparison, files, style_of(options.style),
                                                         extent_of(options.verbose));
        });
    fail_on(options.fail_on, after.counts, after.findings, files.after);
}

} // namespace zarven::tool
