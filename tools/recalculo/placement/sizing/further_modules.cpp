#include "placement/sizing/further_modules.h"

#include <algorithm>
#include <string>

#include <fmt/format.h>

namespace zarven::tool {

namespace {

/// The MAC after another one in the order of the engine: the next number, or a longer text.
std::string mac_after(const std::string& mac) {
    const auto is_digit = [](char character) {
        return std::string("0123456789abcdefABCDEF").find(character) != std::string::npos;
    };
    const std::size_t size = mac.size();
    if (size >= 2 && is_digit(mac[size - 1]) && is_digit(mac[size - 2])) {
        const unsigned long number = std::stoul(mac.substr(size - 2), nullptr, 16);
        const bool is_lower = mac.find_first_of("abcdef") != mac.npos;
        const std::string next = mac.substr(0, size - 2) + (is_lower ? fmt::format("{:02x}", number + 1)
                                                                     : fmt::format("{:02X}", number + 1));
        if (next.size() == size) // not after FF
            return next;
    }
    return mac + ":01";
}

} // namespace

Headend with_modules(const Headend& headend, const Module& kind, std::size_t number) {
    Headend changed = headend;
    std::string mac;
    for (const Module& module : headend.modules)
        mac = std::max(mac, module.mac);
    for (std::size_t copy = 0; copy < number; ++copy) {
        mac = mac_after(mac);
        changed.modules.push_back(kind);
        changed.modules.back().mac = mac;
        changed.modules.back().controller = false;
        // That of the module which stands for the kind tells where that one is.
        changed.modules.back().label.clear();
    }
    return changed;
}

} // namespace zarven::tool
