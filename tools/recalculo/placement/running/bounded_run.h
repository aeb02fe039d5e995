// A run of the engine that ends when it takes more than it may: an input of ninety services can keep it busy
// for hours. Whoever runs the engine does it through this.

#ifndef RECALCULO_BOUNDED_RUN_H
#define RECALCULO_BOUNDED_RUN_H

#include <functional>
#include <string>

#include "base/failure.h"
#include "placement/running/engine_run.h"

namespace zarven::tool {

/// The engine did not end within the limits. To whoever tries many head-ends such a run is only one of them.
struct EngineStopped : Failure {
    explicit EngineStopped(const std::string& message) : Failure(message, ExitCode::engine_did_not_run) {}
};

/// Lets `go` run the engine within the limits of the host. Throws `EngineStopped` if it
/// does not end within them, and says which services it was busy with; `file` is for that. What is loaded
/// stays whole.
void run_bounded(const EngineRun& run, const std::string& file, const std::function<void()>& go);

} // namespace zarven::tool

#endif
