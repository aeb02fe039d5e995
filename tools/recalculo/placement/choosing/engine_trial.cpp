#include "placement/choosing/engine_trial.h"

#include <algorithm>
#include <map>
#include <utility>

#include "placement/audit/audit.h"
#include "placement/running/bounded_run.h"
#include "placement/services.h"

namespace zarven::tool {

namespace {

/// Only what breaks nothing counts.
bool is_sound(const EngineRun& run) {
    return !has_broken(run);
}

constexpr std::uint16_t low_half(std::size_t number) {
    return static_cast<std::uint16_t>(number & 0xFFFF);
}

constexpr std::uint16_t high_half(std::size_t number) {
    return static_cast<std::uint16_t>(number >> 16);
}

constexpr std::uint16_t is_of_services = 1;
constexpr std::uint16_t is_of_clones = 0;

void number_services(Headend& headend) {
    for (std::size_t index = 0; index < headend.services.size(); ++index) {
        Service& service = headend.services[index];
        service.name.clear();
        service.output_name.clear();
        service.reserved1 = low_half(index);
        service.reserved2 = high_half(index);
        service.reserved3 = is_of_services;
    }
    for (Clone& clone : headend.clones)
        clone.reserved3 = is_of_clones;
}

/// The first input that has it; 0 if none has.
std::uint16_t input_of(const tRec_Servicio& service, const tRec_Modulo& module) {
    for (const auto& [number, input] : module.mapEntradas)
        for (const auto& [key, carried] : input.MapaServicios)
            if (carried.get() == &service)
                return input.NumEntrada;
    return 0;
}

std::size_t number_of(const tRec_Servicio& service) {
    return std::size_t{service.Reservado2} << 16 | service.Reservado1;
}

} // namespace

EngineTrial::EngineTrial(const Headend& headend, const StaysPut& stays)
    : headend_(headend), stays_(stays), settled_(services_asked_for(headend.services)),
      groups_(one_of_groups(headend.services)), group_of_(headend.services.size(), groups_.size()) {
    for (std::size_t group = 0; group < groups_.size(); ++group)
        for (const std::size_t variant : groups_[group].variants)
            group_of_[variant] = group;
    // From here on it is told which of them are asked for.
    for (Service& service : headend_.services)
        service.one_of.clear();
    headend_.pids.clear();
    headend_.home_channels.clear();
    headend_.streams.clear();
    number_services(headend_);
    for (const Service& service : headend_.services)
        askable_.push_back(may_be_asked_for(service));
}

std::vector<bool> EngineTrial::everything() const {
    std::vector<bool> asked = askable_;
    for (std::size_t service = 0; service < asked.size(); ++service)
        if (askable_[service] && settled_[service])
            ask_instead(service, asked);
    keep_one_of_each(asked);
    return asked;
}

std::vector<bool> EngineTrial::asked_today() const {
    std::vector<bool> asked = stays_.asked;
    asked.resize(askable_.size(), false);
    for (std::size_t service = 0; service < asked.size(); ++service)
        asked[service] = asked[service] && askable_[service];
    keep_one_of_each(asked);
    return asked;
}

void EngineTrial::keep_one_of_each(std::vector<bool>& asked) const {
    for (const OneOf& group : groups_) {
        bool has_one = false;
        for (const std::size_t variant : group.variants) {
            asked[variant] = asked[variant] && !has_one;
            has_one = has_one || asked[variant];
        }
    }
}

void EngineTrial::ask_instead(std::size_t service, std::vector<bool>& asked) const {
    if (group_of_[service] != groups_.size())
        for (const std::size_t variant : groups_[group_of_[service]].variants)
            asked[variant] = false;
    asked[service] = true;
}

bool EngineTrial::is_withheld(std::size_t service, const std::vector<bool>& asked) const {
    if (!askable_[service] || asked[service])
        return false;
    if (group_of_[service] == groups_.size())
        return true;
    const std::vector<std::size_t>& variants = groups_[group_of_[service]].variants;
    return std::none_of(variants.begin(), variants.end(),
                        [&asked](std::size_t variant) { return asked[variant]; });
}

EngineRun EngineTrial::load(const std::vector<bool>& asked) const {
    Headend part = headend_;
    for (std::size_t index = 0; index < asked.size(); ++index)
        part.services[index].ask = asked[index];
    return load_engine(part, headend_.name);
}

std::size_t EngineTrial::withheld_of(const std::vector<bool>& asked) const {
    std::size_t withheld = 0;
    for (std::size_t index = 0; index < asked.size(); ++index)
        withheld += is_withheld(index, asked) && (group_of_[index] == groups_.size() ||
                                                  groups_[group_of_[index]].variants.front() == index);
    return withheld;
}

TrialOutcome EngineTrial::run(const std::vector<bool>& asked, const ChoiceWorth* bar) const {
    EngineRun run = load(asked);
    TrialOutcome outcome;
    outcome.placed.assign(headend_.services.size(), false);
    outcome.worth.withheld = withheld_of(asked);
    try {
        run_engine(run, headend_.name);
    } catch (const EngineStopped&) {
        return outcome;
    }
    read(run, outcome);
    outcome.is_sound = (bar == nullptr || is_better(outcome.worth, *bar)) && is_sound(run);
    return outcome;
}

std::vector<std::vector<std::size_t>>
EngineTrial::numbers_of(const std::vector<const tRec_Servicio*>& services, const EngineRun& loaded) const {
    std::map<std::pair<Stream, long>, std::vector<std::size_t>> further;
    for (const auto& clone : loaded.clones)
        if (clone->Reservado3 == is_of_services)
            further[{stream_of(*clone), clone->idService}].push_back(number_of(*clone));
    std::vector<std::vector<std::size_t>> numbers;
    for (const tRec_Servicio* service : services) {
        numbers.push_back({number_of(*service)});
        const std::vector<std::size_t>& others = further[{stream_of(*service), service->idService}];
        numbers.back().insert(numbers.back().end(), others.begin(), others.end());
    }
    return numbers;
}

bool EngineTrial::is_moved(std::size_t service, const std::string& mac, std::uint32_t output,
                           std::uint16_t input) const {
    if (!stays(service))
        return false;
    const std::uint32_t stays_on = service < stays_.output.size() ? stays_.output[service] : 0;
    const std::uint16_t stays_at = service < stays_.input.size() ? stays_.input[service] : 0;
    return stays_.module[service] != mac || (stays_on != 0 && stays_on != output) ||
           (stays_at != 0 && stays_at != input);
}

void EngineTrial::read(const EngineRun& run, TrialOutcome& outcome) const {
    const ServiceSet clones = set_of(run.clones);
    ChoiceWorth& worth = outcome.worth;
    for (const auto& [mac, module] : run.engine.Mapa_ModulosCabecera_Final)
        for (const auto& [output, carried] : module.mapSalidas)
            for (const auto& [key, service] : carried.MapaServicios) {
                const std::size_t index = number_of(*service);
                if (service->Reservado3 != is_of_services || outcome.placed[index])
                    continue;
                outcome.placed[index] = true;
                // A second service of one key is a clone to the engine, and matters all the same.
                worth.placed += clones.count(service.get()) == 0;
                worth.musts += headend_.services[index].must;
                worth.value += headend_.services[index].value;
                worth.moved += is_moved(index, mac, output, input_of(*service, module));
            }
    for (std::size_t service = 0; service < outcome.placed.size(); ++service)
        worth.moved += askable_[service] && stays(service) && !outcome.placed[service];
}

} // namespace zarven::tool
