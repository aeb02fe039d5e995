// The audit of a finished placement: every service, every clone and every counter of the engine against what
// stands on the inputs and outputs. It tells and corrects nothing. docs/tool.md lists the kinds of findings.

#ifndef RECALCULO_AUDIT_H
#define RECALCULO_AUDIT_H

#include <cstdint>
#include <vector>

#include "placement/audit/finding.h"
#include "placement/running/engine_run.h"

namespace zarven::tool {

/// The CA PIDs that the services on the outputs of a module need, each service once.
std::uint32_t pids_needed(const tRec_Modulo& module);

struct AuditFinding : Finding {
    /// Null unless it is about a service. Lives with the run.
    const tRec_Servicio* service = nullptr;
};

/// First what is broken, then what is only counted. Each in this order: the total, services and clones as
/// they were loaded, modules by MAC. Empty as a rule.
std::vector<AuditFinding> audit(const EngineRun& run);

/// The same for a result, which may outlive the run.
std::vector<Finding> findings_of(const EngineRun& run);

/// Whether the audit would find something broken. For whoever runs the engine again and again: it makes no
/// sentences and stops at the first thing broken.
bool has_broken(const EngineRun& run);

} // namespace zarven::tool

#endif
