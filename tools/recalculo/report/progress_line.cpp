// Each drawing is one write, so that a signal finds the line whole or not there.

#include "report/progress_line.h"

#include <utility>

#include <fmt/format.h>
#include <unistd.h>

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

ProgressLine::ProgressLine(Means means)
    : means_(std::move(means)), start_(means_.now()), due_(start_ + patience) {}

ProgressLine::~ProgressLine() {
    if (drawn_.empty())
        return;
    means_.write(erase);
    interruption::line_is_drawn(false);
}

void ProgressLine::hear(std::string_view line) {
    take_note(progress_, line);
    wait();
}

void ProgressLine::wait() {
    const Clock::time_point now = means_.now();
    if (now < due_)
        return;
    due_ = now + interval;
    std::string line = text(now);
    if (line == drawn_)
        return;
    interruption::line_is_drawn(true);
    means_.write("\r" + line + "\x1B[K");
    drawn_ = std::move(line);
}

std::string ProgressLine::text(Clock::time_point now) const {
    const Symbols& symbols = symbols_of(means_.style);
    std::string words = to_string(progress_);
    if (is_placing(progress_)) {
        const std::size_t left = means_.services_left();
        words += fmt::format(" {} {} {} left", symbols.dot, left, left == 1 ? "service" : "services");
    }
    words += fmt::format(" {} {} s", symbols.dot,
                         std::chrono::duration_cast<std::chrono::seconds>(now - start_).count());
    // A terminal may go to the next line once the last column is taken.
    return means_.style.width == 0 ? words : shortened(words, means_.style.width - 1, symbols.ellipsis);
}

ProgressLine::Means means_of_standard_error(const Surroundings& surroundings,
                                            std::function<std::size_t()> services_left) {
    return {style_for(surroundings, ColourChoice::never), std::move(services_left), write_to_standard_error,
            [] { return ProgressLine::Clock::now(); }};
}

} // namespace zarven::tool
