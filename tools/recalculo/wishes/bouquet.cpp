// Bouquets of receivers, `userbouquet.NAME.tv`: ten fields with colons between them, hexadecimal from the
// third on, and perhaps a name.
//
//     #NAME Favourites
//     #SERVICE 1:64:1:0:0:0:0:0:0:0:
//     #DESCRIPTION Sport
//     #SERVICE 1:0:19:283D:3FB:1:C00000:0:0:0:
//     #SERVICE: 4097:0:1:0:0:0:0:0:0:0:http%3a//host/stream:Camera
//
// The second field says what an entry is: 0 a service, 64 a heading, others what only a receiver knows. A
// name is seldom there: it is the one that the receiver knows by the ids.

#include <algorithm>

#include "base/utf8.h"
#include "lineup/lamedb.h"
#include "lineup/text_lines.h"
#include "wishes/wish_list.h"

#include <fmt/format.h>

namespace zarven::tool {

namespace {

/// The text behind a key, which older files end with a colon; nothing where the line has another key.
std::optional<std::string> value_of(std::string_view line, std::string_view key) {
    if (!starts_with(line, key))
        return {};
    line.remove_prefix(key.size());
    if (!line.empty() && line.front() == ':')
        line.remove_prefix(1);
    else if (!line.empty() && line.front() != ' ' && line.front() != '\t')
        return {};
    return std::string(trimmed(line));
}

constexpr std::string_view service_key = "#SERVICE";
constexpr std::string_view description_key = "#DESCRIPTION";
constexpr std::string_view name_key = "#NAME";

constexpr const char* expected_service = "1:0:TYPE:SID:TSID:ONID:NAMESPACE:0:0:0:";

class Bouquet {
public:
    Bouquet(const std::string& file, std::string_view text) {
        list_.file = file;
        list_.format = WishFormat::bouquet;
        for (const Line& line : lines_of(text))
            try {
                read(line.number, trimmed(line.text));
            } catch (const BadLine& reason) {
                described_ = Described::nothing;
                list_.unreadable.push_back(
                    fmt::format("{}: {}", line_of_file(file, line.number), reason.what()));
            }
    }

    WishList list() && { return std::move(list_); }

private:
    /// To what a description belongs.
    enum class Described { nothing, heading, wish };

    void read(std::size_t number, std::string_view line) {
        if (const auto service = value_of(line, service_key))
            return read_entry(number, *service);
        if (const auto description = value_of(line, description_key))
            return describe(*description);
        if (const auto name = value_of(line, name_key))
            group_ = *name;
        else if (!is_blank_or_remark(line))
            reject("line", line, "#SERVICE, #DESCRIPTION or #NAME");
    }

    void read_entry(std::size_t number, const std::string& text) {
        described_ = Described::nothing;
        const std::vector<std::string_view> fields = split(text, ":");
        const std::size_t of_reference = 10;
        // Numbered by receivers like the others, whatever can be read of it.
        const bool is_heading = fields.size() > 1 && fields[1] == "64";
        list_.places += is_heading ? 0 : 1;
        if (fields.size() < of_reference)
            reject(service_key, text, expected_service);
        // A path and a name may follow, each with a colon before it.
        std::string name;
        for (std::size_t field = of_reference; field < fields.size(); ++field)
            name = trimmed(fields[field]);
        if (fields[0] != "1" || text.find("%3a//") != text.npos || text.find("%3A//") != text.npos)
            return skip("streams from the internet (IPTV)");
        if (is_heading) {
            described_ = Described::heading;
            group_ = name;
            return;
        }
        if (fields[1] == "7")
            return skip("references to other bouquets");
        if (fields[1] != "0")
            return skip("entries that are neither services nor headings");
        Wish wish;
        wish.line = number;
        wish.place = list_.places;
        wish.group = group_;
        wish.name = name;
        WishedIds ids;
        ids.sid = read_id("SID", fields[3], 16);
        ids.tsid = read_id("TSID", fields[4], 16);
        ids.onid = read_id("ONID", fields[5], 16);
        const std::uint32_t name_space = read_namespace("NAMESPACE", fields[6]);
        const std::string source = source_of_namespace(name_space);
        if (name_space != 0 && source.front() == 'S')
            ids.satellite = source.substr(1);
        wish.ids = ids;
        described_ = Described::wish;
        list_.wishes.push_back(std::move(wish));
    }

    void describe(const std::string& text) {
        if (described_ == Described::heading)
            group_ = text;
        else if (described_ == Described::wish)
            list_.wishes.back().name = text;
        described_ = Described::nothing;
    }

    void skip(const char* kind) { ++list_.skipped[kind]; }

    WishList list_;
    std::string group_;
    Described described_ = Described::nothing;
};

} // namespace

bool is_bouquet(std::string_view text) {
    for (const Line& line : lines_of(text))
        if (value_of(trimmed(line.text), service_key) || value_of(trimmed(line.text), name_key))
            return true;
    return false;
}

WishList read_bouquet(const std::string& file, std::string_view text) {
    return Bouquet(file, text).list();
}

} // namespace zarven::tool
