// Two audits that share nothing but the run: where each service stands, and what each module is said to
// carry.

#include "placement/audit/audit.h"

#include <algorithm>
#include <utility>

#include <fmt/format.h>

#include "placement/audit/audit_findings.h"

namespace zarven::tool {

std::string AuditFindings::name_of(const tRec_Modulo& module) const {
    return name_in(run_, module.MAC);
}

std::string audited_name(const tRec_Servicio& service, bool is_clone) {
    return fmt::format("{}LCN {} \"{}\" of stream {}", is_clone ? "clone " : "", service.LCN,
                       service.NombreEntrada, to_string(stream_of(service)));
}

std::uint32_t pids_needed(const tRec_Modulo& module) {
    std::uint32_t pids = 0;
    for (const tRec_Servicio* service : services_on_outputs(module))
        pids += service->number_PIDs_CA;
    return pids;
}

std::vector<AuditFinding> audit(const EngineRun& run) {
    const ServiceSet clones = set_of(run.clones);
    AuditFindings found(run, Asked::everything);
    audit_places(run, clones, found);
    for (const auto& [mac, module] : run.engine.Mapa_ModulosCabecera_Final)
        audit_module(module, clones, found);
    std::vector<AuditFinding> findings = std::move(found).list();
    std::stable_partition(findings.begin(), findings.end(),
                          [](const AuditFinding& finding) { return finding.is_broken; });
    return findings;
}

std::vector<Finding> findings_of(const EngineRun& run) {
    const std::vector<AuditFinding> findings = audit(run);
    return {findings.begin(), findings.end()};
}

bool has_broken(const EngineRun& run) {
    const ServiceSet clones = set_of(run.clones);
    AuditFindings found(run, Asked::is_anything_broken);
    // The modules first, which take less time.
    for (const auto& [mac, module] : run.engine.Mapa_ModulosCabecera_Final)
        if (audit_module(module, clones, found); found.has_broken())
            return true;
    audit_places(run, clones, found);
    return found.has_broken();
}

} // namespace zarven::tool
