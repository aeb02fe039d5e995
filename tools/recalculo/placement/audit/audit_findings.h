// Where the two parts of the audit put what they find. They make no sentence for one who only asks whether
// something is broken.

#ifndef RECALCULO_AUDIT_FINDINGS_H
#define RECALCULO_AUDIT_FINDINGS_H

#include <string>
#include <utility>
#include <vector>

#include "placement/audit/audit.h"
#include "placement/services.h"

namespace zarven::tool {

enum class Asked { everything, is_anything_broken };

class AuditFindings {
public:
    AuditFindings(const EngineRun& run, Asked asked) : run_(run), asked_(asked) {}

    /// Notes what `finding()` makes; `is_broken` as it will say.
    template <class Make> void add(bool is_broken, Make finding) {
        has_broken_ = has_broken_ || is_broken;
        if (asked_ == Asked::is_anything_broken)
            return;
        list_.push_back(finding());
        list_.back().is_broken = is_broken;
    }

    /// Nothing that is still found changes the answer.
    bool is_answered() const { return asked_ == Asked::is_anything_broken && has_broken_; }
    bool has_broken() const { return has_broken_; }
    std::vector<AuditFinding> list() && { return std::move(list_); }

    /// The module as reports call it.
    std::string name_of(const tRec_Modulo& module) const;

private:
    const EngineRun& run_;
    const Asked asked_;
    bool has_broken_ = false;
    std::vector<AuditFinding> list_;
};

/// Where each service stands.
void audit_places(const EngineRun& run, const ServiceSet& clones, AuditFindings& findings);

/// What a module carries, against its limits and against its counters.
void audit_module(const tRec_Modulo& module, const ServiceSet& clones, AuditFindings& findings);

/// How the audit calls a service.
std::string audited_name(const tRec_Servicio& service, bool is_clone);

} // namespace zarven::tool

#endif
