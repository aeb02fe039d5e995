// What goes between the page and the engine: a line of JSON, then texts one behind the other, of which the
// line tells the sizes in bytes under "texts". So head-ends and results of megabytes are neither quoted nor
// parsed on the way.

#ifndef RECALCULO_WEB_MESSAGE_H
#define RECALCULO_WEB_MESSAGE_H

#include <string>
#include <string_view>
#include <vector>

#include <nlohmann/json.hpp>

namespace zarven::web {

struct Message {
    nlohmann::ordered_json head = nlohmann::ordered_json::object();
    std::vector<std::string> texts{};
};

/// Throws `std::exception` for bytes that are no message.
Message message_of(std::string_view bytes);

std::string bytes_of(Message message);

} // namespace zarven::web

#endif
