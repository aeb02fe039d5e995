#include "headend/mac.h"

#include <cstddef>

namespace zarven::tool {

namespace {

constexpr std::size_t digits_of_mac = 12;

/// The digits in capitals; empty for what is no MAC. Between bytes stand colons or hyphens, between each four
/// digits points, or nothing.
std::string digits_of(std::string_view mac) {
    std::string digits;
    char separator = '\0';
    std::size_t separators = 0;
    for (const char byte : mac) {
        const bool is_small = byte >= 'a' && byte <= 'f';
        if (is_small || (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'F')) {
            digits += static_cast<char>(is_small ? byte - 'a' + 'A' : byte);
            continue;
        }
        const std::size_t group = byte == '.' ? 4 : 2;
        const bool may_stand = (byte == ':' || byte == '-' || byte == '.') &&
                               (separator == '\0' || byte == separator) &&
                               digits.size() == group * (separators + 1);
        if (!may_stand)
            return "";
        separator = byte;
        ++separators;
    }
    const std::size_t wanted = separator == '\0' ? 0 : separator == '.' ? 2 : 5;
    return digits.size() == digits_of_mac && separators == wanted ? digits : "";
}

} // namespace

std::string canonical_mac(std::string_view mac) {
    const std::string digits = digits_of(mac);
    if (digits.empty())
        return std::string(mac);
    std::string canonical;
    for (std::size_t at = 0; at < digits.size(); at += 2)
        canonical += (at == 0 ? "" : ":") + digits.substr(at, 2);
    return canonical;
}

std::string oddity_of_mac(std::string_view mac) {
    const std::string digits = digits_of(mac);
    if (digits.empty())
        return "is no MAC, which is six bytes as in 02:00:00:00:00:01";
    if (digits == std::string(digits_of_mac, '0'))
        return "is all zeros, which no module has";
    const std::string_view odd_digits = "13579BDF";
    if (odd_digits.find(digits[1]) != odd_digits.npos)
        return "is the address of a group: the first byte of that of a module is even";
    return "";
}

} // namespace zarven::tool
