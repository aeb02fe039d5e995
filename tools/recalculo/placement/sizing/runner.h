// The runs of the engine that a sizing makes: of changed head-ends, from several threads, and counted for
// whoever waits.

#ifndef RECALCULO_SIZING_RUNNER_H
#define RECALCULO_SIZING_RUNNER_H

#include <cstddef>
#include <functional>
#include <mutex>
#include <string>

#include "headend/headend.h"
#include "placement/result.h"
#include "placement/sizing.h"

namespace zarven::tool {

class Runner {
public:
    /// Both must outlive this.
    Runner(const std::string& file, const SizingOptions& options) : file_(file), options_(options) {}

    Result run(const Headend& headend, Reasons reasons = Reasons::omitted);

    /// Before a number of runs that is known; of others only the outcome tells how many they are.
    void plan(std::size_t runs) { planned_ = done_ + runs; }

    void in_parallel(std::size_t parts, const std::function<void(std::size_t)>& part) const;

private:
    const std::string& file_;
    const SizingOptions& options_;
    std::mutex mutex_;
    std::size_t done_ = 0;
    std::size_t planned_ = 0;
};

} // namespace zarven::tool

#endif
