// The frame of a rehearsal: its state, the four strategies, placing one service, and what came out.

#include "placement/rehearsal/stage.h"

#include <algorithm>

namespace zarven::tool {

RehearsedModule rehearsed(const tRec_Modulo& module) {
    RehearsedModule limits;
    limits.inputs = module.mapEntradas.size();
    for (const auto& [number, output] : module.mapSalidas)
        limits.outputs.push_back({output.BitRateMax, output.NumServiciosMax});
    limits.pids_max = module.PIDsModuloMax;
    limits.sd_transcoders = module.SD_MAX_Transcoding;
    limits.hd_transcoders = module.HD_MAX_Transcoding;
    return limits;
}

std::optional<RehearsedHeadend> rehearsed(const EngineRun& loaded) {
    RehearsedHeadend headend;
    headend.resource = loaded.engine.GetRecursoCabecera();
    if (reglas::estadoDeRelleno(headend.resource) != Estado::STATUS_FILL_INPUTS_SERVICE_NO_TRASCODING)
        return {};
    std::vector<std::uint16_t> sids;
    for (const auto& [onid, network] : loaded.engine.Mapa_ONIDs_Inicial)
        for (const auto& [tsid, stream] : network.MapRec_TSIDs) {
            if (!reglas::conAlgunNumero(onid, tsid))
                return {};
            const std::size_t first = headend.services.size();
            for (const auto& [key, service] : stream.MapRec_Services) {
                RehearsedService what{key,
                                      headend.streams.size(),
                                      service->peakBitRate,
                                      service->number_PIDs_CA,
                                      service->Transcoding,
                                      service->SID,
                                      reglas::esHD(service->VideoFormatE),
                                      {}};
                for (const bool positive : {false, true})
                    for (const bool of_kind : {false, true}) {
                        const reglas::Criterio criterion{positive, of_kind, false};
                        what.counts[number_of(criterion)] =
                            reglas::cuentaParaElegir(key, what.transcoding, criterion);
                    }
                headend.services.push_back(what);
                sids.push_back(service->SID);
            }
            headend.streams.push_back({first, headend.services.size(), reglas::conAmbosNumeros(onid, tsid)});
        }
    if (headend.services.size() > std::numeric_limits<std::uint16_t>::max())
        return {};
    std::sort(sids.begin(), sids.end());
    headend.shares_sids = std::adjacent_find(sids.begin(), sids.end()) != sids.end();
    for (const auto& [mac, module] : loaded.engine.Mapa_ModulosCabecera_Inicial)
        headend.modules.push_back(rehearsed(module));
    return headend;
}

Rehearsal::Rehearsal(const RehearsedHeadend& headend) : stage_(std::make_unique<Stage>(headend)) {}
Rehearsal::~Rehearsal() = default;

std::optional<Rehearsed> Rehearsal::run(const std::vector<RehearsedModule>& modules) {
    return stage_->run(modules);
}

const std::vector<ModuleTests>& Rehearsal::tests() const {
    return stage_->tests();
}

std::optional<Rehearsed> Rehearsal::Stage::run(const std::vector<RehearsedModule>& modules) {
    limits_ = &modules;
    tests_.assign(modules.size(), {});
    for (std::size_t module = 0; module < modules.size(); ++module)
        tests_[module].bitrate.resize(modules[module].outputs.size());
    for (Module& module : modules_)
        module.inputs_used = 0;
    std::optional<Rehearsed> best;
    for (const reglas::Estrategia& strategy : reglas::ESTRATEGIAS) {
        begin();
        if (!pass(strategy.opcion) || !is_sound())
            return {};
        const std::size_t placed = headend_.services.size() - waiting_;
        if (!best || placed > best->placed)
            best = Rehearsed{placed, is_broken()};
        if (!anything_waits())
            break;
    }
    note_inputs();
    return best;
}

/// Keeps the memory of the last pass.
void Rehearsal::Stage::begin() {
    modules_.resize(limits_->size());
    for (std::size_t number = 0; number < modules_.size(); ++number) {
        Module& module = modules_[number];
        module.pids = module.sd = module.hd = 0;
        module.inputs.resize((*limits_)[number].inputs);
        for (Input& input : module.inputs) {
            input.stream = no_stream;
            input.services.clear();
        }
        module.outputs.resize((*limits_)[number].outputs.size());
        for (Output& output : module.outputs) {
            output.bitrate = output.count = 0;
            output.services.clear();
        }
    }
    std::fill(waits_.begin(), waits_.end(), 1);
    waiting_ = waits_.size();
    waiting_of_.clear();
    for (const RehearsedStream& stream : headend_.streams)
        waiting_of_.push_back(stream.last - stream.first);
    counts_.assign(headend_.streams.size(), {});
    with_positive_key_ = with_transcoding_ = 0;
    for (const RehearsedService& what : headend_.services) {
        with_positive_key_ += reglas::esClavePositiva(what.key) ? 1 : 0;
        with_transcoding_ += reglas::necesitaTranscoding(what.transcoding) ? 1 : 0;
        for (std::size_t at = 0; at < what.counts.size(); ++at)
            counts_[what.stream][at] += what.counts[at] ? 1 : 0;
    }
    placed_by_fill_ = rounds_ = 0;
    gives_up_ = false;
    filled_at_ = unified_at_ = optimized_at_ = never;
}

bool Rehearsal::Stage::pass(char option) {
    Estado state = reglas::estadoDeRelleno(headend_.resource);
    while (state != Estado::STATUS_END && !gives_up_)
        switch (state) {
        case Estado::STATUS_FILL_INPUTS_SERVICE_NO_TRASCODING:
            state = fill(option);
            break;
        case Estado::STATUS_CHECK_EMPTY_INPUT:
            state = check();
            break;
        case Estado::STATUS_UNCOMPLETE_MODULES:
            state = complete();
            break;
        case Estado::STATUS_UNIFY_INPUTS:
            state = unify();
            break;
        case Estado::STATUS_OPTIMIZE:
            state = optimize();
            break;
        default:
            gives_up_ = true;
        }
    return !gives_up_;
}

/// Behind those with the same key, as a multimap does.
void Rehearsal::Stage::put(ServiceNumbers& services, ServiceNumber number) const {
    const long key = service(number).key;
    if (services.empty() || service(services.back()).key <= key) {
        services.push_back(number);
        return;
    }
    const auto after =
        std::upper_bound(services.begin(), services.end(), key,
                         [this](long one, ServiceNumber other) { return one < service(other).key; });
    services.insert(after, number);
}

bool Rehearsal::Stage::fits(std::size_t module, std::size_t output, const RehearsedService& service) {
    const RehearsedModule& limits = (*limits_)[module];
    const OutputCapacity& most = limits.outputs[output];
    const Output& now = modules_[module].outputs[output];
    if (!reglas::cabeOtroServicio(now.count, most.service_max))
        return false;
    LimitTests& bitrate = tests_[module].bitrate[output];
    const std::uint64_t needed = reglas::techoPara(static_cast<std::uint32_t>(now.bitrate + service.bitrate));
    if (!reglas::cabeBitrate(now.bitrate, service.bitrate, most.bitrate_max)) {
        bitrate.failed_under(needed);
        return false;
    }
    bitrate.passed_at(needed);
    LimitTests& pids = tests_[module].pids;
    if (!reglas::cabenPIDs(modules_[module].pids, service.pids, limits.pids_max)) {
        pids.failed();
        return false;
    }
    pids.passed_at(std::uint64_t{modules_[module].pids} + service.pids);
    return true;
}

bool Rehearsal::Stage::takes_transcoder(std::size_t module, const RehearsedService& service) {
    const RehearsedModule& limits = (*limits_)[module];
    Module& now = modules_[module];
    LimitTests& tests = now.hd != 0 ? tests_[module].hd_transcoders : tests_[module].sd_transcoders;
    if (!reglas::quedaTranscoder(now.sd, now.hd, limits.sd_transcoders, limits.hd_transcoders)) {
        tests.failed();
        return false;
    }
    tests.passed_at(std::uint64_t{now.sd} + now.hd + 1);
    ++(service.is_hd ? now.hd : now.sd);
    return true;
}

bool Rehearsal::Stage::place(std::size_t module, std::size_t input, ServiceNumber number) {
    const RehearsedService& what = service(number);
    Module& now = modules_[module];
    std::size_t output = 0;
    while (output < now.outputs.size() && !fits(module, output, what))
        ++output;
    if (output == now.outputs.size() ||
        (reglas::ocupaTranscoder(what.transcoding) && !takes_transcoder(module, what)))
        return false;
    now.outputs[output].bitrate += what.bitrate;
    ++now.outputs[output].count;
    now.pids = static_cast<std::uint16_t>(now.pids + what.pids);
    put(now.inputs[input].services, number);
    put(now.outputs[output].services, number);
    return true;
}

void Rehearsal::Stage::note_inputs() {
    for (std::size_t module = 0; module < modules_.size(); ++module) {
        if (modules_[module].inputs_used == modules_[module].inputs.size())
            tests_[module].inputs.failed();
        tests_[module].inputs.passed_at(modules_[module].inputs_used + 1);
    }
}

bool Rehearsal::Stage::is_broken() {
    for (std::size_t module = 0; module < modules_.size(); ++module)
        if (is_broken(module))
            return true;
    return false;
}

bool Rehearsal::Stage::is_broken(std::size_t number) {
    const Module& module = modules_[number];
    const RehearsedModule& limits = (*limits_)[number];
    std::uint64_t pids = 0;
    std::uint64_t sd = 0;
    std::uint64_t hd = 0;
    for (std::size_t output = 0; output < module.outputs.size(); ++output) {
        std::uint64_t bitrate = 0;
        sids_.clear();
        for (const ServiceNumber carried : module.outputs[output].services) {
            const RehearsedService& what = service(carried);
            bitrate += what.bitrate;
            pids += what.pids;
            if (reglas::ocupaTranscoder(what.transcoding))
                ++(what.is_hd ? hd : sd);
            if (headend_.shares_sids)
                sids_.push_back(what.sid);
        }
        const std::size_t carried = module.outputs[output].services.size();
        LimitTests& tests = tests_[number].bitrate[output];
        if (carried != 0 && !reglas::bajoTecho(bitrate, limits.outputs[output].bitrate_max)) {
            tests.failed_under(reglas::techoPara(bitrate));
            return true;
        }
        tests.passed_at(reglas::techoPara(bitrate));
        if (!reglas::hastaTecho(carried, limits.outputs[output].service_max))
            return true;
        std::sort(sids_.begin(), sids_.end());
        if (std::adjacent_find(sids_.begin(), sids_.end()) != sids_.end())
            return true;
    }
    for (const Input& input : module.inputs)
        for (const ServiceNumber received : input.services)
            if (service(received).stream != input.stream)
                return true;
    if (!reglas::hastaTecho(pids, limits.pids_max)) {
        tests_[number].pids.failed();
        return true;
    }
    tests_[number].pids.passed_at(pids);
    LimitTests& transcoders = hd != 0 ? tests_[number].hd_transcoders : tests_[number].sd_transcoders;
    if (!reglas::hastaTecho(
            sd + hd, reglas::limiteTranscoders(hd != 0, limits.sd_transcoders, limits.hd_transcoders))) {
        transcoders.failed();
        return true;
    }
    transcoders.passed_at(sd + hd);
    return false;
}

/// Each service either waits or stands on an input and on an output.
bool Rehearsal::Stage::is_sound() const {
    std::size_t on_inputs = 0;
    std::size_t on_outputs = 0;
    for (const Module& module : modules_) {
        for (const Input& input : module.inputs)
            on_inputs += input.services.size();
        for (const Output& output : module.outputs)
            on_outputs += output.services.size();
    }
    return on_inputs + waiting_ == waits_.size() && on_outputs + waiting_ == waits_.size();
}

} // namespace zarven::tool
