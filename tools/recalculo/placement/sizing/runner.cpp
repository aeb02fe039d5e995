#include "placement/sizing/runner.h"

#include <algorithm>

#include "base/workers.h"
#include "placement/engine_run.h"

namespace zarven::tool {

Result Runner::run(const Headend& headend, Reasons reasons) {
    EngineRun run = load_engine(headend, file_);
    run_engine(run, file_);
    Result result = result_of(run, headend.name, reasons);
    const std::lock_guard<std::mutex> one_at_a_time(mutex_);
    ++done_;
    planned_ = std::max(planned_, done_);
    options_.progress(done_, planned_);
    return result;
}

void Runner::in_parallel(std::size_t parts, const std::function<void(std::size_t)>& part) const {
    tool::in_parallel(parts, options_.jobs, part);
}

} // namespace zarven::tool
