// The first move that helps is taken, and the search goes on from there: with hundreds of steps the best of
// all moves would use up the orders that may be tried on one or two moves.

#include "placement/change/order_search.h"

#include <algorithm>

namespace zarven::tool {

OrderCost cost_of(const std::vector<std::size_t>& off_air) {
    OrderCost cost{0, 0};
    for (const std::size_t off : off_air) {
        cost.first = std::max(cost.first, off);
        cost.second += off;
    }
    return cost;
}

std::vector<std::size_t> improved_order(std::vector<std::size_t> order, const CostOfOrder& cost_of_order,
                                        std::size_t most_tried, std::size_t least) {
    OrderCost cost = cost_of_order(order);
    for (bool helped = true; helped && cost.first > least;) {
        helped = false;
        for (std::size_t from = 0; from < order.size(); ++from)
            for (std::size_t to = 0; to < order.size(); ++to) {
                if (most_tried == 0 || cost.first <= least)
                    return order;
                --most_tried;
                std::vector<std::size_t> other = order;
                other.erase(other.begin() + static_cast<std::ptrdiff_t>(from));
                other.insert(other.begin() + static_cast<std::ptrdiff_t>(to), order[from]);
                const OrderCost of_other = cost_of_order(other);
                if (of_other >= cost)
                    continue;
                order = std::move(other);
                cost = of_other;
                helped = true;
            }
    }
    return order;
}

} // namespace zarven::tool
