// What became of a service and what each module answers to it. Made for the services that a planner asks
// about; for all that are left out when none is named.

#ifndef RECALCULO_EXPLANATION_H
#define RECALCULO_EXPLANATION_H

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "placement/audit/audit.h"
#include "placement/reasons/refusal.h"
#include "placement/remedy/remedy.h"
#include "placement/result.h"

namespace zarven::tool {

enum class Standing {
    placed,
    left_out,
    /// The engine's exchanges may lead to these two.
    placed_and_left_out,
    neither,
    /// Clones: beside their parent, or not.
    attached,
    waiting,
};

struct Explanation {
    ServiceResult service;
    std::uint16_t transcoding = 0;
    Standing standing = Standing::neither;
    std::string sentence;
    /// What the audit found about the service.
    std::vector<Finding> findings;
    /// In the order of the modules; none for a clone, which goes by its parent alone.
    std::vector<ModuleRefusal> modules;
    /// Modules without an input for the service that are not listed.
    std::size_t unlisted = 0;
    /// None where nobody looked for them.
    std::optional<Remedies> remedies = {};
};

/// It is not placed, and so might have remedies.
bool may_have_remedies(const Explanation& explanation);

/// Which modules an explanation lists.
enum class Listing {
    all_modules,
    /// Those that receive the stream or have an input free, as the others need not be looked at. A module
    /// that carries the service is listed all the same.
    with_an_input,
};

/// Explains services and clones of one run. Refers to the run.
class Explainer {
public:
    Explainer(const EngineRun& run, Listing listing);

    Explanation explain(const std::shared_ptr<tRec_Servicio>& service);

    /// All that the audit found.
    std::vector<Finding> findings() const { return {findings_.begin(), findings_.end()}; }

private:
    Standing standing_of(const tRec_Servicio& service, bool is_carried) const;
    std::string sentence_on(const tRec_Servicio& service, Standing standing, const std::string& places) const;
    bool is_listed(const ModuleRefusal& refusal) const;

    const EngineRun& run_;
    const Listing listing_;
    const FinalState state_;
    const ServiceSet clones_;
    /// Services left out and clones that wait.
    const ServiceSet not_placed_;
    const std::vector<AuditFinding> findings_;
    const ServiceSet placed_;
};

} // namespace zarven::tool

#endif
