#include "report/wish_text.h"

#include <fmt/format.h>

namespace zarven::tool {

std::string wish_text(const MissingWish& missing) {
    return fmt::format("{}: line {}: no service has the name or LCN \"{}\"", missing.file,
                       missing.line.number, missing.line.text);
}

} // namespace zarven::tool
