// The reason why a service is left out, in one sentence of the planner's words and figures: what would have
// to be different, and where it would take least. Made for every service left out, of which there may be
// thousands.

#ifndef RECALCULO_REASON_H
#define RECALCULO_REASON_H

#include <string>

#include "placement/reasons/cause.h"
#include "placement/reasons/refusal.h"

namespace zarven::tool {

struct Reason {
    Cause cause = Cause::none;
    /// A sentence.
    std::string text;
    /// MAC of the module that is nearest to taking the service; empty where none is nearer than the others.
    std::string nearest = {};
};

/// Why a service is left out, over all modules.
Reason reason_left_out(const FinalState& state, const tRec_Servicio& service);

/// Why a clone waits.
std::string reason_waiting(const EngineRun& run, const tRec_Servicio& clone);

/// Why a service is neither placed nor left out, and where it is all the same.
std::string reason_neither(const EngineRun& run, const tRec_Servicio& service);

/// Where a service is carried: "module X, output 1"; empty if on no output.
std::string places_of(const std::vector<ModuleRefusal>& refusals);

} // namespace zarven::tool

#endif
