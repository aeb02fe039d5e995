#include "report/raise_text.h"

#include <fmt/format.h>

namespace zarven::tool {

static const char* name_of(LimitKind kind) {
    switch (kind) {
    case LimitKind::pids:
        return "PID budget";
    case LimitKind::bitrate:
        return "bitrate of output";
    case LimitKind::inputs:
        return "number of inputs";
    case LimitKind::sd_transcoders:
        return "SD transcoders";
    case LimitKind::hd_transcoders:
        return "HD transcoders";
    case LimitKind::one_more_output:
        break;
    }
    return "one more output";
}

std::string change_of(const Raise& raise) {
    if (raise.kind == LimitKind::one_more_output)
        return fmt::format("one more output of {} kbit/s", raise.to);
    const std::string name = name_of(raise.kind);
    return fmt::format(
        "{} from {} to {}{}", raise.output == 0 ? name : fmt::format("{} {}", name, raise.output), raise.from,
        raise.to, raise.enough == raise.to ? "" : fmt::format(" ({} is enough)", raise.enough));
}

} // namespace zarven::tool
