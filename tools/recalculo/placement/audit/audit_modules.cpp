#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "Reglas.h"
#include "base/counted.h"
#include "placement/audit/audit_findings.h"

namespace zarven::tool {

namespace {

/// What the services and clones on the outputs of a module need of its transcoders, each once.
struct Transcoders {
    std::size_t sd = 0;
    std::size_t hd = 0;
    std::size_t aux = 0;
};

class ModuleAudit {
public:
    ModuleAudit(const tRec_Modulo& module, const ServiceSet& clones, AuditFindings& findings)
        : module_(module), clones_(clones), findings_(findings) {}

    void examine();

private:
    void examine(const tRec_Salida& output);
    void examine_sids(const tRec_Salida& output);
    void examine_pids();
    void examine_transcoders();
    Transcoders transcoders_needed() const;
    bool is_clone(const tRec_Servicio& service) const { return clones_.count(&service) != 0; }

    template <class... Values>
    void find(bool is_broken, fmt::format_string<Values...> problem, Values&&... values) {
        findings_.add(is_broken, [&] {
            AuditFinding finding;
            finding.subject = "module " + findings_.name_of(module_);
            finding.problem = fmt::format(problem, std::forward<Values>(values)...);
            finding.is_limit = is_broken;
            finding.macs = {module_.MAC};
            return finding;
        });
    }

    /// A limit that is broken, and a counter that is off.
    template <class... Values> void find_broken(fmt::format_string<Values...> problem, Values&&... values) {
        find(true, problem, std::forward<Values>(values)...);
    }
    template <class... Values> void find_counted(fmt::format_string<Values...> problem, Values&&... values) {
        find(false, problem, std::forward<Values>(values)...);
    }

    const tRec_Modulo& module_;
    const ServiceSet& clones_;
    AuditFindings& findings_;
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
        if (!is_clone(*service)) { // clones are free of charge
            bitrate += service->peakBitRate;
            ++services;
        }
    if (output.BitRateActual != bitrate)
        find_counted("the engine counts {} kbit/s on output {}, its services need {} of {}",
                     output.BitRateActual, output.NumSalida, bitrate, output.BitRateMax);
    if (services != 0 && !reglas::bajoTecho(bitrate, output.BitRateMax))
        find_broken("the services on output {} need {} kbit/s, they must stay below {}", output.NumSalida,
                    bitrate, output.BitRateMax);
    if (output.NumServicios != services)
        find_counted("the engine counts {} on output {}, it carries {} of {}",
                     counted(output.NumServicios, "service"), output.NumSalida, services,
                     output.NumServiciosMax);
    if (!reglas::hastaTecho(services, output.NumServiciosMax))
        find_broken("output {} carries {}, it may carry {}", output.NumSalida, counted(services, "service"),
                    output.NumServiciosMax);
    examine_sids(output);
}

/// A receiver tells the services of an output apart by their SID. Clones are not looked at: one may share
/// that of its parent.
void ModuleAudit::examine_sids(const tRec_Salida& output) {
    std::map<std::uint16_t, std::vector<const tRec_Servicio*>> with_sid;
    ServiceSet seen;
    for (const auto& [key, service] : output.MapaServicios)
        if (!is_clone(*service) && seen.insert(service.get()).second)
            with_sid[service->SID].push_back(service.get());
    for (auto& [sid, same] : with_sid) {
        if (same.size() < 2)
            continue;
        for (const tRec_Servicio* service : same)
            findings_.add(true, [&, sid = sid, others = same.size() - 2, &same = same] {
                const tRec_Servicio* other = same.front() == service ? same[1] : same.front();
                AuditFinding finding;
                finding.subject = audited_name(*service, false);
                finding.problem =
                    fmt::format("on output {} of module {} with the SID {}, as {}{}", output.NumSalida,
                                findings_.name_of(module_), sid, audited_name(*other, false),
                                others == 0 ? "" : fmt::format(" and {}", counted(others, "other")));
                finding.macs = {module_.MAC};
                finding.service = service;
                return finding;
            });
    }
}

void ModuleAudit::examine_pids() {
    const std::uint32_t needed = pids_needed(module_);
    if (module_.PIDsModulo != needed)
        find_counted("the engine counts {} in use, its services need {} of {}",
                     counted(module_.PIDsModulo, "PID"), needed, module_.PIDsModuloMax);
    if (!reglas::hastaTecho(needed, module_.PIDsModuloMax))
        find_broken("its services need {}, it may use {}", counted(needed, "PID"), module_.PIDsModuloMax);
}

Transcoders ModuleAudit::transcoders_needed() const {
    Transcoders needed;
    for (const tRec_Servicio* service : services_on_outputs(module_)) {
        if (is_clone(*service))
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
            find_counted("the engine counts {} in use, its {} need {}", counted(count, kind), whose, need);
    };
    compare("SD transcoder", module_.SD_Transcoding, "services", needed.sd);
    compare("HD transcoder", module_.HD_Transcoding, "services", needed.hd);
    compare("AUX transcoder", module_.AUX_Transcoding, "clones", needed.aux);

    const unsigned limit =
        reglas::limiteTranscoders(needed.hd != 0, module_.SD_MAX_Transcoding, module_.HD_MAX_Transcoding);
    if (!reglas::hastaTecho(needed.sd + needed.hd, limit))
        find_broken("its services need {} ({} SD, {} HD), it may use {}{}",
                    counted(needed.sd + needed.hd, "transcoder"), needed.sd, needed.hd, limit,
                    needed.hd != 0 ? " with HD among them" : "");
    if (!reglas::hastaTecho(needed.aux, module_.AUX_MAX_Transcoding))
        find_broken("its clones need {}, it may use {}", counted(needed.aux, "AUX transcoder"),
                    module_.AUX_MAX_Transcoding);
}

} // namespace

void audit_module(const tRec_Modulo& module, const ServiceSet& clones, AuditFindings& findings) {
    ModuleAudit(module, clones, findings).examine();
}

} // namespace zarven::tool
