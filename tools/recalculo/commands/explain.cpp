// What can be wrong with the command line and the queries is told before the engine runs, which may take
// long.

#include "commands/commands.h"

#include <string>
#include <vector>

#include "base/streams.h"
#include "commands/watched_run.h"
#include "placement/engine_run.h"
#include "placement/explanation.h"
#include "placement/explanation_json.h"
#include "placement/host.h"
#include "placement/service_query.h"
#include "report/explanation_text.h"
#include "report/summary_text.h"

namespace zarven::tool {

namespace {

void write(const std::string& text) {
    write_text(standard_stream, text);
}

/// Writes explanations one at a time, because all together may not fit into memory.
void tell_as_text(Explainer& explainer, const Services& services, const TextStyle& style) {
    if (services.empty())
        write(paragraph_text("No service is left out.", 0, Paint::none, style));
    bool any_unplaced = false;
    const char* before = "";
    for (const auto& service : services) {
        const Explanation explanation = explainer.explain(service);
        any_unplaced = any_unplaced || (explanation.standing != Standing::placed &&
                                        explanation.standing != Standing::attached);
        write(before + explanation_text(explanation, style));
        before = "\n";
    }
    if (any_unplaced)
        write(explanations_caveat_text(style));
}

void tell_as_json(Explainer& explainer, const Services& services, const std::string& name) {
    write(explanations_json_begin(name));
    const char* before = "";
    for (const auto& service : services) {
        write(before + explanation_json(explainer.explain(service)));
        before = ",";
    }
    write(explanations_json_end(explainer.findings()));
}

} // namespace

void explain_command(const ExplainOptions& options) {
    std::vector<ServiceQuery> queries;
    for (const std::string& text : options.services)
        queries.push_back(parse_service_query(text));
    const std::string file = input_name(options.headend.path);
    const Headend headend = read_input(options.headend);

    // No log: the engine is asked much that is no part of a run.
    const host::Log silence("");
    EngineRun run = load_engine(headend, file);
    Services services = services_with(queries, run, file);
    run_watched(run, file);
    Explainer explainer(run, queries.empty() ? Listing::with_an_input : Listing::all_modules);
    if (queries.empty())
        services = unplaced_of(run);
    if (options.json)
        return tell_as_json(explainer, services, headend.name);
    const TextStyle style = style_of(options.style);
    const std::vector<Finding> findings = explainer.findings();
    if (queries.empty())
        write(broken_text(findings, style));
    tell_as_text(explainer, services, style);
    write(queries.empty() ? closing_notes_text(findings, style)
                          : broken_elsewhere_text(broken_among(findings), style));
}

} // namespace zarven::tool
