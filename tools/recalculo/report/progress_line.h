// One line on a terminal that tells how far the work is, drawn over itself and erased in the end. Work that
// is done in half a second shows none.

#ifndef RECALCULO_PROGRESS_LINE_H
#define RECALCULO_PROGRESS_LINE_H

#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "placement/running/host.h"
#include "placement/running/progress.h"
#include "report/terminal.h"

namespace zarven::tool {

/// Draws the line, not before half a second has gone by and ten times a second at most.
class DrawnLine {
public:
    using Clock = std::chrono::steady_clock;

    /// What the line needs of the world.
    struct Means {
        TextStyle style;
        std::function<void(std::string_view)> write;
        std::function<Clock::time_point()> now;
    };

    explicit DrawnLine(Means means);
    /// Erases the line.
    ~DrawnLine();
    DrawnLine(const DrawnLine&) = delete;
    DrawnLine& operator=(const DrawnLine&) = delete;

    /// If it is time for it, draws the parts and the seconds gone by.
    void draw(const std::function<std::vector<std::string>()>& parts);

private:
    Means means_;
    Clock::time_point start_;
    Clock::time_point due_;
    /// Empty as long as nothing is.
    std::string drawn_;
};

/// A line on standard error.
DrawnLine::Means means_of_standard_error(const Surroundings& surroundings);

/// Such a line where standard error can be redrawn, and none elsewhere.
class LineOnStandardError {
public:
    LineOnStandardError();

    void draw(const std::function<std::vector<std::string>()>& parts) {
        if (line_)
            line_->draw(parts);
    }

private:
    std::optional<DrawnLine> line_;
};

/// Tells of one run of the engine.
class ProgressLine : public host::Watcher {
public:
    ProgressLine(DrawnLine::Means means, std::function<std::size_t()> services_left);

    void hear(std::string_view line) override;
    void wait() override;

private:
    std::vector<std::string> parts() const;

    DrawnLine line_;
    std::function<std::size_t()> services_left_;
    Progress progress_;
};

} // namespace zarven::tool

#endif
