// The placement as an integer program, written for a solver: the most services that the limits of a head-end
// allow, however they are found. Small head-ends have hundreds of variables, medium ones thousands.

#ifndef RECALCULO_BENCH_PLACEMENT_PROGRAM_H
#define RECALCULO_BENCH_PLACEMENT_PROGRAM_H

#include <string>

#include "headend/headend.h"

namespace zarven::tool {

/// In the LP format of CPLEX, which CBC reads; its objective is the sum of the values of what is placed.
std::string placement_program(const Headend& headend);

} // namespace zarven::tool

#endif
