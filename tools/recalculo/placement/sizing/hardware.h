// What modules are sold with. A limit is raised to such a value where one will do, because no other can be
// bought. docs/tool.md tells where they come from.

#ifndef RECALCULO_SIZING_HARDWARE_H
#define RECALCULO_SIZING_HARDWARE_H

#include <algorithm>
#include <cstdint>
#include <vector>

#include "placement/sizing/sizing.h"

namespace zarven::tool {

/// All ascending. Bitrates in kbit/s: 8 MHz of DVB-T and, with 64 and 256 QAM, of DVB-C; DVB-S2; ASI and
/// networks.
inline const std::vector<std::uint32_t>& hardware_values(LimitKind kind) {
    static const std::vector<std::uint32_t> inputs = {1, 2, 4, 6, 8, 12, 16, 24, 32};
    static const std::vector<std::uint32_t> bitrates = {24000, 31000, 38000,  50000,
                                                        64000, 80000, 100000, 213000};
    static const std::vector<std::uint32_t> pids = {4, 8, 12, 16, 24, 32, 40, 48, 64, 96, 128, 256};
    static const std::vector<std::uint32_t> transcoders = {1, 2, 4, 6, 8, 12, 16, 24, 32};
    static const std::vector<std::uint32_t> none;
    switch (kind) {
    case LimitKind::pids:
        return pids;
    case LimitKind::bitrate:
        return bitrates;
    case LimitKind::inputs:
        return inputs;
    case LimitKind::sd_transcoders:
    case LimitKind::hd_transcoders:
        return transcoders;
    case LimitKind::one_more_output:
        break;
    }
    return none;
}

inline bool is_hardware_value(LimitKind kind, std::uint32_t value) {
    const auto& values = hardware_values(kind);
    return kind == LimitKind::one_more_output || std::binary_search(values.begin(), values.end(), value);
}

} // namespace zarven::tool

#endif
