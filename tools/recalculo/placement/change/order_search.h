// Improves an order of steps, of which each takes things off the air and brings others back, by moving single
// steps. Some hundreds of steps; what an order costs is for the caller to tell.

#ifndef RECALCULO_ORDER_SEARCH_H
#define RECALCULO_ORDER_SEARCH_H

#include <cstddef>
#include <functional>
#include <utility>
#include <vector>

namespace zarven::tool {

/// The greatest number off the air at a time, then the sum over all steps.
using OrderCost = std::pair<std::size_t, std::size_t>;

/// Of how many are off the air after each step.
OrderCost cost_of(const std::vector<std::size_t>& off_air);

using CostOfOrder = std::function<OrderCost(const std::vector<std::size_t>&)>;

/// Moves single steps to other places for as long as that helps, more orders may be tried, and more than
/// `least` are off the air at a time.
std::vector<std::size_t> improved_order(std::vector<std::size_t> order, const CostOfOrder& cost_of_order,
                                        std::size_t most_tried, std::size_t least = 0);

} // namespace zarven::tool

#endif
