// How many further modules of one kind are missing. The engine is not monotonous: with more room it may place
// less, and may break a limit. So the number is looked for upwards, one by one, from the least that the bound
// allows.

#ifndef RECALCULO_SIZING_ADDING_H
#define RECALCULO_SIZING_ADDING_H

#include <cstddef>

#include "headend/headend.h"
#include "placement/result.h"
#include "placement/sizing/runner.h"
#include "placement/sizing/sizing.h"
#include "placement/sizing/wanted.h"

namespace zarven::tool {

/// Looks for the smallest number of further modules.
class Adding {
public:
    /// All must outlive this; `wanted` knows the same kind.
    Adding(const Headend& headend, const Module& kind, const Wanted& wanted, const SizingOptions& options);

    /// `now` is the result of the head-end as it is.
    Addition addition(Runner& runner, const Result& now) &&;

private:
    void find_least();
    void find_shortages();
    void search(Runner& runner);
    bool take(std::size_t number, const SizingTrial& trial);

    const Headend& headend_;
    const Wanted& wanted_;
    std::size_t most_;
    unsigned jobs_;
    std::size_t least_missing_ = 0;
    Addition addition_;
};

} // namespace zarven::tool

#endif
