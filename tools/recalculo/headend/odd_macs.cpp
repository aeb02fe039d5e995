#include "headend/odd_macs.h"

#include <fmt/format.h>

#include "base/counted.h"
#include "base/utf8.h"
#include "headend/mac.h"

namespace zarven::tool {

std::vector<std::string> odd_mac_messages(const std::string& file, const Headend& headend) {
    const std::size_t most_told = 3;
    std::vector<std::string> messages;
    std::size_t odd = 0;
    for (std::size_t index = 0; index < headend.modules.size(); ++index) {
        const std::string& mac = headend.modules[index].mac;
        const std::string oddity = oddity_of_mac(mac);
        if (!oddity.empty() && !mac.empty() && ++odd <= most_told) // the engine refuses an empty one
            messages.push_back(
                fmt::format("{}: /modules/{}/mac: \"{}\" {}", file, index, shortened(mac), oddity));
    }
    if (odd > most_told)
        messages.push_back(
            fmt::format("{}: {} with an odd MAC", file, counted(odd - most_told, "further module")));
    return messages;
}

} // namespace zarven::tool
