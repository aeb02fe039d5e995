// What a function complains of, for comparing whole messages.

#ifndef RECALCULO_FAILURE_MESSAGE_H
#define RECALCULO_FAILURE_MESSAGE_H

#include <string>

#include "base/failure.h"

namespace zarven::tool {

/// The message of the `Failure` that the function throws, or a text that no test expects.
template <class Function> std::string failure_message(Function function) {
    try {
        function();
    } catch (const Failure& failure) {
        return failure.what();
    }
    return "(no failure)";
}

} // namespace zarven::tool

#endif
