// In which order things that depend on each other are changed one by one: inputs that are tuned to other
// streams, where a service that moves from one to another is off the air from when the last that it leaves is
// changed until the first on which it comes is. Some hundreds of inputs and some thousands of services.

#ifndef RECALCULO_STEP_ORDER_H
#define RECALCULO_STEP_ORDER_H

#include <cstddef>
#include <vector>

namespace zarven::tool {

/// What moves, by the numbers of the steps: off the air while all of `leaves` are done and none of `comes`.
struct StepMove {
    std::vector<std::size_t> leaves;
    std::vector<std::size_t> comes;
};

struct StepOrder {
    std::vector<std::size_t> steps;
    /// No other order has a lower peak, nor with that peak a lower sum over all steps. Where more steps wait
    /// for each other in a circle than can be searched through, it is the best that was found.
    bool is_least = true;
};

/// Each number below `steps` once: first, that at most as few as possible are off the air at a time, then as
/// few as possible in sum over all steps, then in ascending order.
StepOrder step_order(std::size_t steps, const std::vector<StepMove>& moves);

/// How many are off the air after each step of the order.
std::vector<std::size_t> off_air_after(const std::vector<std::size_t>& order,
                                       const std::vector<StepMove>& moves);

} // namespace zarven::tool

#endif
