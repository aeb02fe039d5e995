// A table knows a service by SID and TSID, and ONID if it is told; else by its name; else by its LCN. Beside
// a name the LCN is the one that is wished for.

#include <algorithm>
#include <array>

#include <fmt/format.h>

#include "base/failure.h"
#include "base/utf8.h"
#include "base/words.h"
#include "headend/headend.h"
#include "lineup/csv.h"
#include "lineup/text_lines.h"
#include "wishes/wish_list.h"

namespace zarven::tool {

namespace {

bool is_heading(const CsvHeading& heading) {
    return heading.has("name") || heading.has("lcn") || heading.has("sid");
}

bool is_one_of(std::string_view word, std::initializer_list<std::string_view> words) {
    return std::find(words.begin(), words.end(), word) != words.end();
}

bool read_must(std::string_view text) {
    const std::string word = in_small_letters(text);
    if (is_one_of(word, {"true", "yes", "1", "x"}))
        return true;
    if (!is_one_of(word, {"false", "no", "0"}))
        reject("must", text, "true, yes, 1 or x, or false, no or 0");
    return false;
}

std::uint16_t read_up_to(std::string_view field, std::string_view text, std::uint32_t least,
                         std::uint32_t most) {
    std::uint32_t number = 0;
    if (!is_number(text, most, number) || number < least)
        reject(field, text, fmt::format("a whole number from {} to {}", least, most));
    return static_cast<std::uint16_t>(number);
}

Wish read_row(const CsvHeading& heading, std::string_view line) {
    const std::vector<std::string> fields = heading.fields_of(line);
    const auto field = [&](std::string_view column) { return heading.field(fields, column); };
    Wish wish;
    if (!field("sid").empty()) {
        wish.ids.emplace();
        if (!field("onid").empty())
            wish.ids->onid = read_id("onid", field("onid"));
        wish.ids->tsid = read_id("tsid", field("tsid"));
        wish.ids->sid = read_id("sid", field("sid"));
    }
    wish.name = field("name");
    if (!field("lcn").empty())
        wish.lcn = read_up_to("lcn", field("lcn"), 1, 65535);
    if (!wish.ids && wish.name.empty() && !wish.lcn)
        reject("service", line, "a sid with its tsid, a name or an lcn");
    if (!field("value").empty())
        wish.value = read_up_to("value", field("value"), 0, most_value);
    if (!field("must").empty())
        wish.must = read_must(field("must"));
    wish.output_name = field("output_name");
    wish.group = field("group");
    wish.one_of = field("one_of");
    return wish;
}

} // namespace

bool is_wish_table(std::string_view text) {
    for (const Line& line : lines_of(text))
        if (!is_passed_over_in_csv(line.text))
            return is_heading(CsvHeading(line.text));
    return false;
}

WishList read_wish_table(const std::string& file, std::string_view text) {
    WishList list;
    list.file = file;
    list.format = WishFormat::csv;
    std::optional<CsvHeading> heading;
    for (const Line& line : lines_of(text)) {
        if (is_passed_over_in_csv(line.text))
            continue;
        if (!heading) {
            heading.emplace(line.text);
            const std::vector<std::string_view> known = split(wish_columns, ",");
            for (const std::string& column : heading->columns())
                if (std::find(known.begin(), known.end(), column) == known.end())
                    ++list.skipped[fmt::format("column \"{}\"", shortened(column))];
            if (heading->has("sid") && !heading->has("tsid"))
                throw Failure(fmt::format("{}: line {}: found the heading \"{}\", expected tsid beside sid; "
                                          "the columns are {}",
                                          file, line.number, shortened(line.text), wish_columns));
            continue;
        }
        ++list.places;
        try {
            Wish wish = read_row(*heading, line.text);
            wish.line = line.number;
            wish.place = list.places;
            list.wishes.push_back(std::move(wish));
        } catch (const BadLine& reason) {
            list.unreadable.push_back(fmt::format("{}: line {}: {}", file, line.number, reason.what()));
        }
    }
    return list;
}

} // namespace zarven::tool
