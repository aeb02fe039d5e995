// Words as people type them: in any case, and with slips. Commands, options, keys, names of formats; lists of
// some dozens.

#ifndef RECALCULO_BASE_WORDS_H
#define RECALCULO_BASE_WORDS_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace zarven::tool {

/// A letter from A to Z as its small one, any other byte as it is.
constexpr char small_letter(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

std::string in_small_letters(std::string_view text);

/// The valid word of which the least part must change, the first of equals; empty only for an empty list. A
/// slip is a letter too many, too few, wrong, or two of them exchanged.
std::string nearest_word(std::string_view word, const std::vector<std::string>& valid);

/// The place of that word; the number of words where more than half of it would have to change, and of none.
std::size_t near_word(std::string_view word, const std::vector<std::string>& valid);

/// `; did you mean "run"?` with the nearest valid word, or nothing where more than half of it would have to
/// change.
std::string did_you_mean(std::string_view word, const std::vector<std::string>& valid);

} // namespace zarven::tool

#endif
