// The audit of a finished placement: every service, every clone and every counter of the engine against what
// stands on the inputs and outputs. It tells and corrects nothing. docs/tool.md lists the kinds of findings.

#ifndef RECALCULO_AUDIT_H
#define RECALCULO_AUDIT_H

#include <cstdint>
#include <string>
#include <vector>

#include "placement/engine_run.h"

namespace zarven::tool {

/// The CA PIDs that the services on the outputs of a module need, each service once.
std::uint32_t pids_needed(const tRec_Modulo& module);

struct Finding {
    /// What it is about: a service, a module, or all together, which has no name.
    std::string subject;
    std::string problem;
    /// Null unless it is about a service.
    const tRec_Servicio* service = nullptr;
};

/// The findings as sentences.
std::vector<std::string> texts_of(const std::vector<Finding>& findings);

/// In this order: the total, services and clones as they were loaded, modules by MAC. Empty as a rule.
std::vector<Finding> audit(const EngineRun& run);

} // namespace zarven::tool

#endif
