// What the tests of a module's limits came to in a rehearsal: which other values of a limit give the same
// run.

#ifndef RECALCULO_REHEARSAL_LIMIT_TESTS_H
#define RECALCULO_REHEARSAL_LIMIT_TESTS_H

#include <cstdint>
#include <limits>
#include <vector>

namespace zarven::tool {

/// What the tests of one limit came to in a run. When none failed, every value from `enough` on gives the
/// same run. Of bitrates: every value from that of the run up to `next` gives the same run.
struct LimitTests {
    std::uint64_t enough = 0;
    std::uint64_t next = std::numeric_limits<std::uint64_t>::max();
    bool any_failed = false;

    void passed_at(std::uint64_t least) { enough = enough < least ? least : enough; }
    void failed() { any_failed = true; }
    void failed_under(std::uint64_t least) {
        any_failed = true;
        next = next < least ? next : least;
    }
    bool same_with(std::uint64_t value) const { return !any_failed && value >= enough; }
};

struct ModuleTests {
    /// An input beyond the last that is ever tuned changes nothing, as long as there is one.
    LimitTests inputs;
    LimitTests pids;
    LimitTests sd_transcoders;
    LimitTests hd_transcoders;
    /// By output.
    std::vector<LimitTests> bitrate;
};

} // namespace zarven::tool

#endif
