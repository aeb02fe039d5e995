#include "report/page/live_page.h"

#include <string_view>

#include "base/failure.h"

namespace zarven::tool {

/// Where the page takes it from. What stands there is no script, so its security policy need not know it.
static constexpr std::string_view begin_of_place = R"(<script type="application/json" id="plan">)";
static constexpr std::string_view end_of_place = "</script>";

/// Nothing in it ends the place it stands in: "<" stands in texts only, and may be written so there.
static std::string enclosed(const std::string& json) {
    std::string text;
    for (const char character : json)
        if (character == '<')
            text += "\\u003C";
        else
            text += character;
    return text;
}

std::string live_page(const std::string& file, const std::string& page, const std::string& headend) {
    const std::size_t found = page.find(std::string(begin_of_place) + std::string(end_of_place));
    if (found == std::string::npos)
        throw Failure(file + ": found no place for a head-end, expected the page that scripts/web.sh builds");
    const std::size_t place = found + begin_of_place.size();
    return page.substr(0, place) + enclosed(headend) + page.substr(place);
}

} // namespace zarven::tool
