// What can be wrong with the command line and the queries is told before the engine runs, which may take
// long.

#include "commands/commands.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/failure.h"
#include "base/streams.h"
#include "commands/watched_run.h"
#include "placement/one_of.h"
#include "placement/reasons/explanation.h"
#include "placement/reasons/explanation_json.h"
#include "placement/running/engine_run.h"
#include "placement/running/host.h"
#include "placement/service_query.h"
#include "placement/sizing/advising.h"
#include "report/causes_text.h"
#include "report/caution_text.h"
#include "report/explanation_text.h"
#include "report/summary_text.h"

namespace zarven::tool {

namespace {

void write(const std::string& text) {
    write_text(standard_stream, text);
}

/// Of each kind of change.
constexpr std::size_t most_remedies_tried = 400;

/// Explains, and looks for remedies if that is wanted.
class Answering {
public:
    /// All must outlive this; without a search no remedies are looked for.
    Answering(Explainer& explainer, const RemedySearch* search) : explainer_(explainer), search_(search) {}

    Explanation answer(const std::shared_ptr<tRec_Servicio>& service) const {
        Explanation explanation = explainer_.explain(service);
        if (search_ != nullptr && may_have_remedies(explanation))
            explanation.remedies = search_->remedies_for(*service, most_remedies_tried);
        return explanation;
    }

private:
    Explainer& explainer_;
    const RemedySearch* search_;
};

/// Writes explanations one at a time, because all together may not fit into memory.
void tell_as_text(const Answering& answering, const Services& services, const TextStyle& style) {
    if (services.empty())
        write(paragraph_text("No service is left out.", 0, Paint::none, style));
    bool any_unplaced = false;
    const char* before = "";
    for (const auto& service : services) {
        const Explanation explanation = answering.answer(service);
        any_unplaced = any_unplaced || (explanation.standing != Standing::placed &&
                                        explanation.standing != Standing::attached);
        write(before + explanation_text(explanation, style));
        before = "\n";
    }
    if (any_unplaced)
        write(explanations_caveat_text(style));
}

void tell_as_json(const Answering& answering, const Services& services, const Result& result,
                  const std::vector<Finding>& findings) {
    write(explanations_json_begin(result));
    const char* before = "";
    for (const auto& service : services) {
        write(before + explanation_json(answering.answer(service)));
        before = ",";
    }
    write(explanations_json_end(findings));
}

} // namespace

void explain_command(const ExplainOptions& options) {
    apply(options.limits);
    const Reserve reserve = reserve_of(options.reserve);
    std::vector<ServiceQuery> queries;
    for (const std::string& text : options.services)
        queries.push_back(parse_service_query(text));
    if (options.remedy && queries.empty())
        throw Failure("--remedy looks for what would place single services; expected --service for each");
    const std::string file = input_name(options.headend.path);
    Headend headend = read_input(options.headend);

    // No log: the engine is asked much that is no part of a run.
    const host::Log silence("");
    settle_variants(headend, file);
    EngineRun run = load_engine(headend, file);
    Services services = services_with(queries, run, file, headend);
    run_watched(run, file);
    Explainer explainer(run, queries.empty() ? Listing::with_an_input : Listing::all_modules);
    Result result = result_of(run, headend.name);
    set_reserve(result, reserve);
    if (queries.empty()) {
        services = unplaced_of(run);
        result.advice = advice_for(headend, file, result, options.trials);
    }
    std::optional<RemedySearch> search;
    if (options.remedy)
        search.emplace(headend, file, run, result);
    const Answering answering(explainer, search ? &*search : nullptr);
    if (options.json)
        return tell_as_json(answering, services, result, explainer.findings());
    const TextStyle style = style_of(options.style);
    const std::vector<Finding> findings = explainer.findings();
    if (queries.empty())
        write(broken_text(findings, style) + causes_text(result, style));
    tell_as_text(answering, services, style);
    write(queries.empty() ? closing_notes_text(findings, style) +
                                closing_cautions_text(cautions_of(result), style, extent_of(options.verbose))
                          : broken_elsewhere_text(broken_among(findings), style));
}

} // namespace zarven::tool
