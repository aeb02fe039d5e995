// The pieces that a drill is made of: which parts there are to take out, a run of the engine without one, and
// what that means for each service. Some thousands of parts, of which each looks at all services.

#ifndef RECALCULO_DRILL_PARTS_H
#define RECALCULO_DRILL_PARTS_H

#include <set>
#include <string>
#include <vector>

#include "placement/failing/drill.h"
#include "placement/places.h"

namespace zarven::tool {

using DrilledIds = std::set<ServiceNumbers>;

/// A run of the engine on what is left.
struct Rerun {
    NewRun run = NewRun::usable;
    std::string problem = {};
    std::vector<PlacedService> services = {};
};

/// Throws `Failure` for all but a run that was stopped. `file` is for messages.
Rerun rerun_of(const Headend& headend, const std::string& file);

/// What the failure of a part means, with the services that it moves in `moved` if that is not null.
DrilledFailure judged(const FailedPart& part, const std::vector<PlacedService>& before, const Rerun& rerun,
                      const DrilledIds& musts, std::vector<ServiceChange>* moved = nullptr);

/// Parts that one run stands for: a module, inputs of a module, or a stream.
using Alike = std::vector<FailedPart>;

/// All parts of a head-end, by what they take off the air.
class Parts {
public:
    /// `before` must outlive this.
    Parts(const Headend& headend, const std::vector<PlacedService>& before);

    void add_streams(const Headend& headend);

    PartCounts taken_out;
    PartCounts harmless;
    /// Those that take something off the air.
    std::vector<Alike> groups;

private:
    void add(std::size_t& all, std::size_t& quiet, const Alike& parts);
    void add_inputs(const Module& module);

    const std::vector<PlacedService>& before_;
};

} // namespace zarven::tool

#endif
