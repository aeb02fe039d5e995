// The engine's surroundings. The library calls syslog and sleep through the dynamic linker; this program
// defines both, so that nothing reaches the system's log and a planner does not wait. A run logs from
// thousands to millions of lines.

#ifndef RECALCULO_HOST_H
#define RECALCULO_HOST_H

#include <string>

#include "base/streams.h"

namespace zarven::tool::host {

/// Whether the engine's pauses are kept; at first they are passed over.
void keep_pauses(bool keep);

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

    /// Makes sure that all lines have arrived. Throws `Failure`.
    void finish();

private:
    std::string path_;
    File opened_;
    int previous_mask_;
};

} // namespace zarven::tool::host

#endif
