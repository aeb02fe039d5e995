// A line that is a number may be a name or an LCN: who knows the services decides.

#include <limits>

#include "lineup/text_lines.h"
#include "wishes/wish_list.h"

namespace zarven::tool {

std::vector<NamedLine> named_lines_of(std::string_view text) {
    std::vector<NamedLine> named;
    std::string heading;
    for (const Line& line : lines_of(text)) {
        const std::string_view content = trimmed(line.text);
        if (is_blank_or_remark(content))
            continue;
        if (content.size() > 2 && content.front() == '[' && content.back() == ']')
            heading = trimmed(content.substr(1, content.size() - 2));
        else
            named.push_back({line.number, std::string(content), heading});
    }
    return named;
}

WishList read_wished_names(const std::string& file, std::string_view text) {
    WishList list;
    list.file = file;
    for (const NamedLine& line : named_lines_of(text)) {
        Wish wish;
        wish.line = line.number;
        wish.place = ++list.places;
        wish.name = line.text;
        wish.group = line.heading;
        std::uint32_t lcn = 0;
        if (is_number(line.text, std::numeric_limits<std::uint16_t>::max(), lcn))
            wish.lcn = static_cast<std::uint16_t>(lcn);
        list.wishes.push_back(std::move(wish));
    }
    return list;
}

} // namespace zarven::tool
