// A run of the engine before someone who waits. Every command that makes one run at a time makes it this way.

#ifndef RECALCULO_COMMANDS_WATCHED_RUN_H
#define RECALCULO_COMMANDS_WATCHED_RUN_H

#include <string>

#include "placement/running/engine_run.h"

namespace zarven::tool {

/// Runs the engine, with a line of progress on a terminal. `file` is for messages, `log` where the engine's
/// log goes; empty for nowhere.
void run_watched(EngineRun& run, const std::string& file, const std::string& log = "");

} // namespace zarven::tool

#endif
