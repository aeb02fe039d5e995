// Strategies with one of everything that a report shows, for both reports.

#ifndef RECALCULO_STRATEGIES_FIXTURE_H
#define RECALCULO_STRATEGIES_FIXTURE_H

#include "placement/strategies.h"

namespace zarven::tool {

inline Strategies strategies_with_everything() {
    Strategies strategies;
    strategies.list = {{{"MAX", 7, 3, 0, 4, 3, 2, 4, 5, Verdict::kept, 0},
                        {"MAX MIN", 6, 4, 0, 4, 0, 0, 5, 5, Verdict::kept, 0},
                        {"MIN", 8, 2, 0, 2, 0, 0, 5, 5, Verdict::kept, 0},
                        {"MIN MAX", 5, 5, 0, 5, 1, 1, 3, 123, Verdict::kept, 0}}};
    judge(strategies.list);
    Contested missed;
    missed.service.stream = {1, 1001};
    missed.service.lcn = 5;
    missed.service.name = "海景 Música\x1B";
    missed.is_placed_by = {true, false, false, true};
    Contested won;
    won.service.stream = {65535, 65535};
    won.service.lcn = 65535;
    won.service.name = "Dos";
    won.is_placed_by = {false, true, true, false};
    strategies.contested = {missed, won};
    return strategies;
}

} // namespace zarven::tool

#endif
