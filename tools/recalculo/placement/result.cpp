#include "placement/result.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>

#include <fmt/format.h>

#include "Reglas.h"
#include "placement/audit/audit.h"
#include "placement/audit/reserve.h"
#include "placement/reasons/reason.h"
#include "placement/running/capacity.h"

namespace zarven::tool {

ServiceResult describe(const tRec_Servicio& service, bool is_clone) {
    ServiceResult result;
    result.stream = stream_of(service);
    result.lcn = service.LCN;
    result.sid = service.SID;
    result.osid = service.OSID;
    result.name = service.NombreEntrada;
    result.output_name = service.NombreSalida;
    result.bitrate = service.peakBitRate;
    result.is_hd = reglas::esHD(service.VideoFormatE);
    result.is_radio = service.Tipo == type_radio;
    result.is_scrambled = service.Descifrar != 0;
    result.ca_pids = service.number_PIDs_CA;
    result.is_transcoded = reglas::necesitaTranscoding(service.Transcoding);
    result.is_clone = is_clone;
    result.parent_sid = service.Parent_SID;
    return result;
}

ServiceResult describe(const EngineRun& run, const tRec_Servicio& service, bool is_clone) {
    ServiceResult result = describe(service, is_clone);
    const auto measured = run.measured.find(&service);
    result.is_measured = measured != run.measured.end();
    result.mean_bitrate = result.is_measured ? measured->second : 0;
    const auto group = run.group_of.find(&service);
    if (group != run.group_of.end())
        result.group = run.groups[group->second];
    return result;
}

namespace {

/// Walks the engine once and gathers the result.
class Gathering {
public:
    Gathering(const EngineRun& run, Reasons reasons)
        : run_(run), clones_(set_of(run.clones)), placed_(placed_of(run)) {
        for (const auto& [mac, module] : run.engine.Mapa_ModulosCabecera_Final)
            result_.modules.push_back(gather(module));
        gather_left_out(reasons);
        gather_clones_waiting(reasons);
        gather_neither(reasons);
        count();
        result_.findings = findings_of(run);
    }

    Result result() && { return std::move(result_); }

private:
    /// The outputs of the module in hand that carry each service.
    using OutputsOf = std::map<const tRec_Servicio*, std::vector<std::uint32_t>>;

    ModuleResult gather(const tRec_Modulo& module);
    InputResult gather(const tRec_Entrada& input, const OutputsOf& outputs_of);
    OutputResult gather(const tRec_Salida& output, const OutputsOf& outputs_of);
    ServiceResult describe_service(const tRec_Servicio& service) const;
    ServiceResult describe_placed(const tRec_Servicio& service, const OutputsOf& outputs_of) const;
    void gather_left_out(Reasons reasons);
    void gather_clones_waiting(Reasons reasons);
    void gather_neither(Reasons reasons);
    void count();
    void count_rates();
    void count_groups();
    void gather_variants();
    std::size_t number_of(const ServiceSet& services, bool are_clones) const;

    const EngineRun& run_;
    Result result_;
    const ServiceSet clones_;
    /// Clones too.
    const ServiceSet placed_;
};

ServiceResult Gathering::describe_service(const tRec_Servicio& service) const {
    return describe(run_, service, clones_.count(&service) != 0);
}

ServiceResult Gathering::describe_placed(const tRec_Servicio& service, const OutputsOf& outputs_of) const {
    ServiceResult result = describe_service(service);
    const auto found = outputs_of.find(&service);
    if (found != outputs_of.end())
        result.outputs = found->second;
    return result;
}

InputResult Gathering::gather(const tRec_Entrada& input, const OutputsOf& outputs_of) {
    InputResult result;
    result.number = input.NumEntrada;
    result.stream = {input.ONID, input.TSID};
    result.is_tuned = reglas::sintonizada(input);
    for (const auto& [key, service] : input.MapaServicios)
        result.services.push_back(describe_placed(*service, outputs_of));
    return result;
}

OutputResult Gathering::gather(const tRec_Salida& output, const OutputsOf& outputs_of) {
    OutputResult result;
    result.number = output.NumSalida;
    result.bitrate = output.BitRateActual;
    result.bitrate_max = output.BitRateMax;
    result.service_count = output.NumServicios;
    result.service_max = output.NumServiciosMax;
    for (const auto& [key, service] : output.MapaServicios)
        result.services.push_back(describe_placed(*service, outputs_of));
    return result;
}

ModuleResult Gathering::gather(const tRec_Modulo& module) {
    ModuleResult result;
    result.mac = module.MAC;
    const auto label = run_.labels.find(module.MAC);
    if (label != run_.labels.end())
        result.label = label->second;
    result.model = module.Modelo;
    result.is_controller = module.Controlador;
    result.pids_max = module.PIDsModuloMax;
    result.pids_counted = module.PIDsModulo;
    result.sd_transcoders = {module.SD_Transcoding, module.SD_MAX_Transcoding};
    result.hd_transcoders = {module.HD_Transcoding, module.HD_MAX_Transcoding};
    result.aux_transcoders = {module.AUX_Transcoding, module.AUX_MAX_Transcoding};

    OutputsOf outputs_of;
    for (const auto& [number, output] : module.mapSalidas)
        for (const tRec_Servicio* service : services_on(output))
            outputs_of[service].push_back(output.NumSalida);
    result.pids = pids_needed(module);
    ServiceSet on_inputs;
    for (const auto& [number, input] : module.mapEntradas) {
        result.inputs.push_back(gather(input, outputs_of));
        for (const auto& [key, service] : input.MapaServicios)
            on_inputs.insert(service.get());
    }
    for (const auto& [number, output] : module.mapSalidas) {
        result.outputs.push_back(gather(output, outputs_of));
        for (const auto& [key, service] : output.MapaServicios) {
            if (on_inputs.count(service.get()) == 0)
                result.without_input.push_back(describe_placed(*service, outputs_of));
        }
    }
    return result;
}

void tell(Reason reason, ServiceResult& service) {
    service.reason = std::move(reason.text);
    service.cause = reason.cause;
    service.nearest = std::move(reason.nearest);
}

void Gathering::gather_left_out(Reasons reasons) {
    std::optional<FinalState> state;
    if (reasons == Reasons::told)
        state.emplace(run_);
    // Failed exchanges may leave one service out many times.
    ServiceSet told;
    for (const auto& [onid, network] : run_.engine.Mapa_ONIDs_Final)
        for (const auto& [tsid, stream] : network.MapRec_TSIDs) {
            StreamResult result{{onid, tsid}, {}};
            for (const auto& [key, service] : stream.MapRec_Services) {
                if (!told.insert(service.get()).second)
                    continue;
                result.services.push_back(describe_service(*service));
                if (state)
                    tell(reason_left_out(*state, *service), result.services.back());
            }
            if (!result.services.empty())
                result_.left_out.push_back(std::move(result));
        }
}

void Gathering::gather_clones_waiting(Reasons reasons) {
    for (const auto& clone : run_.engine.listaServiciosClonados) {
        result_.clones_waiting.push_back(describe_service(*clone));
        if (reasons == Reasons::told)
            result_.clones_waiting.back().reason = reason_waiting(run_, *clone);
    }
}

void Gathering::gather_neither(Reasons reasons) {
    for (const auto& service : neither_of(run_)) {
        result_.neither.push_back(describe_service(*service));
        result_.neither.back().reason = reason_neither(run_, *service);
        if (reasons == Reasons::told)
            result_.neither.back().cause = Cause::lost;
    }
}

std::size_t Gathering::number_of(const ServiceSet& services, bool are_clones) const {
    return static_cast<std::size_t>(
        std::count_if(services.begin(), services.end(), [&](const tRec_Servicio* service) {
            return (clones_.count(service) != 0) == are_clones;
        }));
}

void Gathering::count() {
    Counts& counts = result_.counts;
    counts.loaded = run_.engine.listaServicios.size();
    counts.left_out = left_out_of(run_).size();
    counts.placed = number_of(placed_, false);
    counts.neither = static_cast<std::size_t>(
        std::count_if(result_.neither.begin(), result_.neither.end(),
                      [](const ServiceResult& service) { return !service.is_clone; }));
    counts.clones_attached = number_of(placed_, true);
    counts.clones_waiting = run_.engine.listaServiciosClonados.size();
    counts.not_asked_for = run_.not_asked_for;
    counts.musts = run_.musts_wanted;
    for (const tRec_Servicio* must : run_.musts)
        counts.musts_placed += placed_.count(must);
    count_rates();
    count_groups();
    gather_variants();
}

void Gathering::count_groups() {
    for (const std::string& group : run_.groups)
        result_.groups.push_back({group});
    for (const auto& [service, group] : run_.group_of) {
        if (clones_.count(service) != 0)
            continue;
        ++result_.groups[group].loaded;
        result_.groups[group].placed += placed_.count(service);
    }
}

void Gathering::gather_variants() {
    for (const AskedVariant& variant : run_.variants)
        result_.variants.push_back({variant.one_of, describe_service(*variant.service),
                                    placed_.count(variant.service) != 0, variant.place, variant.variants});
}

void Gathering::count_rates() {
    if (run_.measured.empty())
        return;
    RateCounts& rates = result_.counts.rates;
    rates.measured_loaded = run_.measured.size();
    for (const tRec_Servicio* service : placed_) {
        if (clones_.count(service) != 0)
            continue;
        rates.bitrate += service->peakBitRate;
        if (run_.measured.count(service) != 0) {
            ++rates.measured;
        } else {
            ++rates.estimated;
            rates.estimated_bitrate += service->peakBitRate;
        }
    }
}

} // namespace

std::string described(Stream stream, const Receptions& receptions) {
    const std::string reception = tuning_of(reception_of(stream, receptions));
    return reception.empty() ? to_string(stream) : fmt::format("{} ({})", to_string(stream), reception);
}

Broken broken_in(const Result& result) {
    return broken_among(result.findings);
}

bool has_broken(const Result& result) {
    return std::any_of(result.findings.begin(), result.findings.end(),
                       [](const Finding& finding) { return finding.is_broken; });
}

std::uint64_t carried_from(const InputResult& input) {
    std::set<ServiceKey> seen;
    std::uint64_t sum = 0;
    for (const ServiceResult& service : input.services)
        if (!service.is_clone && service.stream == input.stream && !service.outputs.empty() &&
            seen.insert(key_of(service)).second)
            sum += service.bitrate;
    return sum;
}

bool is_free(const InputResult& input) {
    return input.services.empty();
}

InputCounts inputs_of(const ModuleResult& module) {
    const auto used = std::count_if(module.inputs.begin(), module.inputs.end(),
                                    [](const InputResult& input) { return !is_free(input); });
    return {static_cast<std::size_t>(used), module.inputs.size()};
}

InputCounts inputs_of(const Result& result) {
    InputCounts sum;
    for (const ModuleResult& module : result.modules) {
        sum.used += inputs_of(module).used;
        sum.all += inputs_of(module).all;
    }
    return sum;
}

TranscoderPool transcoder_pool(const ModuleResult& module) {
    const Usage sd = module.sd_transcoders;
    const Usage hd = module.hd_transcoders;
    TranscoderPool pool;
    pool.used = std::uint32_t{sd.used} + hd.used;
    pool.max = reglas::limiteTranscoders(hd.used != 0, sd.max, hd.max);
    if (hd.used != 0)
        pool.note = fmt::format("{} SD, {} HD", sd.used, hd.used);
    else if (hd.max != sd.max)
        pool.note = fmt::format("limit {} with HD", hd.max);
    return pool;
}

ServiceKey key_of(const ServiceResult& service) {
    return {service.lcn, service.stream.onid, service.stream.tsid, service.sid, service.is_clone};
}

Result result_of(const EngineRun& run, const std::string& headend_name, Reasons reasons) {
    Result result = Gathering(run, reasons).result();
    result.name = headend_name;
    for (const auto& [stream, reception] : run.receptions)
        result.streams.push_back(reception);
    set_reserve(result, Reserve());
    for (ModuleResult& module : result.modules)
        for (InputResult& input : module.inputs)
            if (input.is_tuned)
                input.net_rate = reception_of(input.stream, run.receptions).net_rate;
    return result;
}

} // namespace zarven::tool
