// What keeps services out, by kind: a dozen kinds for some thousands of services, so that a report can begin
// with how many each keeps out. Which it is for a service, reason.cpp decides.

#ifndef RECALCULO_CAUSE_H
#define RECALCULO_CAUSE_H

#include <cstddef>
#include <string>
#include <vector>

namespace zarven::tool {

struct Result;

enum class Cause {
    /// Placed, or not told.
    none,
    /// No module could take it if it were empty.
    impossible,
    no_input,
    /// The engine tunes no input for such a service.
    stream_not_chosen,
    /// No output, or each carries as many services as it may.
    places,
    bitrate,
    pids,
    transcoders,
    /// An input is free, and its module has room.
    unused_input,
    /// A module receives the stream and has room.
    unused_room,
    /// The engine has placed it and left it out.
    contradictory,
    lost,
};

/// The strategies did not come by; nothing else is in the way.
constexpr bool is_unused(Cause cause) {
    return cause == Cause::unused_input || cause == Cause::unused_room;
}

/// A cause, and what it keeps out.
struct CauseCount {
    Cause cause = Cause::none;
    std::size_t services = 0;
    /// Theirs.
    std::size_t streams = 0;
    std::string sentence;
};

/// The causes of a result that tells reasons, that of the most services first.
std::vector<CauseCount> causes_of(const Result& result);

/// The sentence of the cause says of services of several streams all that can be said of each.
bool is_told_once(const std::vector<CauseCount>& causes, Cause cause);

} // namespace zarven::tool

#endif
