#include <algorithm>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "Reglas.h"
#include "placement/audit/audit_findings.h"

namespace zarven::tool {

namespace {

/// An input or an output on which a service stands.
struct Port {
    const tRec_Modulo* module = nullptr;
    std::uint32_t number = 0;
    /// How often it stands there.
    std::size_t times = 0;
};

using Ports = std::vector<Port>;

bool holds(const Ports& places, const Port& wanted) {
    return std::any_of(places.begin(), places.end(), [&](const Port& place) {
        return place.module == wanted.module && place.number == wanted.number;
    });
}

bool holds(const Ports& places, const tRec_Modulo* module) {
    return std::any_of(places.begin(), places.end(),
                       [&](const Port& place) { return place.module == module; });
}

/// Notes one more entry. The places are visited one after the other, so the last noted is the one in hand.
void note(Ports& places, const tRec_Modulo& module, std::uint32_t number) {
    if (places.empty() || places.back().module != &module || places.back().number != number)
        places.push_back({&module, number, 0});
    ++places.back().times;
}

/// All the places of a service.
struct Whereabouts {
    Ports inputs;
    Ports outputs;
    /// Those of the inputs that are tuned to another stream, each with that stream.
    std::vector<std::pair<Port, Stream>> foreign_inputs;
    /// The streams under which it is left out, and how often that is altogether.
    std::vector<Stream> left_out;
    std::size_t times_left_out = 0;
};

class PlaceAudit {
public:
    PlaceAudit(const EngineRun& run, const ServiceSet& clones, AuditFindings& findings)
        : run_(run), findings_(findings), clones_(clones),
          waiting_(set_of(run.engine.listaServiciosClonados)) {
        whereabouts_.reserve(run.engine.listaServicios.size() + run.clones.size());
        for (const auto& [mac, module] : run.engine.Mapa_ModulosCabecera_Final)
            visit(module);
        for (const auto& [onid, network] : run.engine.Mapa_ONIDs_Final)
            for (const auto& [tsid, stream] : network.MapRec_TSIDs)
                for (const auto& [key, service] : stream.MapRec_Services)
                    leave_out(*service, {onid, tsid});
    }

    void examine();

private:
    void visit(const tRec_Modulo& module);
    void leave_out(const tRec_Servicio& service, Stream stream);
    void examine_total();
    void examine(const tRec_Servicio& service);
    void examine_completeness(const tRec_Servicio& service, const Whereabouts& where);
    void examine_repetition(const tRec_Servicio& service, const char* kind, const Ports& places);
    void examine_inputs_and_outputs(const tRec_Servicio& service, const Whereabouts& where);
    void examine_left_out(const tRec_Servicio& service, const Whereabouts& where);
    void examine_parent(const tRec_Servicio& clone, const Whereabouts& where);
    Ports outputs_of_parent(const tRec_Servicio& clone) const;

    std::string listed(const char* kind, const Ports& places) const;

    /// `problem()` makes the sentence, which names these places.
    template <class Problem>
    void find(bool is_broken, const tRec_Servicio& service, const Ports& places, Problem problem) {
        findings_.add(is_broken, [&] {
            AuditFinding finding;
            finding.subject = audited_name(service, is_clone(service));
            finding.problem = problem();
            for (const Port& place : places)
                if (std::find(finding.macs.begin(), finding.macs.end(), place.module->MAC) ==
                    finding.macs.end())
                    finding.macs.push_back(place.module->MAC);
            finding.service = &service;
            return finding;
        });
    }

    bool is_clone(const tRec_Servicio& service) const { return clones_.count(&service) != 0; }

    const EngineRun& run_;
    AuditFindings& findings_;
    const ServiceSet& clones_;
    const ServiceSet waiting_;
    std::unordered_map<const tRec_Servicio*, Whereabouts> whereabouts_;
};

/// "output 1, output 2 of module A, output 1 of module B"
std::string PlaceAudit::listed(const char* kind, const Ports& places) const {
    std::string list;
    for (std::size_t index = 0; index < places.size(); ++index) {
        const Port& place = places[index];
        list += fmt::format("{}{} {}", index == 0 ? "" : ", ", kind, place.number);
        if (index + 1 == places.size() || places[index + 1].module != place.module)
            list += " of module " + findings_.name_of(*place.module);
    }
    return list;
}

void PlaceAudit::visit(const tRec_Modulo& module) {
    for (const auto& [number, input] : module.mapEntradas)
        for (const auto& [key, service] : input.MapaServicios) {
            Whereabouts& where = whereabouts_[service.get()];
            note(where.inputs, module, input.NumEntrada);
            if (where.inputs.back().times == 1 && !is_received(*service, input))
                where.foreign_inputs.emplace_back(where.inputs.back(), Stream{input.ONID, input.TSID});
        }
    for (const auto& [number, output] : module.mapSalidas)
        for (const auto& [key, service] : output.MapaServicios)
            note(whereabouts_[service.get()].outputs, module, output.NumSalida);
}

void PlaceAudit::leave_out(const tRec_Servicio& service, Stream stream) {
    Whereabouts& where = whereabouts_[&service];
    ++where.times_left_out;
    // The streams come one after the other.
    if (where.left_out.empty() || where.left_out.back() != stream)
        where.left_out.push_back(stream);
}

void PlaceAudit::examine() {
    examine_total();
    for (const auto* loaded : {&run_.engine.listaServicios, &run_.clones})
        for (const auto& service : *loaded)
            if (examine(*service); findings_.is_answered())
                return;
}

void PlaceAudit::examine_total() {
    std::size_t on_outputs = 0;
    std::size_t left_out = 0;
    for (const auto& [service, where] : whereabouts_) {
        on_outputs += !where.outputs.empty() && !is_clone(*service);
        left_out += !where.left_out.empty();
    }
    const std::size_t loaded = run_.engine.listaServicios.size();
    if (on_outputs + left_out != loaded)
        findings_.add(false, [&] {
            AuditFinding finding;
            finding.problem = fmt::format("{} on outputs and {} left out do not make {} loaded", on_outputs,
                                          left_out, loaded);
            return finding;
        });
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
        find(true, service, {}, [&] {
            return is_clone(service) ? "neither attached nor waiting" : "neither placed nor left out";
        });
    // It is sent all the same.
    if (!where.outputs.empty() && is_left)
        find(false, service, where.outputs, [&] {
            return fmt::format("{} at once, it is on {}",
                               is_clone(service) ? "attached and waiting" : "placed and left out",
                               listed("output", where.outputs));
        });
}

void PlaceAudit::examine_repetition(const tRec_Servicio& service, const char* kind, const Ports& places) {
    for (const Port& place : places)
        if (place.times > 1)
            find(true, service, {place},
                 [&] { return fmt::format("{} times on {}", place.times, listed(kind, {place})); });
    if (places.size() < 2)
        return;
    const bool in_one_module = places.front().module == places.back().module;
    find(true, service, places, [&] {
        return fmt::format("on {} {}s{}: {}", places.size(), kind,
                           in_one_module ? " of one module" : " of different modules", listed(kind, places));
    });
}

void PlaceAudit::examine_inputs_and_outputs(const tRec_Servicio& service, const Whereabouts& where) {
    for (const Port& output : where.outputs)
        if (!holds(where.inputs, output.module))
            find(true, service, {output},
                 [&] { return fmt::format("on {}, which has it on no input", listed("output", {output})); });
    // Nobody misses it there.
    for (const Port& input : where.inputs)
        if (!holds(where.outputs, input.module))
            find(false, service, {input},
                 [&] { return fmt::format("on {}, which has it on no output", listed("input", {input})); });
    for (const auto& foreign : where.foreign_inputs)
        find(true, service, {foreign.first}, [&] {
            return fmt::format("on {}, which is tuned to stream {}", listed("input", {foreign.first}),
                               to_string(foreign.second));
        });
}

void PlaceAudit::examine_left_out(const tRec_Servicio& service, const Whereabouts& where) {
    if (where.times_left_out > 1)
        find(false, service, {}, [&] { return fmt::format("left out {} times", where.times_left_out); });
    for (const Stream stream : where.left_out)
        if (stream != stream_of(service))
            find(false, service, {},
                 [&] { return fmt::format("left out under stream {}", to_string(stream)); });
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
    if (where.outputs.empty())
        return;
    const Ports parent = outputs_of_parent(clone);
    for (const Port& output : where.outputs) {
        if (holds(parent, output))
            continue;
        Ports named{output};
        named.insert(named.end(), parent.begin(), parent.end());
        find(true, clone, named, [&] {
            return fmt::format("attached on {}, but its parent (SID {}) is on {}", listed("output", {output}),
                               clone.Parent_SID, parent.empty() ? "no output" : listed("output", parent));
        });
    }
}

} // namespace

void audit_places(const EngineRun& run, const ServiceSet& clones, AuditFindings& findings) {
    PlaceAudit(run, clones, findings).examine();
}

} // namespace zarven::tool
