// Which limit to raise, found by running the engine on changed head-ends; told at the head of a result.

#ifndef RECALCULO_ADVICE_H
#define RECALCULO_ADVICE_H

#include <cstddef>
#include <vector>

#include "placement/raise.h"

namespace zarven::tool {

struct Advice {
    /// Those of all modules that could be raised, and those of them that were. Both 0 where none was looked
    /// for.
    std::size_t limits = 0;
    std::size_t limits_tried = 0;
    /// For each kind of limit that helps, the module on which it helps most; the best first.
    std::vector<Raise> raises;
};

} // namespace zarven::tool

#endif
