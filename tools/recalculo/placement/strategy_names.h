// The four strategies of the engine by name, in the order in which the driver tries them. The engine calls
// them options and counts them from 1.

#ifndef RECALCULO_STRATEGY_NAMES_H
#define RECALCULO_STRATEGY_NAMES_H

#include <array>
#include <cstddef>
#include <string_view>

namespace zarven::tool {

inline constexpr std::size_t strategy_count = 4;

inline constexpr std::array<std::string_view, strategy_count> strategy_names = {"MAX", "MAX MIN", "MIN",
                                                                                "MIN MAX"};

} // namespace zarven::tool

#endif
