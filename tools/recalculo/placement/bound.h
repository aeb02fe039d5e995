// How many services any arrangement could place that keeps the limits of the head-end, or how much what it
// places could be worth: a number that is proven and cheap, and that no search will exceed. docs/tool.md
// gives the proof.

#ifndef RECALCULO_BOUND_H
#define RECALCULO_BOUND_H

#include <cstdint>
#include <string>
#include <vector>

#include "placement/result.h"
#include "placement/running/capacity.h"

namespace zarven::tool {

struct BoundLimit {
    std::uint64_t capacity = 0;
    std::uint64_t wanted = 0;
    std::size_t allows = 0;
};

struct Bound {
    /// Clones are no services of their own.
    std::size_t loaded = 0;
    /// Each with its reason; even an empty module could not take it.
    std::vector<ServiceResult> impossible;
    BoundLimit inputs;
    BoundLimit bitrate;
    BoundLimit pids;
    BoundLimit transcoders;
    BoundLimit places;
    /// The bound itself.
    std::size_t most = 0;
};

/// A kind of limit, by its place in a bound, and what it is called.
struct BoundKind {
    BoundLimit Bound::*member;
    const char* key;
    const char* heading;
    const char* one;
    const char* several;
};

inline constexpr BoundKind bound_kinds[] = {
    {&Bound::inputs, "inputs", "Inputs", "input", "inputs"},
    {&Bound::bitrate, "bitrate", "Bitrate of outputs, kbit/s", "kbit/s of outputs", "kbit/s of outputs"},
    {&Bound::pids, "pids", "PIDs", "PID", "PIDs"},
    {&Bound::transcoders, "transcoders", "Transcoders", "transcoder", "transcoders"},
    {&Bound::places, "places", "Places on outputs", "place on outputs", "places on outputs"}};

const BoundKind& kind_of(BoundLimit Bound::*member);

/// The bound of each limit alone, and the least of them: never under the bound, which takes much longer to
/// find.
Bound single_limits_of(const EngineRun& loaded, const std::vector<ModuleCapacity>& modules);

/// Bounds what a loaded engine could place; `modules` may be others than its own.
Bound bound_of(const EngineRun& loaded, const std::vector<ModuleCapacity>& modules);

/// Bounds what could be placed by what it is worth, with a value for each of the loaded services; all that
/// limits allow is then told in values. Services of value 0 are passed over. Those that are of one of several
/// streams count as if they needed no input; the list is empty, or has one for each.
Bound bound_of(const EngineRun& loaded, const std::vector<ModuleCapacity>& modules,
               const std::vector<std::uint64_t>& values, const std::vector<bool>& of_any_stream = {});

/// Bounds how many services a head-end could place, whatever is asked for of its one-of groups, each of which
/// counts once. Throws `Failure`.
Bound bound_of(const Headend& headend, const std::string& file);

} // namespace zarven::tool

#endif
