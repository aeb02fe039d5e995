// An argument and an option, read together.

#include "commands/headend_input.h"

#include <fmt/format.h>

#include "base/counted.h"
#include "base/utf8.h"
#include "headend/headend_json.h"
#include "headend/odd_macs.h"
#include "headend/override.h"
#include "lineup/lineup.h"
#include "placement/running/engine_run.h"
#include "placement/sizing/further_modules.h"
#include "report/terminal.h"

namespace zarven::tool {

Headend read_input(const HeadendInput& input) {
    return read_json_file(input.path, [&](const std::string& name, const std::string& text) {
        Headend headend = read_headend(name, text, input.settings);
        warn_of_odd_macs(name, headend);
        return headend;
    });
}

void warn_of_odd_macs(const std::string& name, const Headend& headend) {
    for (const std::string& message : odd_mac_messages(name, headend))
        write_message(message);
}

void complain_of_channel_list(const std::string& name, const std::string& text) {
    // JSON that is damaged may have any line in it.
    const std::size_t begin = text.find_first_not_of(" \t\r\n");
    if (begin == text.npos || text[begin] == '{')
        return;
    if (const auto format = format_of(text))
        throw Failure(
            fmt::format("{}: this is a channel list ({}); use `recalculo import` to make a head-end "
                        "of it",
                        name, to_string(*format)));
}

KindInput read_kind(const std::string& path) {
    const KindInput kind = read_json_file(path, [](const std::string& name, const std::string& text) {
        return KindInput{read_module(name, text), tells_price(name, text)};
    });
    load_engine(with_modules({}, kind.module, 1), input_name(path));
    return kind;
}

} // namespace zarven::tool
