// The tests are the engine's own rules, in its order.

#include "placement/reasons/refusal.h"

#include <algorithm>
#include <tuple>

#include "Reglas.h"

namespace zarven::tool {

namespace {

template <class Visit> void for_each_service(const tMapaONIDs& index, Visit visit) {
    for (const auto& [onid, network] : index)
        for (const auto& [tsid, stream] : network.MapRec_TSIDs)
            for (const auto& [key, service] : stream.MapRec_Services)
                visit(onid, tsid, key, *service);
}

OutputRoom output_room(std::uint32_t number, std::uint32_t bitrate, std::uint32_t bitrate_max,
                       std::uint32_t needed) {
    const std::uint64_t short_by = reglas::faltaBitrate(bitrate, needed, bitrate_max);
    return {number, bitrate, bitrate_max, short_by, reglas::puedeLiberarse(short_by, bitrate, bitrate_max)};
}

Limit limit_of(reglas::Limite first) {
    switch (first) {
    case reglas::Limite::servicios:
        return Limit::service_count;
    case reglas::Limite::bitrate:
        return Limit::bitrate;
    case reglas::Limite::PIDs:
        return Limit::pids;
    case reglas::Limite::transcoders:
        return Limit::transcoders;
    case reglas::Limite::ninguno:
        break;
    }
    return Limit::none;
}

} // namespace

bool tunes_an_input_for(long key, const tRec_Servicio& service, bool positive_keys_are_left) {
    return reglas::cuentaParaElegir(key, service.Transcoding, {positive_keys_are_left, true, false});
}

std::uint64_t Room::short_by() const {
    switch (limit) {
    case Limit::bitrate:
        return output.short_by;
    case Limit::pids:
        return pids_short_by;
    case Limit::transcoders:
        return reglas::faltanTranscoders(transcoders_used, transcoders_max);
    default:
        return 0;
    }
}

bool Room::can_be_freed(std::uint32_t pids_needed) const {
    switch (limit) {
    case Limit::no_output:
        return false;
    case Limit::bitrate:
        return output.can_be_freed;
    case Limit::pids:
        return reglas::hastaTecho(pids_needed, pids_max);
    case Limit::transcoders:
        return reglas::quedaTranscoder(0, transcoders_max);
    default:
        return true;
    }
}

FinalState::FinalState(const EngineRun& run) {
    for (const auto& [mac, module] : run.engine.Mapa_ModulosCabecera_Final) {
        for (const auto& [number, output] : module.mapSalidas)
            for (const tRec_Servicio* service : services_on(output))
                carried_on_[service].emplace_back(modules_.size(), number);
        modules_.push_back(state_of(module));
        const auto label = run.labels.find(mac);
        if (label != run.labels.end())
            modules_.back().label = label->second;
        capacities_.push_back(capacity_of(module));
    }
    note_chosen_streams(run.engine.Mapa_ONIDs_Final);
}

FinalState::ModuleState FinalState::state_of(const tRec_Modulo& module) {
    ModuleState state{module.MAC,
                      {},
                      {},
                      module.PIDsModulo,
                      module.PIDsModuloMax,
                      module.SD_Transcoding,
                      module.HD_Transcoding,
                      module.SD_MAX_Transcoding,
                      module.HD_MAX_Transcoding};
    for (const auto& [number, input] : module.mapEntradas)
        state.inputs.push_back(
            {number, {input.ONID, input.TSID}, reglas::sintonizada(input), reglas::sinServicios(input)});
    for (const auto& [number, output] : module.mapSalidas)
        state.outputs.push_back(
            {number, output.BitRateActual, output.BitRateMax, output.NumServicios, output.NumServiciosMax});
    return state;
}

void FinalState::note_chosen_streams(const tMapaONIDs& left_out) {
    for_each_service(left_out, [&](auto, auto, long key, const tRec_Servicio&) {
        positive_keys_are_left_ = positive_keys_are_left_ || reglas::esClavePositiva(key);
    });
    for_each_service(left_out, [&](auto onid, auto tsid, long key, const tRec_Servicio& service) {
        if (tunes_an_input_for(key, service, positive_keys_are_left_))
            chosen_streams_.insert({onid, tsid});
        else if (!reglas::necesitaTranscoding(service.Transcoding))
            streams_with_lcn_0_.insert({onid, tsid});
    });
}

bool FinalState::chooses_stream_of(const tRec_Servicio& service) const {
    return tunes_an_input_for(service.idService, service, positive_keys_are_left_) ||
           chosen_streams_.count(stream_of(service)) != 0;
}

bool FinalState::lcn_0_waits_in_stream_of(const tRec_Servicio& service) const {
    return streams_with_lcn_0_.count(stream_of(service)) != 0;
}

// Finds the output that the engine would take or, failing that, the one with the least lacking.
void FinalState::judge_outputs(const ModuleState& module, const tRec_Servicio& service, Room& room) {
    const auto lack = [](const OutputRoom& output) {
        return std::make_tuple(!output.can_be_freed, output.short_by);
    };
    bool found = false;
    for (const OutputState& output : module.outputs) {
        ++room.outputs;
        if (!reglas::cabeOtroServicio(output.services, output.services_max)) {
            ++room.outputs_full;
            continue;
        }
        const OutputRoom candidate =
            output_room(output.number, output.bitrate, output.bitrate_max, service.peakBitRate);
        if (!found || lack(candidate) < lack(room.output))
            room.output = candidate;
        found = true;
    }
}

Room FinalState::room_for(const ModuleState& module, const tRec_Servicio& service) {
    Room room;
    judge_outputs(module, service, room);
    room.pids_used = module.pids;
    room.pids_max = module.pids_max;
    room.pids_short_by = reglas::faltanPIDs(module.pids, service.number_PIDs_CA, module.pids_max);
    room.transcoders_used = std::uint32_t{module.sd_transcoders} + module.hd_transcoders;
    room.transcoders_max = reglas::limiteTranscoders(module.hd_transcoders != 0, module.sd_transcoders_max,
                                                     module.hd_transcoders_max);

    if (room.outputs == 0)
        room.limit = Limit::no_output;
    else
        room.limit = limit_of(reglas::primerLimite(
            room.outputs_full < room.outputs, room.output.short_by == 0, room.pids_short_by == 0,
            !reglas::ocupaTranscoder(service.Transcoding) ||
                reglas::quedaTranscoder(room.transcoders_used, room.transcoders_max)));
    return room;
}

ModuleRefusal FinalState::refusal_of(const ModuleState& module, const tRec_Servicio& service) const {
    ModuleRefusal refusal;
    refusal.mac = module.mac;
    refusal.label = module.label;
    refusal.room = room_for(module, service);
    refusal.inputs = module.inputs.size();
    const Stream stream = stream_of(service);
    for (const InputState& input : module.inputs) {
        // An untuned input has the ids 0 and 0, and so may a stream.
        if (input.is_tuned && input.stream == stream)
            refusal.inputs_receiving.push_back(input.number);
        else if (input.is_empty)
            refusal.inputs_free.push_back(input.number);
    }
    if (!refusal.has_input())
        refusal.limit = Limit::no_input;
    else if (refusal.room.limit != Limit::none)
        refusal.limit = refusal.room.limit;
    else if (refusal.inputs_receiving.empty() && !chooses_stream_of(service))
        refusal.limit = Limit::stream_not_chosen;
    return refusal;
}

std::vector<ModuleRefusal> FinalState::refusals_of(const tRec_Servicio& service) const {
    std::vector<ModuleRefusal> refusals;
    refusals.reserve(modules_.size());
    for (std::size_t index = 0; index < modules_.size(); ++index) {
        refusals.push_back(refusal_of(modules_[index], service));
        refusals.back().could_ever = could_take(capacities_[index], service);
    }
    const auto carried = carried_on_.find(&service);
    if (carried != carried_on_.end())
        for (const auto& [module, output] : carried->second)
            refusals[module].carried_on.push_back(output);
    return refusals;
}

std::string FinalState::why_never(const tRec_Servicio& service) const {
    return why_none_could_take(capacities_, service);
}

} // namespace zarven::tool
