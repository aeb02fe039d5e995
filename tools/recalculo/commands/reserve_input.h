// The option --reserve of a command that reports a placement: what outputs are to keep free.

#ifndef RECALCULO_COMMANDS_RESERVE_INPUT_H
#define RECALCULO_COMMANDS_RESERVE_INPUT_H

#include <optional>
#include <string>

#include "placement/audit/reserve.h"
#include "placement/result.h"

namespace zarven::tool {

struct ReserveInput {
    /// N%; none for the usual one, or for that of a result that is read.
    std::optional<std::string> percent;
};

/// Throws `Failure`.
inline Reserve reserve_of(const ReserveInput& input) {
    return input.percent ? read_reserve(*input.percent) : Reserve();
}

/// Has the outputs keep what the command line says, if it says anything. Throws `Failure`.
inline void apply_reserve(const ReserveInput& input, Result& result) {
    if (input.percent)
        set_reserve(result, read_reserve(*input.percent));
}

} // namespace zarven::tool

#endif
