#include "base/words.h"

#include <algorithm>
#include <numeric>

#include <fmt/format.h>

namespace zarven::tool {

namespace {

/// Slips between two words, row by row of the table of all their beginnings; three rows of it are enough.
std::size_t slips(std::string_view from, std::string_view to) {
    std::vector<std::size_t> before_last(to.size() + 1);
    std::vector<std::size_t> last(to.size() + 1);
    std::vector<std::size_t> row(to.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 1; i <= from.size(); ++i) {
        before_last.swap(last);
        last.swap(row);
        row[0] = i;
        for (std::size_t j = 1; j <= to.size(); ++j) {
            const std::size_t replaced = last[j - 1] + (from[i - 1] == to[j - 1] ? 0 : 1);
            row[j] = std::min({replaced, last[j] + 1, row[j - 1] + 1});
            if (i > 1 && j > 1 && from[i - 1] == to[j - 2] && from[i - 2] == to[j - 1])
                row[j] = std::min(row[j], before_last[j - 2] + 1);
        }
    }
    return row.back();
}

/// How much of a word must change; a short one is not near because it is short.
double part_to_change(std::string_view word, std::string_view valid) {
    const std::size_t longer = std::max(word.size(), valid.size());
    return longer == 0 ? 0 : static_cast<double>(slips(word, valid)) / static_cast<double>(longer);
}

std::vector<std::string>::const_iterator nearest(std::string_view word,
                                                 const std::vector<std::string>& valid) {
    return std::min_element(valid.begin(), valid.end(),
                            [word](const std::string& one, const std::string& other) {
                                return part_to_change(word, one) < part_to_change(word, other);
                            });
}

} // namespace

std::string in_small_letters(std::string_view text) {
    std::string small(text);
    std::transform(small.begin(), small.end(), small.begin(), small_letter);
    return small;
}

std::string nearest_word(std::string_view word, const std::vector<std::string>& valid) {
    const auto found = nearest(word, valid);
    return found == valid.end() ? "" : *found;
}

std::size_t near_word(std::string_view word, const std::vector<std::string>& valid) {
    const auto found = nearest(word, valid);
    return found == valid.end() || part_to_change(word, *found) > 0.5
               ? valid.size()
               : static_cast<std::size_t>(found - valid.begin());
}

std::string did_you_mean(std::string_view word, const std::vector<std::string>& valid) {
    const std::size_t near = near_word(word, valid);
    return near == valid.size() || valid[near].empty() ? ""
                                                       : fmt::format("; did you mean \"{}\"?", valid[near]);
}

} // namespace zarven::tool
