#include "report/message_digest.h"

#include <algorithm>
#include <utility>

#include <fmt/format.h>

namespace zarven::tool {

namespace {

bool is_digit(char character) {
    return character >= '0' && character <= '9';
}

bool is_word(char character) {
    return is_digit(character) || (character >= 'A' && character <= 'Z') ||
           (character >= 'a' && character <= 'z');
}

constexpr const char* anything = "...";

} // namespace

std::string kind_of_complaint(std::string_view complaint) {
    const std::size_t expected = std::min(complaint.find(", expected"), complaint.size());
    const std::string_view found = complaint.substr(0, expected);
    std::string kind;
    for (std::size_t at = 0; at < found.size();) {
        std::size_t end = at + 1;
        if (found[at] == '"') {
            end = std::max(found.rfind('"') + 1, end);
            kind += fmt::format("\"{}\"", anything);
        } else if (is_word(found[at])) {
            while (end < found.size() && is_word(found[end]))
                ++end;
            const std::string_view word = found.substr(at, end - at);
            kind += std::any_of(word.begin(), word.end(), is_digit) ? std::string_view(anything) : word;
        } else {
            kind += found[at];
        }
        at = end;
    }
    return kind.append(complaint.substr(expected));
}

void MessageDigest::add(const std::string& file, const std::string& kind, std::string message) {
    const auto [place, is_new] = places_.emplace(std::pair(file, kind), kinds_.size());
    if (is_new)
        kinds_.push_back({file, kind, 0});
    if (++kinds_[place->second].count <= most_of_a_kind || extent_ == Extent::all)
        told_.push_back(std::move(message));
}

std::vector<std::string> MessageDigest::lines() const {
    std::vector<std::string> lines = told_;
    for (const Kind& kind : kinds_)
        if (kind.count > most_of_a_kind && extent_ == Extent::few_of_each)
            lines.push_back(fmt::format("{}: {} more, which --verbose tells: {}", kind.file,
                                        kind.count - most_of_a_kind, kind.name));
    return lines;
}

} // namespace zarven::tool
