#include "placement/explanation.h"

#include <utility>

#include <fmt/format.h>

#include "placement/reason.h"

namespace zarven::tool {

namespace {

std::set<const tRec_Servicio*> set_of(const Services& services) {
    std::set<const tRec_Servicio*> set;
    for (const auto& service : services)
        set.insert(service.get());
    return set;
}

} // namespace

Services left_out_of(const EngineRun& run) {
    Services services;
    std::set<const tRec_Servicio*> seen;
    for (const auto& [onid, network] : run.engine.Mapa_ONIDs_Final)
        for (const auto& [tsid, stream] : network.MapRec_TSIDs)
            for (const auto& [key, service] : stream.MapRec_Services)
                if (seen.insert(service.get()).second)
                    services.push_back(service);
    const Services& waiting = run.engine.listaServiciosClonados;
    services.insert(services.end(), waiting.begin(), waiting.end());
    return services;
}

Explainer::Explainer(const EngineRun& run, Listing listing)
    : run_(run), listing_(listing), state_(run), clones_(set_of(run.clones)),
      not_placed_(set_of(left_out_of(run))) {
    for (const auto& [mac, module] : run.engine.Mapa_ModulosCabecera_Final)
        probes_.emplace_back(module);
}

Standing Explainer::standing_of(const tRec_Servicio& service, bool is_carried) const {
    const bool is_left = not_placed_.count(&service) != 0;
    if (clones_.count(&service) != 0 && is_left != is_carried)
        return is_left ? Standing::waiting : Standing::attached;
    if (is_left)
        return is_carried ? Standing::placed_and_left_out : Standing::left_out;
    return is_carried ? Standing::placed : Standing::neither;
}

std::string Explainer::sentence_on(const tRec_Servicio& service, Standing standing,
                                   const std::string& places) const {
    switch (standing) {
    case Standing::placed:
        return fmt::format("It is placed on {}.", places);
    case Standing::attached:
        return fmt::format("It stands beside its parent on {}.", places);
    case Standing::waiting:
        return reason_waiting(run_.engine, service);
    case Standing::neither:
        return "It is neither placed nor left out: the engine's exchanges have lost it.";
    default:
        return reason_left_out(state_, service);
    }
}

Explanation Explainer::explain(const std::shared_ptr<tRec_Servicio>& service) {
    const bool is_clone = clones_.count(service.get()) != 0;
    std::vector<ModuleRefusal> refusals = state_.refusals_of(*service);
    const std::string places = places_of(refusals);

    Explanation explanation;
    explanation.service = describe(*service, is_clone);
    explanation.transcoding = service->Transcoding;
    explanation.standing = standing_of(*service, !places.empty());
    explanation.sentence = sentence_on(*service, explanation.standing, places);
    if (is_clone)
        return explanation;
    for (std::size_t index = 0; index < refusals.size(); ++index) {
        ModuleAnswer answer{std::move(refusals[index]), false};
        answer.engine_has_room = probes_[index].has_room(service, answer.refusal);
        if (is_listed(answer))
            explanation.modules.push_back(std::move(answer));
        else
            ++explanation.unlisted;
    }
    return explanation;
}

bool Explainer::is_listed(const ModuleAnswer& answer) const {
    return listing_ == Listing::all_modules || answer.refusal.has_input() ||
           !answer.refusal.carried_on.empty() || !answer.engine_agrees();
}

} // namespace zarven::tool
