// A planner wants to know the least that has to change. So a limit that even an empty head-end has is told
// first, then that the engine does not tune inputs for such a service, then inputs, and last what is short,
// on the module that is nearest to taking the service.

#include "placement/reasons/reason.h"

#include <algorithm>
#include <tuple>

#include <fmt/format.h>

#include "Reglas.h"
#include "base/counted.h"
#include "placement/result.h"

namespace zarven::tool {

namespace {

std::string stream_text(const tRec_Servicio& service) {
    return "stream " + to_string(stream_of(service));
}

/// What a module is short of; the sentence begins with the module.
std::string shortage(const ModuleRefusal& refusal, const tRec_Servicio& service) {
    const Room& room = refusal.room;
    switch (room.limit) {
    case Limit::no_output:
        return "it has no output";
    case Limit::service_count:
        return room.outputs == 1 ? "its output carries as many services as it may"
                                 : "each of its outputs carries as many services as it may";
    case Limit::bitrate:
        return fmt::format(
            "its output {} is short by {} kbit/s ({} + {} must stay below {}){}", room.output.number,
            room.output.short_by, room.output.bitrate, service.peakBitRate, room.output.bitrate_max,
            room.pids_short_by == 0 ? "" : fmt::format(", its PIDs by {}", room.pids_short_by));
    case Limit::pids:
        return fmt::format("its PIDs are short by {} ({} of {} in use, {} needed)", room.pids_short_by,
                           room.pids_used, room.pids_max, service.number_PIDs_CA);
    default:
        return fmt::format("no transcoder is left ({} of {} in use)", room.transcoders_used,
                           room.transcoders_max);
    }
}

Cause cause_of(Limit limit) {
    switch (limit) {
    case Limit::bitrate:
        return Cause::bitrate;
    case Limit::pids:
        return Cause::pids;
    case Limit::transcoders:
        return Cause::transcoders;
    default:
        return Cause::places;
    }
}

/// The sentence about one service, from what the modules answer.
class Sentence {
public:
    Sentence(const FinalState& state, const tRec_Servicio& service)
        : state_(state), service_(service), is_stream_chosen_(state.chooses_stream_of(service)),
          refusals_(state.refusals_of(service)) {
        for (const ModuleRefusal& refusal : refusals_) {
            inputs_ += refusal.inputs;
            receiving_ += refusal.inputs_receiving.empty() ? 0 : 1;
            with_input_ += has_input(refusal) ? 1 : 0;
            some_input_is_free_ = some_input_is_free_ || !refusal.inputs_free.empty();
            some_has_room_ = some_has_room_ || refusal.room.limit == Limit::none;
        }
    }

    Reason reason() const;

private:
    Reason unused_room(const ModuleRefusal& refusal) const;
    std::string not_chosen() const;
    std::string no_input() const;
    Reason nearest() const;
    /// One that receives the stream, or that the engine would tune to it.
    bool has_input(const ModuleRefusal& refusal) const {
        return !refusal.inputs_receiving.empty() || (is_stream_chosen_ && !refusal.inputs_free.empty());
    }
    bool is_nearer(const ModuleRefusal& one, const ModuleRefusal& other) const;

    const FinalState& state_;
    const tRec_Servicio& service_;
    const bool is_stream_chosen_;
    const std::vector<ModuleRefusal> refusals_;
    std::size_t inputs_ = 0;
    /// Modules that receive the stream, and modules that receive it or have an input free.
    std::size_t receiving_ = 0;
    std::size_t with_input_ = 0;
    bool some_has_room_ = false;
    bool some_input_is_free_ = false;
};

Reason Sentence::reason() const {
    const std::string places = places_of(refusals_);
    if (!places.empty())
        return {Cause::contradictory,
                fmt::format("It is on {} all the same: the engine has placed it and left it out.", places)};
    const std::string never = state_.why_never(service_);
    if (!never.empty())
        return {Cause::impossible, fmt::format("No module could ever take it: {}.", never)};
    const auto unused = std::find_if(refusals_.begin(), refusals_.end(),
                                     [](const auto& refusal) { return refusal.limit == Limit::none; });
    if (unused != refusals_.end())
        return unused_room(*unused);
    if (receiving_ == 0 && !is_stream_chosen_)
        return {Cause::stream_not_chosen, not_chosen()};
    return with_input_ == 0 ? Reason{Cause::no_input, no_input()} : nearest();
}

Reason Sentence::unused_room(const ModuleRefusal& refusal) const {
    const std::string mac(refusal.mac);
    if (refusal.inputs_receiving.empty())
        return {Cause::unused_input,
                fmt::format("Module {} has a free input and room: the engine's strategies did not use it.",
                            refusal.name()),
                mac};
    if (reglas::necesitaTranscoding(service_.Transcoding) && some_input_is_free_)
        return {Cause::unused_room,
                fmt::format("It needs transcoding: the engine fills inputs without such services, and tops "
                            "up modules with them when no input is free; module {} receives {} and has room.",
                            refusal.name(), stream_text(service_)),
                mac};
    return {Cause::unused_room,
            fmt::format("Module {} receives {} and has room: the engine's strategies did not use it.",
                        refusal.name(), stream_text(service_)),
            mac};
}

std::string Sentence::not_chosen() const {
    const bool needs_transcoding = reglas::necesitaTranscoding(service_.Transcoding);
    if (needs_transcoding && state_.lcn_0_waits_in_stream_of(service_))
        return fmt::format(
            "It needs transcoding: the engine tunes no input to {} for that, nor for LCN 0 while "
            "services with other LCNs are left; no other service asks for the stream.",
            stream_text(service_));
    if (needs_transcoding)
        return fmt::format("It needs transcoding: the engine tunes no input to {} for that, and no service "
                           "without transcoding asks for the stream.",
                           stream_text(service_));
    return fmt::format(
        "Its LCN is 0: the engine tunes no input to {} for that while services with other LCNs "
        "are left.",
        stream_text(service_));
}

std::string Sentence::no_input() const {
    const std::string modules = counted(refusals_.size(), "module");
    const std::string others =
        inputs_ == 1 ? "the only input receives another stream"
                     : fmt::format("all {} inputs on {} receive other streams", inputs_, modules);
    return fmt::format("No input is free for {}: {}{}.", stream_text(service_), others,
                       some_has_room_ ? "" : "; no module has room for it, either");
}

bool Sentence::is_nearer(const ModuleRefusal& one, const ModuleRefusal& other) const {
    const auto rank = [this](const ModuleRefusal& refusal) {
        return std::make_tuple(refusal.room.limit == Limit::none, !has_input(refusal), !refusal.could_ever,
                               !refusal.room.can_be_freed(service_.number_PIDs_CA),
                               -static_cast<int>(refusal.limit), refusal.room.short_by());
    };
    return rank(one) < rank(other);
}

Reason Sentence::nearest() const {
    const auto nearest = std::min_element(
        refusals_.begin(), refusals_.end(),
        [this](const ModuleRefusal& one, const ModuleRefusal& other) { return is_nearer(one, other); });
    Reason reason{cause_of(nearest->room.limit), "", std::string(nearest->mac)};
    const std::string what = shortage(*nearest, service_);
    const std::string stream = stream_text(service_);
    if (with_input_ > 1) {
        const std::string_view how = receiving_ == with_input_ ? "receive"
                                     : receiving_ == 0         ? "have a free input for"
                                                               : "receive or have a free input for";
        reason.text = fmt::format("{} {} {}, none with room; nearest is {}: {}.",
                                  counted(with_input_, "module"), how, stream, nearest->name(), what);
    } else if (receiving_ != 0) {
        reason.text = fmt::format("Module {} alone receives {}, and {}.", nearest->name(), stream, what);
    } else {
        reason.text =
            fmt::format("Module {} alone has a free input for {}, and {}.", nearest->name(), stream, what);
    }
    return reason;
}

/// Looks for the parent of a clone the way the engine does when it attaches clones: by `OSID`, on the inputs
/// tuned to the stream of the clone and on the outputs of their modules.
bool has_parent(const tMapaServicios& services, const tRec_Servicio& clone) {
    return std::any_of(services.begin(), services.end(),
                       [&clone](const auto& entry) { return reglas::esPadre(*entry.second, clone); });
}

bool carries_parent(const tRec_Modulo& module, const tRec_Servicio& clone) {
    const auto is_on_input = [&clone](const auto& entry) {
        const tRec_Entrada& input = entry.second;
        return reglas::recibe(input, clone.ONID, clone.TSID) && has_parent(input.MapaServicios, clone);
    };
    const auto is_on_output = [&clone](const auto& entry) {
        return has_parent(entry.second.MapaServicios, clone);
    };
    return std::any_of(module.mapEntradas.begin(), module.mapEntradas.end(), is_on_input) &&
           std::any_of(module.mapSalidas.begin(), module.mapSalidas.end(), is_on_output);
}

/// The parent in an index of services; null if it is not there.
const tRec_Servicio* parent_in(const tMapaONIDs& index, const tRec_Servicio& clone) {
    const auto network = index.find(clone.ONID);
    if (network == index.end())
        return nullptr;
    const auto stream = network->second.MapRec_TSIDs.find(clone.TSID);
    if (stream == network->second.MapRec_TSIDs.end())
        return nullptr;
    for (const auto& [key, service] : stream->second.MapRec_Services)
        if (reglas::esPadre(*service, clone))
            return service.get();
    return nullptr;
}

bool has_on(const tRec_Salida& output, const tRec_Servicio& service) {
    return std::any_of(output.MapaServicios.begin(), output.MapaServicios.end(),
                       [&service](const auto& entry) { return entry.second.get() == &service; });
}

} // namespace

std::string reason_neither(const EngineRun& run, const tRec_Servicio& service) {
    std::vector<std::string> places;
    for (const auto& [mac, module] : run.engine.Mapa_ModulosCabecera_Final)
        for (const auto& [number, output] : module.mapSalidas)
            if (has_on(output, service))
                places.push_back(fmt::format("output {} of module {}", number, name_in(run, mac)));
    if (places.empty())
        return "It is neither placed nor left out: the engine's exchanges have lost it.";
    return fmt::format("It is on {} after the engine's exchanges, and on no input there that receives {}.",
                       fmt::join(places, " and "), stream_text(service));
}

std::string places_of(const std::vector<ModuleRefusal>& refusals) {
    std::string places;
    for (const ModuleRefusal& refusal : refusals)
        if (!refusal.carried_on.empty())
            places += fmt::format("{}module {}, output{} {}", places.empty() ? "" : " and ", refusal.name(),
                                  refusal.carried_on.size() == 1 ? "" : "s",
                                  fmt::join(refusal.carried_on, " and "));
    return places;
}

Reason reason_left_out(const FinalState& state, const tRec_Servicio& service) {
    return Sentence(state, service).reason();
}

std::string reason_waiting(const EngineRun& run, const tRec_Servicio& clone) {
    const tRecalculo& engine = run.engine;
    const tRec_Modulo* crowded = nullptr;
    for (const auto& [mac, module] : engine.Mapa_ModulosCabecera_Final) {
        if (!carries_parent(module, clone))
            continue;
        if (reglas::cabeClon(module, clone))
            return fmt::format(
                "Module {} carries its parent and would take it now: the engine had passed it by.",
                name_in(run, mac));
        crowded = crowded == nullptr ? &module : crowded;
    }
    if (crowded != nullptr && crowded->AUX_MAX_Transcoding == 0)
        return fmt::format("Module {}, which carries its parent, has no AUX transcoder.",
                           name_in(run, crowded->MAC));
    if (crowded != nullptr)
        return fmt::format(
            "No AUX transcoder is left on module {}, which carries its parent ({} of {} in use).",
            name_in(run, crowded->MAC), crowded->AUX_Transcoding, crowded->AUX_MAX_Transcoding);
    if (const tRec_Servicio* parent = parent_in(engine.Mapa_ONIDs_Final, clone))
        return fmt::format("Its parent, LCN {} \"{}\", is left out.", parent->LCN, parent->NombreEntrada);
    if (const tRec_Servicio* parent = parent_in(engine.Mapa_ONIDs_Inicial, clone))
        return fmt::format(
            "No module carries its parent, LCN {} \"{}\", both on an input tuned to {} and on an "
            "output.",
            parent->LCN, parent->NombreEntrada, stream_text(clone));
    return fmt::format("No service of {} has the OSID {}, by which the engine looks for its parent.",
                       stream_text(clone), clone.Parent_SID);
}

} // namespace zarven::tool
