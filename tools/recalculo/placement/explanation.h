// What became of a service and what each module answers to it. Made for the services that a planner asks
// about; for all that are left out when none is named.

#ifndef RECALCULO_EXPLANATION_H
#define RECALCULO_EXPLANATION_H

#include <memory>
#include <string>
#include <vector>

#include "placement/refusal.h"
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

struct ModuleAnswer {
    ModuleRefusal refusal;
    /// Asked of the engine, on a copy of the module.
    bool engine_has_room = false;

    /// The limits that we name are the engine's.
    bool engine_agrees() const { return engine_has_room == (refusal.room.limit == Limit::none); }
};

struct Explanation {
    ServiceResult service;
    std::uint16_t transcoding = 0;
    Standing standing = Standing::neither;
    std::string sentence;
    /// In the order of the modules; none for a clone, which goes by its parent alone.
    std::vector<ModuleAnswer> modules;
};

using Services = std::vector<std::shared_ptr<tRec_Servicio>>;

/// The services that a run has left out, by stream, and the clones that wait.
Services left_out_of(const EngineRun& run);

/// Explains services and clones of a run, in the order given. Refers to the run.
std::vector<Explanation> explain(const EngineRun& run, const Services& services);

} // namespace zarven::tool

#endif
