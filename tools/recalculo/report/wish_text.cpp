#include "report/wish_text.h"

#include <fmt/format.h>

#include "lineup/text_lines.h"

namespace zarven::tool {

std::string wish_text(const MissingWish& missing) {
    return fmt::format("{}: no service has the name or LCN \"{}\"",
                       line_of_file(missing.file, missing.line.number), missing.line.text);
}

} // namespace zarven::tool
