// Which records of a head-end the engine is asked for. A service that its planner withholds takes its clones
// and its PIDs with it: they are found as the engine finds them, and what is left is loaded as if the others
// did not stand in the file. Some thousands of records, looked at once for each loading.

#ifndef RECALCULO_ASKED_FOR_H
#define RECALCULO_ASKED_FOR_H

#include <vector>

#include "headend/headend.h"

namespace zarven::tool {

/// One for each record of the lists of a head-end.
struct AskedFor {
    std::vector<bool> services;
    std::vector<bool> clones;
    std::vector<bool> pids;
};

AskedFor asked_for(const Headend& headend);

} // namespace zarven::tool

#endif
