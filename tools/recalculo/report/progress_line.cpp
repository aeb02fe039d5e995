// Each drawing is one write, so that a signal finds the line whole or not there.

#include "report/progress_line.h"

#include <utility>

#include <fmt/format.h>
#include <unistd.h>

#include "base/counted.h"
#include "base/interruption.h"
#include "base/utf8.h"

namespace zarven::tool {

namespace {

constexpr std::chrono::milliseconds patience(500);
constexpr std::chrono::milliseconds interval(100);
constexpr std::string_view erase = "\r\x1B[K";

void write_to_standard_error(std::string_view text) {
    // A line that nobody sees is no reason to stop.
    [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, text.data(), text.size());
}

} // namespace

DrawnLine::DrawnLine(Means means) : means_(std::move(means)), start_(means_.now()), due_(start_ + patience) {}

DrawnLine::~DrawnLine() {
    if (drawn_.empty())
        return;
    means_.write(erase);
    interruption::line_is_drawn(false);
}

void DrawnLine::draw(const std::function<std::vector<std::string>()>& parts) {
    const Clock::time_point now = means_.now();
    if (now < due_)
        return;
    due_ = now + interval;
    std::vector<std::string> all = parts();
    all.push_back(
        fmt::format("{} s", std::chrono::duration_cast<std::chrono::seconds>(now - start_).count()));
    std::string line = joined(all, means_.style);
    // A terminal may go to the next line once the last column is taken.
    if (means_.style.width != 0)
        line = shortened(line, means_.style.width - 1, symbols_of(means_.style).ellipsis);
    if (line == drawn_)
        return;
    interruption::line_is_drawn(true);
    means_.write("\r" + line + "\x1B[K");
    drawn_ = std::move(line);
}

DrawnLine::Means means_of_standard_error(const Surroundings& surroundings) {
    return {style_for(surroundings, ColourChoice::never), write_to_standard_error,
            [] { return DrawnLine::Clock::now(); }};
}

LineOnStandardError::LineOnStandardError() {
    const Surroundings surroundings = surroundings_of(STDERR_FILENO);
    if (can_redraw(surroundings))
        line_.emplace(means_of_standard_error(surroundings));
}

ProgressLine::ProgressLine(DrawnLine::Means means, std::function<std::size_t()> services_left)
    : line_(std::move(means)), services_left_(std::move(services_left)) {}

void ProgressLine::hear(std::string_view line) {
    take_note(progress_, line);
    wait();
}

void ProgressLine::wait() {
    line_.draw([this] { return parts(); });
}

std::vector<std::string> ProgressLine::parts() const {
    std::vector<std::string> parts = {to_string(progress_)};
    if (is_placing(progress_))
        parts.push_back(counted(services_left_(), "service") + " left");
    return parts;
}

} // namespace zarven::tool
