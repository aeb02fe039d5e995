// A radio is known by its service type, HD by its video format, both as the engine takes them. Where the kind
// is not known, they are estimates: such a service is "unknown" and nothing else.

#include "headend/service_filter.h"

#include <algorithm>

#include <fmt/format.h>

#include "base/failure.h"
#include "base/numbers.h"
#include "base/utf8.h"
#include "base/words.h"

namespace zarven::tool {

namespace {

bool is_same_letter(char one, char other) {
    return small_letter(one) == small_letter(other);
}

bool is_same_text(std::string_view one, std::string_view other) {
    return std::equal(one.begin(), one.end(), other.begin(), other.end(), is_same_letter);
}

/// The bytes of a character beyond the first begin with 10.
bool begins_character(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) != 0x80;
}

/// Goes back to the last * where it must, so that the time is at most the product of the lengths.
bool matches(std::string_view pattern, std::string_view text) {
    std::size_t p = 0;
    std::size_t t = 0;
    std::size_t star = pattern.npos;
    std::size_t resume = 0;
    while (t < text.size()) {
        if (p < pattern.size() && pattern[p] == '*') {
            star = p++;
            resume = t;
        } else if (p < pattern.size() && pattern[p] == '?') {
            ++p;
            do
                ++t;
            while (t < text.size() && !begins_character(text[t]));
        } else if (p < pattern.size() && is_same_letter(pattern[p], text[t])) {
            ++p;
            ++t;
        } else if (star != pattern.npos) {
            p = star + 1;
            t = ++resume;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', p) == pattern.npos;
}

/// Two numbers with a sign between them.
bool are_numbers(std::string_view text, char sign, std::uint16_t& one, std::uint16_t& other) {
    const std::size_t at = text.find(sign);
    return at != text.npos && is_whole_number(text.substr(0, at), one) &&
           is_whole_number(text.substr(at + 1), other);
}

std::string_view trimmed(std::string_view text) {
    const std::string_view blanks = " \t\r";
    const std::size_t first = text.find_first_not_of(blanks);
    return first == text.npos ? std::string_view()
                              : text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

} // namespace

ServiceTerms::ServiceTerms(const std::string& option, std::string_view text) {
    for (;;) {
        const std::size_t comma = text.find(',');
        terms_.push_back(term_of(option, trimmed(text.substr(0, comma))));
        if (comma == text.npos)
            return;
        text.remove_prefix(comma + 1);
    }
}

bool ServiceTerms::hold_for(const Service& service) const {
    return std::any_of(terms_.begin(), terms_.end(), [&service](const Term& term) { return term(service); });
}

ServiceTerms::Term ServiceTerms::term_of(const std::string& option, std::string_view text) {
    static const std::pair<std::string_view, bool (*)(const Service&)> kinds[] = {
        {"tv", [](const Service& service) { return !service.kind_unknown && !is_radio(service); }},
        {"radio", [](const Service& service) { return !service.kind_unknown && is_radio(service); }},
        {"hd",
         [](const Service& service) {
             return !service.kind_unknown && !is_radio(service) && is_hd(service);
         }},
        {"sd",
         [](const Service& service) {
             return !service.kind_unknown && !is_radio(service) && !is_hd(service);
         }},
        {"scrambled", [](const Service& service) { return service.descramble != 0; }},
        {"free", [](const Service& service) { return service.descramble == 0; }},
        {"unknown", [](const Service& service) { return service.kind_unknown; }}};
    for (const auto& [name, holds] : kinds)
        if (text == name)
            return holds;
    std::uint16_t one = 0;
    std::uint16_t other = 0;
    if (are_numbers(text, '/', one, other))
        return [one, other](const Service& service) { return service.onid == one && service.tsid == other; };
    if (is_whole_number(text, one))
        return [one](const Service& service) { return service.lcn == one; };
    if (are_numbers(text, '-', one, other) && one <= other)
        return [one, other](const Service& service) { return service.lcn >= one && service.lcn <= other; };
    const std::string_view by_name = "name=";
    if (text.substr(0, by_name.size()) == by_name && text.size() > by_name.size())
        return [pattern = std::string(text.substr(by_name.size()))](const Service& service) {
            return matches(pattern, service.name);
        };
    const std::string_view by_group = "group=";
    if (text.substr(0, by_group.size()) == by_group && text.size() > by_group.size())
        return [pattern = std::string(text.substr(by_group.size()))](const Service& service) {
            return matches(pattern, service.group);
        };
    throw Failure(
        fmt::format("{}: found \"{}\", expected tv, radio, hd, sd, scrambled, free, unknown, a stream as "
                    "1/1002, LCNs as 12 or 100-199, name=PATTERN or group=PATTERN with * and ?",
                    option, shortened(text)));
}

bool ServiceSelection::names(const Line& line, const Service& service) {
    std::uint16_t lcn = 0;
    return (is_whole_number(line.text, lcn) && service.lcn == lcn) || is_same_text(line.text, service.name);
}

bool ServiceSelection::has(const Service& service) const {
    return std::any_of(lines_.begin(), lines_.end(),
                       [&service](const Line& line) { return names(line, service); });
}

std::vector<ServiceSelection::Line>
ServiceSelection::without_service(const std::vector<Service>& services) const {
    std::vector<Line> missing;
    for (const Line& line : lines_)
        if (std::none_of(services.begin(), services.end(),
                         [&line](const Service& service) { return names(line, service); }))
            missing.push_back(line);
    return missing;
}

bool ServiceFilter::wants(const Service& service) const {
    const auto hold = [&service](const ServiceTerms& terms) { return terms.hold_for(service); };
    return std::all_of(only.begin(), only.end(), hold) &&
           std::none_of(exclude.begin(), exclude.end(), hold) &&
           std::all_of(selections.begin(), selections.end(),
                       [&service](const ServiceSelection& selection) { return selection.has(service); });
}

} // namespace zarven::tool
