#include "commands/live_output.h"

#include <array>
#include <filesystem>
#include <system_error>

#include <fmt/format.h>

#include "base/failure.h"
#include "base/streams.h"
#include "headend/headend_json.h"
#include "report/page/live_page.h"

namespace zarven::tool {

/// Beside this program: as `cmake --install` puts it, and in the folder of the builds.
static std::array<std::string, 2> places_of_page() {
    std::error_code none;
    const std::filesystem::path folder = std::filesystem::read_symlink("/proc/self/exe", none).parent_path();
    return {(folder / "../share/recalculo/recalculo.html").lexically_normal().string(),
            (folder / "../../../web/recalculo.html").lexically_normal().string()};
}

void write_live_page(const std::string& path, const Headend& headend) {
    if (path == standard_stream)
        throw Failure("--live - would write where the report goes; expected a file for --live");
    const auto places = places_of_page();
    for (const std::string& place : places)
        if (std::filesystem::exists(place))
            return write_text(path, live_page(place, read_text(place), write_headend(headend)));
    throw Failure(
        fmt::format("--live: the page of the planner is in neither {} nor {}; scripts/web.sh builds "
                    "it, and Debian's package recalculo-web installs it",
                    places[0], places[1]));
}

} // namespace zarven::tool
