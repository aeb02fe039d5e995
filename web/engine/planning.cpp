// The questions about a head-end and its placement: opening, running, changing, exporting.

#include <fmt/format.h>

#include "base/failure.h"
#include "headend/headend_json.h"
#include "headend/override.h"
#include "headend/service_filter.h"
#include "lineup/channels_conf.h"
#include "lineup/imported_lists.h"
#include "loads.h"
#include "placement/comparison_fields.h"
#include "placement/result_json.h"
#include "placement/sizing/further_modules.h"
#include "placements.h"
#include "questions.h"
#include "records/write.h"
#include "report/import_text.h"
#include "report/page/result_page.h"
#include "report/result_channels.h"
#include "report/result_csv.h"

namespace zarven::web {

namespace {

std::string name_of(const Message& question) {
    return question.head.value("name", "head-end");
}

bool is_json(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(" \t\r\n");
    return begin != std::string_view::npos && text[begin] == '{';
}

Message headend_message(const tool::Headend& headend) {
    Message message;
    message.head["kind"] = "headend";
    message.texts = {tool::write_headend(headend)};
    return message;
}

Message open_json(const std::string& file, const std::string& text) {
    const tool::Document document(file, text);
    Message message;
    if (tool::is_result(document)) {
        tool::read_result(document);
        message.head["kind"] = "result";
        message.texts = {text};
        return message;
    }
    if (document.has("inputs") && !document.has("modules")) {
        tool::read_module(file, text);
        message.head["kind"] = "module";
        message.texts = {text};
        return message;
    }
    return headend_message(tool::read_headend(document));
}

Message import_lists(const Message& question, std::size_t count) {
    const auto names = question.head.at("names").get<std::vector<std::string>>();
    if (count == question.texts.size())
        throw tool::Failure("a channel list needs modules to be placed on; expected a head-end beside it");
    tool::Headend planned = tool::read_headend(names.back(), question.texts.back());
    tool::ImportedLists lists;
    for (std::size_t index = 0; index < count; ++index)
        lists.read(names[index], question.texts[index], std::nullopt);
    tool::ImportedChannels imported = tool::import_channels(lists.channels, tool::BitrateEstimates());
    const std::vector<std::string> messages =
        tool::import_messages(lists.lists, imported, {}, tool::MessageDigest::Extent::few_of_each);
    Message message = headend_message(tool::headend_of_import(std::move(planned), std::move(imported)));
    message.head["messages"] = messages;
    return message;
}

} // namespace

Message open(const Message& question) {
    const auto names = question.head.at("names").get<std::vector<std::string>>();
    const bool has_modules = question.head.value("modules", false);
    const std::size_t count = question.texts.size() - (has_modules ? 1 : 0);
    if (count == 1 && is_json(question.texts.front()))
        return open_json(names.front(), question.texts.front());
    return import_lists(question, count);
}

Message run(const Message& question) {
    const std::string name = name_of(question);
    const tool::Result& result = placement_of(name, question.texts.at(0));
    Message message;
    // On one line: of ten thousand services it is half as long, and each change waits for it.
    message.texts = {tool::result_json_on_one_line(result)};
    message.head["loads"] = loads_of(result);
    if (question.texts.size() > 1)
        message.texts.push_back(
            tool::json_of(tool::compare(placement_of(name, question.texts[1]), result)).dump());
    return message;
}

Message change(const Message& question) {
    return headend_message(tool::read_headend(name_of(question), question.texts.at(0),
                                              question.head.value("set", std::vector<std::string>())));
}

Message add(const Message& question) {
    const tool::Headend headend = tool::read_headend(name_of(question), question.texts.at(0));
    const tool::Module kind = tool::read_module("module", question.texts.at(1));
    return headend_message(tool::with_modules(headend, kind, question.head.at("number").get<std::size_t>()));
}

Message write(const Message& question) {
    const std::string name = name_of(question);
    const std::string format = question.head.at("format");
    const tool::Result& result = placement_of(name, question.texts.at(0));
    Message message;
    if (format == "result") {
        message.texts = {tool::result_json(result)};
    } else if (format == "csv") {
        message.texts = {tool::result_csv(result)};
    } else if (format == "page") {
        message.texts = {tool::result_page(result)};
    } else {
        const tool::ChannelExport exported = tool::result_channels(result);
        message.texts = {tool::write_channels_conf(exported.channels)};
        message.head["message"] = tool::exported_message(name, exported);
    }
    return message;
}

Message filter(const Message& question) {
    const tool::Headend headend = tool::read_headend(name_of(question), question.texts.at(0));
    const tool::ServiceTerms terms("filter", question.head.at("terms").get<std::string>());
    Message message;
    message.head["services"] = nlohmann::ordered_json::array();
    for (std::size_t index = 0; index < headend.services.size(); ++index)
        if (terms.hold_for(headend.services[index]))
            message.head["services"].push_back(index);
    return message;
}

} // namespace zarven::web
