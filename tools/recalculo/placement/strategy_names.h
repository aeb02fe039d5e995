// The four strategies of the engine by name, in the order in which the driver tries them: the engine's own
// table, which calls them options.

#ifndef RECALCULO_STRATEGY_NAMES_H
#define RECALCULO_STRATEGY_NAMES_H

#include <array>
#include <cstddef>
#include <string_view>

#include "Reglas.h"

namespace zarven::tool {

inline constexpr std::size_t strategy_count = reglas::ESTRATEGIAS.size();

inline constexpr std::array<std::string_view, strategy_count> strategy_names = [] {
    std::array<std::string_view, strategy_count> names;
    for (std::size_t index = 0; index < strategy_count; ++index)
        names[index] = reglas::ESTRATEGIAS[index].nombre;
    return names;
}();

} // namespace zarven::tool

#endif
