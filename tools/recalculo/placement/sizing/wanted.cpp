#include "placement/sizing/wanted.h"

#include <algorithm>
#include <utility>

#include "placement/reasons/refusal.h"
#include "placement/sizing/further_modules.h"

namespace zarven::tool {

Wanted::Wanted(const Headend& headend, const std::string& file, const std::vector<Module>& kinds,
               bool are_added)
    : loaded_(load_engine(headend, file)), modules_(capacities_of(loaded_)) {
    for (const Module& kind : kinds)
        kinds_.push_back(capacities_of(load_engine(with_modules({}, kind, 1), file)).front());
    std::vector<ModuleCapacity> modules = modules_;
    if (are_added)
        modules.insert(modules.end(), kinds_.begin(), kinds_.end());
    find_impossible(find_musts(headend), modules);
}

ServiceSet Wanted::find_musts(const Headend& headend) const {
    ServiceSet musts;
    for (std::size_t index = 0; index < headend.services.size(); ++index)
        if (headend.services[index].must && loaded_.services[index] != nullptr)
            musts.insert(loaded_.services[index]);
    return musts;
}

/// With modules enough the positive keys are placed, and the other services are asked for, too.
void Wanted::find_impossible(const ServiceSet& musts, const std::vector<ModuleCapacity>& modules) {
    musts_ = musts.size();
    std::set<Stream> tunable;
    for (const auto& service : loaded_.engine.listaServicios)
        if (tunes_an_input_for(service->idService, *service, false))
            tunable.insert(stream_of(*service));
    decltype(loaded_.engine.listaServicios) possible;
    for (const auto& service : loaded_.engine.listaServicios) {
        if (!musts.empty() && musts.count(service.get()) == 0)
            continue;
        std::string reason = why_none_could_take(modules, *service);
        if (reason.empty() && tunable.count(stream_of(*service)) == 0)
            reason = "all services of its stream need transcoding, and for such the engine tunes no input";
        ServiceResult described = describe(*service, false);
        if (reason.empty()) {
            possible.push_back(service);
            wanted_.insert(numbers_of(described));
            continue;
        }
        described.reason = reason;
        impossible_.push_back(std::move(described));
    }
    // What nobody asks for, or is impossible, is no part of what is to be placed.
    loaded_.engine.listaServicios = std::move(possible);
}

Bound Wanted::limits_with(const std::vector<std::size_t>& numbers) const {
    std::vector<ModuleCapacity> modules = modules_;
    for (std::size_t kind = 0; kind < numbers.size(); ++kind)
        modules.insert(modules.end(), numbers[kind], kinds_[kind]);
    return single_limits_of(loaded_, modules);
}

std::vector<ServiceResult> Wanted::missing_in(const SizingTrial& trial) const {
    std::vector<ServiceResult> missing;
    if (!trial.result) {
        for (const auto& service : loaded_.engine.listaServicios)
            missing.push_back(describe(*service, false));
        return missing;
    }
    const auto add = [&](const ServiceResult& service) {
        if (!service.is_clone && wanted_.count(numbers_of(service)) != 0)
            missing.push_back(service);
    };
    for (const StreamResult& stream : trial.result->left_out)
        std::for_each(stream.services.begin(), stream.services.end(), add);
    std::for_each(trial.result->neither.begin(), trial.result->neither.end(), add);
    std::for_each(trial.withheld.begin(), trial.withheld.end(), add);
    return missing;
}

Attempt Wanted::attempt_of(std::size_t number, const SizingTrial& trial) const {
    Attempt attempt;
    attempt.number = number;
    attempt.missing = missing_in(trial).size();
    attempt.withheld = trial.withheld.size();
    attempt.is_stopped = !trial.result;
    if (trial.result) {
        attempt.placed = trial.result->counts.placed;
        attempt.left_out = trial.result->counts.left_out;
        attempt.findings = trial.result->findings.size();
        attempt.broken = broken_in(*trial.result).all();
    }
    return attempt;
}

bool suffices(const Attempt& attempt) {
    return !attempt.is_stopped && attempt.missing == 0 && attempt.broken == 0;
}

} // namespace zarven::tool
