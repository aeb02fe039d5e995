#include "base/counted.h"

#include <fmt/format.h>

namespace zarven::tool {

std::string counted(std::uint64_t number, std::string_view thing) {
    return fmt::format("{} {}{}", number, thing, number == 1 ? "" : "s");
}

} // namespace zarven::tool
