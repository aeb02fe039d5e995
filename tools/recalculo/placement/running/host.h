// The engine's surroundings. The library calls syslog and sleep through the dynamic linker; this program
// defines both, so that nothing reaches the system's log and a planner does not wait. A run logs from
// thousands to millions of lines.

#ifndef RECALCULO_HOST_H
#define RECALCULO_HOST_H

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "base/interruption.h"
#include "base/streams.h"

namespace zarven::tool::host {

/// Whether the engine's pauses are kept; at first they are passed over.
void keep_pauses(bool keep);

/// What a run of the engine may take.
struct RunLimits {
    /// Without the pauses that are kept. None: as long as it takes.
    std::optional<std::chrono::milliseconds> time;
    /// Of the log. None: as much as there is.
    std::optional<std::uint64_t> log_bytes;
};

/// For all runs that begin from now on. At first there are no limits.
void limit_runs(const RunLimits& limits);

/// Thrown through the engine, which may be left so: what was loaded into it stays whole.
struct RunStopped : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// For the life of the object what the engine calls in this thread throws `RunStopped` when a limit is
/// exceeded. One at a time in each thread.
class Bounded {
public:
    /// `look` is called now and then, and may throw `RunStopped`, too.
    explicit Bounded(const std::function<void()>& look);
    ~Bounded();
    Bounded(const Bounded&) = delete;
    Bounded& operator=(const Bounded&) = delete;
};

/// For the life of the object all runs of this thread together have the time of one. One at a time in each
/// thread.
class TimeOfOneRun {
public:
    TimeOfOneRun();
    ~TimeOfOneRun();
    TimeOfOneRun(const TimeOfOneRun&) = delete;
    TimeOfOneRun& operator=(const TimeOfOneRun&) = delete;

    bool is_over() const;
};

/// Somebody who follows a run from the calls that the engine makes anyway.
class Watcher {
public:
    virtual ~Watcher() = default;
    /// A line that the engine logs; where it has values in it, its format.
    virtual void hear(std::string_view line) = 0;
    /// Time goes by in a kept pause; called some times a second.
    virtual void wait() = 0;
};

/// For the life of the object the watcher is told; null for none. One at a time.
class Watching {
public:
    explicit Watching(Watcher* who);
    ~Watching();
    Watching(const Watching&) = delete;
    Watching& operator=(const Watching&) = delete;
};

/// Where the engine's log goes for the life of the object: each line after its level and a blank. One at a
/// time.
class Log {
public:
    /// A file, which is emptied, or standard error for "-". With an empty path there is no log, and the
    /// engine is told so by the log mask, which saves it the work. Throws `Failure`.
    explicit Log(const std::string& path);
    ~Log();
    Log(const Log&) = delete;
    Log& operator=(const Log&) = delete;

    /// Makes sure that all lines have arrived. Up to here an interruption waits until none is cut off.
    /// Throws `Failure`.
    void finish();

private:
    std::string path_;
    /// Before the file, which is closed first.
    std::optional<interruption::Deferred> deferred_;
    File opened_;
    int previous_mask_;
};

} // namespace zarven::tool::host

#endif
