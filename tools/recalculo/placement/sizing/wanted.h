// What is to be placed: all services that can be, or where some are marked as `must` those of them. And
// whether a head-end with further modules could place it, by the bound, and did, by a result.

#ifndef RECALCULO_SIZING_WANTED_H
#define RECALCULO_SIZING_WANTED_H

#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "headend/headend.h"
#include "placement/bound.h"
#include "placement/places.h"
#include "placement/result.h"
#include "placement/running/capacity.h"
#include "placement/running/engine_run.h"
#include "placement/services.h"
#include "placement/sizing/runner.h"
#include "placement/sizing/sizing.h"

namespace zarven::tool {

class Wanted {
public:
    /// Kinds of modules that are not added make nothing possible. `file` is for messages. Throws `Failure`.
    Wanted(const Headend& headend, const std::string& file, const std::vector<Module>& kinds, bool are_added);

    std::size_t musts() const { return musts_; }
    /// Each with its reason.
    const std::vector<ServiceResult>& impossible() const { return impossible_; }
    /// How many there are to place.
    std::size_t number() const { return loaded_.engine.listaServicios.size(); }

    /// What each limit allows with so many further modules of each kind.
    Bound limits_with(const std::vector<std::size_t>& numbers) const;
    bool are_too_few(const std::vector<std::size_t>& numbers) const {
        return limits_with(numbers).most < number();
    }

    /// All, if the engine was stopped.
    std::vector<ServiceResult> missing_in(const SizingTrial& trial) const;
    Attempt attempt_of(std::size_t number, const SizingTrial& trial) const;

private:
    ServiceSet find_musts(const Headend& headend) const;
    void find_impossible(const ServiceSet& musts, const std::vector<ModuleCapacity>& modules);

    EngineRun loaded_;
    std::vector<ModuleCapacity> modules_;
    std::vector<ModuleCapacity> kinds_;
    std::size_t musts_ = 0;
    std::vector<ServiceResult> impossible_;
    std::set<ServiceNumbers> wanted_;
};

/// The engine came to its end, nothing that is wanted is missing, and no limit is broken.
bool suffices(const Attempt& attempt);

} // namespace zarven::tool

#endif
