// What a lamedb tells of a transponder: where it is received, and what its rate follows from.

#ifndef RECALCULO_LAMEDB_TRANSPONDER_H
#define RECALCULO_LAMEDB_TRANSPONDER_H

#include <cstdint>
#include <string_view>

#include "lineup/transponder.h"

namespace zarven::tool {

struct LamedbTransponder {
    /// As the list tells it.
    std::uint32_t frequency = 0;
    /// H, V, L or R; 0 where there is none.
    char polarization = 0;
    Transponder parameters;
};

/// Reads the parameters, with colons between them, behind the letter of the delivery system: s, c or t.
/// Throws `BadLine`.
LamedbTransponder read_lamedb_transponder(char delivery, std::string_view text);

} // namespace zarven::tool

#endif
