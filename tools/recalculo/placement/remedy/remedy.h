// What would place a service that is not placed: the smallest change of the head-end with which the engine
// places it, found by running the engine on changed head-ends, some hundreds of times. A change counts only
// if its run breaks no limit.

#ifndef RECALCULO_REMEDY_H
#define RECALCULO_REMEDY_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "headend/headend.h"
#include "placement/raise.h"
#include "placement/reasons/refusal.h"
#include "placement/result.h"
#include "placement/running/engine_run.h"

namespace zarven::tool {

enum class RemedyKind { raised_limit, withheld_service, further_module };

struct Remedy {
    RemedyKind kind = RemedyKind::raised_limit;
    /// Of a raised limit; what the engine then places, of a limit raised or not.
    Raise raise;
    /// A service that is not asked for.
    ServiceResult withheld;
    /// MAC and label of the module that the further one is like.
    std::string like;
    std::string label = {};
    /// The change as `--set` takes it; empty for a further module.
    std::string setting = {};
    std::size_t placed = 0;
    /// Placed now and not any more.
    std::vector<ServiceResult> lost = {};
};

/// What was found for one service.
struct Remedies {
    /// In the order of the kinds, of each the smallest that was found, and where that costs other services
    /// also the smallest that does not.
    std::vector<Remedy> found;
    /// Changes that were run.
    std::size_t tried = 0;
};

/// Looks for remedies of the services of one head-end.
class RemedySearch {
public:
    /// All must outlive this; `run` is that of the head-end as it is, and `now` its result. The log must be
    /// masked.
    RemedySearch(const Headend& headend, const std::string& file, const EngineRun& run, const Result& now)
        : headend_(headend), file_(file), state_(run), now_(now) {}

    /// Tries at most so many changes of each kind.
    Remedies remedies_for(const tRec_Servicio& service, std::size_t most) const;

private:
    struct Change;

    std::vector<Change> raises_for(const tRec_Servicio& service) const;
    std::vector<Change> withholdings_for(const tRec_Servicio& service) const;
    std::vector<Change> further_modules() const;
    /// Notes the first that helps.
    void look(const std::vector<Change>& changes, std::size_t most, const ServiceKey& key,
              Remedies& remedies) const;
    Remedy told(const Change& change, const Result& result) const;

    const Headend& headend_;
    const std::string& file_;
    const FinalState state_;
    const Result& now_;
};

/// Placed where an input of its module receives it.
bool is_placed(const ServiceKey& key, const Result& result);

} // namespace zarven::tool

#endif
