#include "message.h"

#include <stdexcept>

namespace zarven::web {

Message message_of(std::string_view bytes) {
    const std::size_t end = bytes.find('\n');
    if (end == std::string_view::npos)
        throw std::invalid_argument("a message without its first line");
    Message message;
    message.head = nlohmann::ordered_json::parse(bytes.substr(0, end));
    bytes.remove_prefix(end + 1);
    for (const std::size_t size : message.head.value("texts", std::vector<std::size_t>())) {
        message.texts.emplace_back(bytes.substr(0, size));
        bytes.remove_prefix(std::min(size, bytes.size()));
    }
    return message;
}

std::string bytes_of(Message message) {
    std::vector<std::size_t> sizes;
    for (const std::string& text : message.texts)
        sizes.push_back(text.size());
    message.head["texts"] = sizes;
    std::string bytes =
        message.head.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n";
    for (const std::string& text : message.texts)
        bytes += text;
    return bytes;
}

} // namespace zarven::web
