// The questions about a head-end and its placement: running, comparing, changing, exporting.

#include <fmt/format.h>

#include "base/failure.h"
#include "changes.h"
#include "headend/headend_json.h"
#include "headend/override.h"
#include "headend/service_filter.h"
#include "lineup/channels_conf.h"
#include "loads.h"
#include "placement/change/comparison_fields.h"
#include "placement/documents.h"
#include "placement/result_json.h"
#include "placement/sizing/further_modules.h"
#include "placements.h"
#include "questions.h"
#include "records/write.h"
#include "report/caution_text.h"
#include "report/page/result_lists.h"
#include "report/page/result_page.h"
#include "report/result_channels.h"
#include "report/result_csv.h"

namespace zarven::web {

namespace {

std::string name_of(const Message& question) {
    return question.head.value("name", "head-end");
}

const Placement& placement_in(const Message& question, std::size_t text) {
    return placement_of(name_of(question), question.texts.at(text), question.head.value("reserve", ""));
}

/// What the placement is compared with. None if that is refused: what is asked about is the other.
const tool::Result* before_in(const Message& question) {
    if (question.texts.size() < 2)
        return nullptr;
    try {
        return &placement_in(question, 1).result;
    } catch (const tool::Failure&) {
        return nullptr;
    }
}

/// By kind, those told first and the others.
nlohmann::ordered_json told_cautions_of(const tool::Result& result) {
    auto groups = nlohmann::ordered_json::array();
    for (const auto& [name, told, others] :
         tool::groups_of(tool::cautions_of(result), tool::Extent::few_of_each))
        groups.push_back(
            {{"name", name}, {"told", tool::texts_of(told)}, {"others", tool::texts_of(others)}});
    return groups;
}

} // namespace

Message headend_message(const tool::Headend& headend) {
    Message message;
    message.head["kind"] = "headend";
    message.texts = {tool::write_headend(headend)};
    return message;
}

Message run(const Message& question) {
    const Placement& placement = placement_in(question, 0);
    const tool::Result& result = placement.result;
    Message message;
    message.head["warnings"] = placement.warnings;
    // On one line and without the order of the steps: each change waits for it.
    message.texts = {tool::result_json_on_one_line(result)};
    message.head["loads"] = loads_of(result);
    message.head["cautions"] = told_cautions_of(result);
    if (const tool::Result* before = before_in(question)) {
        const tool::Comparison comparison = tool::compare(*before, result, tool::OrderOfSteps::omitted);
        message.texts.push_back(tool::text_on_one_line(comparison));
        message.head["change"] = told_change_of(comparison);
    }
    return message;
}

Message compare(const Message& question) {
    const tool::Result& result = placement_in(question, 0).result;
    const tool::Comparison comparison = tool::compare(placement_in(question, 1).result, result);
    Message message;
    message.texts = {tool::comparison_json(comparison)};
    message.head["order"] = told_order_of(comparison.order);
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
    const std::string format = question.head.at("format");
    const tool::Result& result = placement_in(question, 0).result;
    Message message;
    if (format == "result") {
        message.texts = {tool::result_json(result)};
    } else if (format == "csv") {
        message.texts = {tool::result_csv(result)};
    } else if (format == "page") {
        message.texts = {tool::result_page(result)};
    } else if (format == "lists") {
        message.texts = {tool::service_lists_markup(result)};
    } else {
        const tool::ChannelExport exported = tool::result_channels(result);
        message.texts = {tool::write_channels_conf(exported.channels)};
        message.head["message"] = tool::exported_message(name_of(question), exported);
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
