#include "placement/choosing/choosing.h"

#include <tuple>

#include "placement/choosing/search.h"

namespace zarven::tool {

bool is_better(const ChoiceWorth& one, const ChoiceWorth& other) {
    return std::tie(one.musts, one.value, other.moved, other.withheld) >
           std::tie(other.musts, other.value, one.moved, one.withheld);
}

Choice choose_services(const Headend& headend, const ChoosingLimits& limits, const StaysPut& stays,
                       const ChoosingWatch& watch) {
    return ChoosingSearch(headend, limits, stays, watch).choice();
}

} // namespace zarven::tool
