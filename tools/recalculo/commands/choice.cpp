#include "commands/choice.h"

#include <algorithm>

#include <fmt/format.h>

#include "base/words.h"

namespace zarven::tool {

CLI::Option* one_of(CLI::Option* option, const std::vector<std::string>& words) {
    const auto check = [words](const std::string& word) -> std::string {
        if (std::find(words.begin(), words.end(), word) != words.end())
            return "";
        return fmt::format("found \"{}\", expected one of {}{}", word, fmt::join(words, ", "),
                           did_you_mean(word, words));
    };
    return option->check(CLI::Validator(check, ""))->type_name(fmt::format("{}", fmt::join(words, "|")));
}

} // namespace zarven::tool
