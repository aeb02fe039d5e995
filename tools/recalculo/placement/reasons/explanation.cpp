#include "placement/reasons/explanation.h"

#include <utility>

#include <fmt/format.h>

#include "placement/reasons/reason.h"

namespace zarven::tool {

/// Services left out and clones that wait.
static ServiceSet not_placed_by(const EngineRun& run) {
    ServiceSet services = set_of(left_out_of(run));
    services.merge(set_of(run.engine.listaServiciosClonados));
    return services;
}

Explainer::Explainer(const EngineRun& run, Listing listing)
    : run_(run), listing_(listing), state_(run), clones_(set_of(run.clones)), not_placed_(not_placed_by(run)),
      findings_(audit(run)), placed_(placed_of(run)) {}

Standing Explainer::standing_of(const tRec_Servicio& service, bool is_carried) const {
    const bool is_clone = clones_.count(&service) != 0;
    const bool is_left = not_placed_.count(&service) != 0;
    if (is_left && is_carried)
        return Standing::placed_and_left_out;
    if (is_left)
        return is_clone ? Standing::waiting : Standing::left_out;
    if (placed_.count(&service) == 0)
        return Standing::neither;
    return is_clone ? Standing::attached : Standing::placed;
}

std::string Explainer::sentence_on(const tRec_Servicio& service, Standing standing,
                                   const std::string& places) const {
    switch (standing) {
    case Standing::placed:
        return fmt::format("It is placed on {}.", places);
    case Standing::attached:
        return fmt::format("It stands beside its parent on {}.", places);
    case Standing::waiting:
        return reason_waiting(run_, service);
    case Standing::neither:
        return reason_neither(run_, service);
    default:
        return reason_left_out(state_, service).text;
    }
}

Explanation Explainer::explain(const std::shared_ptr<tRec_Servicio>& service) {
    const bool is_clone = clones_.count(service.get()) != 0;
    std::vector<ModuleRefusal> refusals = state_.refusals_of(*service);
    const std::string places = places_of(refusals);

    Explanation explanation;
    explanation.service = describe(run_, *service, is_clone);
    explanation.transcoding = service->Transcoding;
    explanation.standing = standing_of(*service, !places.empty());
    explanation.sentence = sentence_on(*service, explanation.standing, places);
    for (const AuditFinding& finding : findings_)
        if (finding.service == service.get())
            explanation.findings.push_back(finding);
    if (is_clone)
        return explanation;
    for (ModuleRefusal& refusal : refusals)
        if (is_listed(refusal))
            explanation.modules.push_back(std::move(refusal));
        else
            ++explanation.unlisted;
    return explanation;
}

bool may_have_remedies(const Explanation& explanation) {
    return !explanation.service.is_clone && explanation.standing != Standing::placed;
}

bool Explainer::is_listed(const ModuleRefusal& refusal) const {
    return listing_ == Listing::all_modules || refusal.has_input() || !refusal.carried_on.empty();
}

} // namespace zarven::tool
