// A table knows a service by SID and TSID, and ONID if it is told; else by its name; else by its LCN. Beside
// a name the LCN is the one that is wished for.

#include <algorithm>
#include <array>

#include <fmt/format.h>

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

Wish wish_of(const CsvRecord& record) {
    const auto field = [&record](std::string_view column) { return record.field(column); };
    Wish wish;
    wish.line = record.line().number;
    wish.place = record.place();
    if (!field("sid").empty()) {
        wish.ids.emplace();
        if (!field("onid").empty())
            wish.ids->onid = read_id("onid", field("onid"));
        wish.ids->tsid = read_id("tsid", field("tsid"));
        wish.ids->sid = read_id("sid", field("sid"));
    }
    wish.name = field("name");
    if (!field("lcn").empty())
        wish.lcn = read_number("lcn", field("lcn"), 1, 65535);
    if (!wish.ids && wish.name.empty() && !wish.lcn)
        reject("service", record.line().text, "a sid with its tsid, a name or an lcn");
    if (!field("value").empty())
        wish.value = read_number("value", field("value"), 0, most_value);
    if (!field("must").empty())
        wish.must = read_must(field("must"));
    wish.output_name = field("output_name");
    wish.group = field("group");
    wish.one_of = field("one_of");
    return wish;
}

} // namespace

bool is_wish_table(std::string_view text) {
    const CsvTable table("", text);
    return table.heading() && is_heading(*table.heading());
}

WishList read_wish_table(const std::string& file, std::string_view text) {
    WishList list;
    list.file = file;
    list.format = WishFormat::csv;
    const CsvTable table(file, text);
    if (const auto& heading = table.heading()) {
        const std::vector<std::string_view> known = split(wish_columns, ",");
        for (const std::string& column : heading->columns())
            if (std::find(known.begin(), known.end(), column) == known.end())
                ++list.skipped[fmt::format("column \"{}\"", shortened(column))];
        if (heading->has("sid") && !heading->has("tsid"))
            table.reject_heading(fmt::format("tsid beside sid; the columns are {}", wish_columns));
    }
    list.places = table.records();
    list.unreadable =
        table.read([&list](const CsvRecord& record) { list.wishes.push_back(wish_of(record)); });
    return list;
}

} // namespace zarven::tool
