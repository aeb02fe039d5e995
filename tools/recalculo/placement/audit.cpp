// Two audits that share nothing but the run: where each service stands, and what each module is said to
// carry.

#include "placement/audit.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

#include <fmt/format.h>

#include "Reglas.h"
#include "base/counted.h"
#include "placement/capacity.h"
#include "placement/services.h"

namespace zarven::tool {

namespace {

/// An input or an output on which a service stands.
struct Port {
    std::string mac;
    std::uint32_t number = 0;
    /// How often it stands there.
    std::size_t times = 0;
};

using Ports = std::vector<Port>;

bool holds(const Ports& places, const std::string& mac, std::uint32_t number) {
    return std::any_of(places.begin(), places.end(),
                       [&](const Port& place) { return place.mac == mac && place.number == number; });
}

bool holds(const Ports& places, const std::string& mac) {
    return std::any_of(places.begin(), places.end(), [&](const Port& place) { return place.mac == mac; });
}

/// Notes one more entry. The places are visited one after the other, so the last noted is the one in hand.
void note(Ports& places, const std::string& mac, std::uint32_t number) {
    if (places.empty() || places.back().mac != mac || places.back().number != number)
        places.push_back({mac, number, 0});
    ++places.back().times;
}

/// "output 1, output 2 of module A, output 1 of module B"
std::string listed(const char* kind, const Ports& places) {
    std::string list;
    for (std::size_t index = 0; index < places.size(); ++index) {
        const Port& place = places[index];
        list += fmt::format("{}{} {}", index == 0 ? "" : ", ", kind, place.number);
        if (index + 1 == places.size() || places[index + 1].mac != place.mac)
            list += " of module " + place.mac;
    }
    return list;
}

/// All the places of a service.
struct Whereabouts {
    Ports inputs;
    Ports outputs;
    /// Those of the inputs that are tuned to another stream, each with that stream.
    std::vector<std::pair<Port, Stream>> foreign_inputs;
    /// The streams under which it is left out.
    std::vector<Stream> left_out;
};

class PlaceAudit {
public:
    PlaceAudit(const EngineRun& run, std::vector<Finding>& findings)
        : run_(run), findings_(findings), clones_(set_of(run.clones)),
          waiting_(set_of(run.engine.listaServiciosClonados)) {
        for (const auto& [mac, module] : run.engine.Mapa_ModulosCabecera_Final)
            visit(module);
        for (const auto& [onid, network] : run.engine.Mapa_ONIDs_Final)
            for (const auto& [tsid, stream] : network.MapRec_TSIDs)
                for (const auto& [key, service] : stream.MapRec_Services)
                    whereabouts_[service.get()].left_out.push_back({onid, tsid});
    }

    void examine();

private:
    void visit(const tRec_Modulo& module);
    void examine_total();
    void examine(const tRec_Servicio& service);
    void examine_completeness(const tRec_Servicio& service, const Whereabouts& where);
    void examine_repetition(const tRec_Servicio& service, const char* kind, const Ports& places);
    void examine_inputs_and_outputs(const tRec_Servicio& service, const Whereabouts& where);
    void examine_left_out(const tRec_Servicio& service, const Whereabouts& where);
    void examine_parent(const tRec_Servicio& clone, const Whereabouts& where);
    Ports outputs_of_parent(const tRec_Servicio& clone) const;

    void find(const tRec_Servicio& service, const std::string& problem) {
        const std::string subject =
            fmt::format("{}LCN {} \"{}\" of stream {}", is_clone(service) ? "clone " : "", service.LCN,
                        service.NombreEntrada, to_string(stream_of(service)));
        findings_.push_back({subject, problem, &service});
    }

    bool is_clone(const tRec_Servicio& service) const { return clones_.count(&service) != 0; }

    const EngineRun& run_;
    std::vector<Finding>& findings_;
    const ServiceSet clones_;
    const ServiceSet waiting_;
    std::map<const tRec_Servicio*, Whereabouts> whereabouts_;
};

void PlaceAudit::visit(const tRec_Modulo& module) {
    for (const auto& [number, input] : module.mapEntradas)
        for (const auto& [key, service] : input.MapaServicios) {
            Whereabouts& where = whereabouts_[service.get()];
            note(where.inputs, module.MAC, input.NumEntrada);
            const Stream tuned{input.ONID, input.TSID};
            if (where.inputs.back().times == 1 && tuned != stream_of(*service))
                where.foreign_inputs.emplace_back(where.inputs.back(), tuned);
        }
    for (const auto& [number, output] : module.mapSalidas)
        for (const auto& [key, service] : output.MapaServicios)
            note(whereabouts_[service.get()].outputs, module.MAC, output.NumSalida);
}

void PlaceAudit::examine() {
    examine_total();
    for (const auto& service : run_.engine.listaServicios)
        examine(*service);
    for (const auto& clone : run_.clones)
        examine(*clone);
}

void PlaceAudit::examine_total() {
    std::size_t placed = 0;
    std::size_t left_out = 0;
    for (const auto& [service, where] : whereabouts_) {
        placed += !where.outputs.empty() && !is_clone(*service);
        left_out += !where.left_out.empty();
    }
    const std::size_t loaded = run_.engine.listaServicios.size();
    if (placed + left_out != loaded)
        findings_.push_back(
            {"", fmt::format("{} placed and {} left out do not make {} loaded", placed, left_out, loaded)});
}

void PlaceAudit::examine(const tRec_Servicio& service) {
    const Whereabouts& where = whereabouts_[&service];
    examine_completeness(service, where);
    examine_repetition(service, "output", where.outputs);
    examine_repetition(service, "input", where.inputs);
    examine_inputs_and_outputs(service, where);
    examine_left_out(service, where);
    if (is_clone(service))
        examine_parent(service, where);
}

void PlaceAudit::examine_completeness(const tRec_Servicio& service, const Whereabouts& where) {
    const bool is_left = is_clone(service) ? waiting_.count(&service) != 0 : !where.left_out.empty();
    if (where.outputs.empty() && !is_left)
        find(service, is_clone(service) ? "neither attached nor waiting" : "neither placed nor left out");
    if (!where.outputs.empty() && is_left)
        find(service, fmt::format("{} at once, it is on {}",
                                  is_clone(service) ? "attached and waiting" : "placed and left out",
                                  listed("output", where.outputs)));
}

void PlaceAudit::examine_repetition(const tRec_Servicio& service, const char* kind, const Ports& places) {
    for (const Port& place : places)
        if (place.times > 1)
            find(service, fmt::format("{} times on {}", place.times, listed(kind, {place})));
    if (places.size() < 2)
        return;
    const bool in_one_module = places.front().mac == places.back().mac;
    find(service,
         fmt::format("on {} {}s{}: {}", places.size(), kind,
                     in_one_module ? " of one module" : " of different modules", listed(kind, places)));
}

void PlaceAudit::examine_inputs_and_outputs(const tRec_Servicio& service, const Whereabouts& where) {
    for (const Port& output : where.outputs)
        if (!holds(where.inputs, output.mac))
            find(service, fmt::format("on {}, which has it on no input", listed("output", {output})));
    for (const Port& input : where.inputs)
        if (!holds(where.outputs, input.mac))
            find(service, fmt::format("on {}, which has it on no output", listed("input", {input})));
    for (const auto& [input, tuned] : where.foreign_inputs)
        find(service,
             fmt::format("on {}, which is tuned to stream {}", listed("input", {input}), to_string(tuned)));
}

void PlaceAudit::examine_left_out(const tRec_Servicio& service, const Whereabouts& where) {
    if (where.left_out.size() > 1)
        find(service, fmt::format("left out {} times", where.left_out.size()));
    for (const Stream stream : where.left_out)
        if (stream != stream_of(service))
            find(service, fmt::format("left out under stream {}", to_string(stream)));
}

/// The engine knows the parent of a clone by its OSID.
Ports PlaceAudit::outputs_of_parent(const tRec_Servicio& clone) const {
    Ports outputs;
    for (const auto& service : run_.engine.listaServicios) {
        const auto found = whereabouts_.find(service.get());
        if (reglas::esPadre(*service, clone) && stream_of(*service) == stream_of(clone) &&
            found != whereabouts_.end())
            outputs.insert(outputs.end(), found->second.outputs.begin(), found->second.outputs.end());
    }
    return outputs;
}

void PlaceAudit::examine_parent(const tRec_Servicio& clone, const Whereabouts& where) {
    const Ports parent = outputs_of_parent(clone);
    for (const Port& output : where.outputs)
        if (!holds(parent, output.mac, output.number))
            find(clone,
                 fmt::format("attached on {}, but its parent (SID {}) is on {}", listed("output", {output}),
                             clone.Parent_SID, parent.empty() ? "no output" : listed("output", parent)));
}

/// What the services and clones on the outputs of a module need of its transcoders, each once.
struct Transcoders {
    std::size_t sd = 0;
    std::size_t hd = 0;
    std::size_t aux = 0;
};

class ModuleAudit {
public:
    ModuleAudit(const tRec_Modulo& module, const ServiceSet& clones, std::vector<Finding>& findings)
        : module_(module), clones_(clones), findings_(findings), name_("module " + module.MAC) {}

    void examine();

private:
    void examine(const tRec_Salida& output);
    void examine_pids();
    void examine_transcoders();
    Transcoders transcoders_needed() const;

    template <class... Values> void find(fmt::format_string<Values...> problem, Values&&... values) {
        findings_.push_back({name_, fmt::format(problem, std::forward<Values>(values)...)});
    }

    const tRec_Modulo& module_;
    const ServiceSet& clones_;
    std::vector<Finding>& findings_;
    const std::string name_;
};

void ModuleAudit::examine() {
    for (const auto& [number, output] : module_.mapSalidas)
        examine(output);
    examine_pids();
    examine_transcoders();
}

void ModuleAudit::examine(const tRec_Salida& output) {
    std::uint64_t bitrate = 0;
    std::size_t services = 0;
    for (const auto& [key, service] : output.MapaServicios)
        if (clones_.count(service.get()) == 0) { // clones are free of charge
            bitrate += service->peakBitRate;
            ++services;
        }
    if (output.BitRateActual != bitrate)
        find("the engine counts {} kbit/s on output {}, its services need {} of {}", output.BitRateActual,
             output.NumSalida, bitrate, output.BitRateMax);
    if (services != 0 && !reglas::bajoTecho(bitrate, output.BitRateMax))
        find("the services on output {} need {} kbit/s, they must stay below {}", output.NumSalida, bitrate,
             output.BitRateMax);
    if (output.NumServicios != services)
        find("the engine counts {} on output {}, it carries {} of {}",
             counted(output.NumServicios, "service"), output.NumSalida, services, output.NumServiciosMax);
    if (!reglas::hastaTecho(services, output.NumServiciosMax))
        find("output {} carries {}, it may carry {}", output.NumSalida, counted(services, "service"),
             output.NumServiciosMax);
}

void ModuleAudit::examine_pids() {
    const std::uint32_t needed = pids_needed(module_);
    if (module_.PIDsModulo != needed)
        find("the engine counts {} in use, its services need {} of {}", counted(module_.PIDsModulo, "PID"),
             needed, module_.PIDsModuloMax);
    if (!reglas::hastaTecho(needed, module_.PIDsModuloMax))
        find("its services need {}, it may use {}", counted(needed, "PID"), module_.PIDsModuloMax);
}

Transcoders ModuleAudit::transcoders_needed() const {
    Transcoders needed;
    for (const tRec_Servicio* service : services_on_outputs(module_)) {
        if (clones_.count(service) != 0)
            needed.aux += reglas::necesitaTranscoding(service->Transcoding);
        else if (reglas::ocupaTranscoder(service->Transcoding))
            ++(reglas::esHD(service->VideoFormatE) ? needed.hd : needed.sd);
    }
    return needed;
}

void ModuleAudit::examine_transcoders() {
    const Transcoders needed = transcoders_needed();
    const auto compare = [this](const char* kind, unsigned count, const char* whose, std::size_t need) {
        if (count != need)
            find("the engine counts {} in use, its {} need {}", counted(count, kind), whose, need);
    };
    compare("SD transcoder", module_.SD_Transcoding, "services", needed.sd);
    compare("HD transcoder", module_.HD_Transcoding, "services", needed.hd);
    compare("AUX transcoder", module_.AUX_Transcoding, "clones", needed.aux);

    const unsigned limit =
        reglas::limiteTranscoders(needed.hd != 0, module_.SD_MAX_Transcoding, module_.HD_MAX_Transcoding);
    if (!reglas::hastaTecho(needed.sd + needed.hd, limit))
        find("its services need {} ({} SD, {} HD), it may use {}{}",
             counted(needed.sd + needed.hd, "transcoder"), needed.sd, needed.hd, limit,
             needed.hd != 0 ? " with HD among them" : "");
    if (!reglas::hastaTecho(needed.aux, module_.AUX_MAX_Transcoding))
        find("its clones need {}, it may use {}", counted(needed.aux, "AUX transcoder"),
             module_.AUX_MAX_Transcoding);
}

} // namespace

std::uint32_t pids_needed(const tRec_Modulo& module) {
    std::uint32_t pids = 0;
    for (const tRec_Servicio* service : services_on_outputs(module))
        pids += service->number_PIDs_CA;
    return pids;
}

std::vector<std::string> texts_of(const std::vector<Finding>& findings) {
    std::vector<std::string> texts;
    for (const Finding& finding : findings)
        texts.push_back(finding.subject.empty() ? finding.problem : finding.subject + ": " + finding.problem);
    return texts;
}

std::vector<Finding> audit(const EngineRun& run) {
    std::vector<Finding> findings;
    PlaceAudit(run, findings).examine();
    const ServiceSet clones = set_of(run.clones);
    for (const auto& [mac, module] : run.engine.Mapa_ModulosCabecera_Final)
        ModuleAudit(module, clones, findings).examine();
    return findings;
}

} // namespace zarven::tool
