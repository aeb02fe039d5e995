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
    return {tool::TextStyle(), tell, [] { return tool::DrawnLine::Clock::now(); }};
}

} // namespace zarven::web
