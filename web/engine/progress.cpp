#include "progress.h"

#include <algorithm>

/// In library.js.
extern "C" void recalculo_tell_progress(const char* text, int size);

namespace zarven::web {

tool::DrawnLine::Means means_of_page() {
    const auto tell = [](std::string_view drawn) {
        // Without what moves the cursor of a terminal.
        if (!drawn.empty() && drawn.front() == '\r')
            drawn.remove_prefix(1);
        drawn = drawn.substr(0, drawn.find('\x1B'));
        recalculo_tell_progress(drawn.data(), static_cast<int>(drawn.size()));
    };
    // The clock is JavaScript's and far away; of a run it is asked at each line of the log.
    const auto now = [calls = 0U, last = tool::DrawnLine::Clock::now()]() mutable {
        const unsigned calls_for_each_look = 16;
        if (++calls % calls_for_each_look == 0)
            last = tool::DrawnLine::Clock::now();
        return last;
    };
    return {tool::TextStyle(), tell, now};
}

} // namespace zarven::web
