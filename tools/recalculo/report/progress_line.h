// One line on a terminal that tells how far the engine is, drawn over itself and erased in the end. A run
// that is over in half a second shows none.

#ifndef RECALCULO_PROGRESS_LINE_H
#define RECALCULO_PROGRESS_LINE_H

#include <chrono>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "placement/host.h"
#include "placement/progress.h"
#include "report/terminal.h"

namespace zarven::tool {

class ProgressLine : public host::Watcher {
public:
    using Clock = std::chrono::steady_clock;

    /// What the line needs of the world.
    struct Means {
        TextStyle style;
        std::function<std::size_t()> services_left;
        std::function<void(std::string_view)> write;
        std::function<Clock::time_point()> now;
    };

    explicit ProgressLine(Means means);
    /// Erases the line.
    ~ProgressLine() override;
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;

    void hear(std::string_view line) override;
    void wait() override;

private:
    std::string text(Clock::time_point now) const;

    Means means_;
    Progress progress_;
    Clock::time_point start_;
    Clock::time_point due_;
    /// Empty as long as nothing is.
    std::string drawn_;
};

/// A line on standard error.
ProgressLine::Means means_of_standard_error(const Surroundings& surroundings,
                                            std::function<std::size_t()> services_left);

} // namespace zarven::tool

#endif
