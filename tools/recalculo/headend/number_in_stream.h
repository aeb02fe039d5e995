// What tells the services of a head-end apart: the stream, and a number that has one meaning there. With the
// LCN it is the engine's key: of two services that have the same, the second is a clone.

#ifndef RECALCULO_NUMBER_IN_STREAM_H
#define RECALCULO_NUMBER_IN_STREAM_H

#include <cstdint>
#include <utility>

#include "headend/headend.h"

namespace zarven::tool {

using NumberInStream = std::pair<Stream, std::uint16_t>;

inline NumberInStream in_stream_of(const Programme& programme, std::uint16_t number) {
    return {stream_of(programme), number};
}

/// The engine's key.
inline NumberInStream lcn_in_stream_of(const Programme& programme) {
    return in_stream_of(programme, programme.lcn);
}

} // namespace zarven::tool

#endif
