#include "base/counted.h"

#include <fmt/format.h>

namespace zarven::tool {

std::string counted(std::uint64_t number, std::string_view thing) {
    const bool takes_es = thing.size() > 1 && thing.substr(thing.size() - 2) == "sh";
    return fmt::format("{} {}{}", number, thing, number == 1 ? "" : takes_es ? "es" : "s");
}

} // namespace zarven::tool
