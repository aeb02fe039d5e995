// What a file is that somebody opens, and what becomes of it.

#include <algorithm>
#include <cstddef>
#include <optional>

#include "base/failure.h"
#include "headend/headend_json.h"
#include "headend/service_filter.h"
#include "lineup/import_choices.h"
#include "lineup/imported_lists.h"
#include "lineup/lineup.h"
#include "measured/measured_file.h"
#include "measured/measuring.h"
#include "measured/rates_csv.h"
#include "placement/result_json.h"
#include "questions.h"
#include "report/import_text.h"
#include "report/measuring_text.h"
#include "report/wishing_text.h"
#include "wishes/wishing.h"

namespace zarven::web {

namespace {

bool is_json(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(" \t\r\n");
    return begin != std::string_view::npos && text[begin] == '{';
}

/// A table of rates, a log of analyses, or one of them.
bool is_measured(const std::string& file, const std::string& text) {
    const bool has_lines_of_json = is_json(text) && text.find("\n{") != text.npos;
    if (has_lines_of_json || text.find("analyze:") != text.npos || tool::is_rates_csv(text))
        return true;
    if (!is_json(text))
        return false;
    const tool::Document document(file, text);
    return document.has("ts") && !document.has("modules");
}

/// A few messages of each kind, and where these are not all, all of them. `messages_of` is called with how
/// many are wanted.
template <class Messages> void tell(Message& message, Messages messages_of) {
    const auto few = messages_of(tool::MessageDigest::Extent::few_of_each);
    const auto all = messages_of(tool::MessageDigest::Extent::all);
    message.head["messages"] = few;
    if (all != few)
        message.head["all_messages"] = all;
}

bool is_surely_wish_list(const std::string& text) {
    return tool::is_bouquet(text) || tool::is_wish_table(text);
}

/// A list of names and LCNs may look like anything. A heading of one is one of dvbv5, too, where values
/// follow.
bool may_be_wish_list(const std::string& text) {
    const auto format = tool::format_of(text);
    return is_surely_wish_list(text) ||
           (!is_json(text) &&
            (!format || (format == tool::LineupFormat::dvbv5 && text.find('=') == text.npos)));
}

/// Nothing for what looks like a list of names, and none of them is a service's.
std::optional<Message> wish(const Message& question, std::size_t count) {
    const auto names = question.head.at("names").get<std::vector<std::string>>();
    tool::Headend headend = tool::read_headend(names.back(), question.texts.back());
    std::vector<tool::WishList> lists;
    bool is_sure = false;
    for (std::size_t index = 0; index < count; ++index) {
        const std::string& text = question.texts[index];
        const bool is_surely_one = is_surely_wish_list(text);
        is_sure = is_sure || is_surely_one;
        lists.push_back(is_surely_one ? tool::read_wish_list(names[index], text)
                                      : tool::read_wished_names(names[index], text));
    }
    const tool::Wishing wishing = tool::find_wishes(lists, headend.services, headend.streams);
    if (wishing.met.empty() && !is_sure)
        return std::nullopt;
    Message told;
    tell(told, [&](auto extent) {
        std::vector<std::string> messages = tool::wishing_messages(lists, headend.services, wishing, extent);
        if (wishing.met.empty())
            messages.emplace_back(tool::no_wish_is_met);
        return messages;
    });
    tool::value_wishes(lists, wishing, headend.services);
    tool::ask_for_met(wishing, headend.services);
    Message message = headend_message(headend);
    message.head.update(told.head);
    message.head["kind"] = wishing.met.empty() ? "nothing wished" : "wished";
    return message;
}

Message measure(const Message& question, std::size_t count) {
    const auto names = question.head.at("names").get<std::vector<std::string>>();
    tool::Headend headend = tool::read_headend(names.back(), question.texts.back());
    std::vector<tool::MeasuredFile> files;
    for (std::size_t index = 0; index < count; ++index)
        files.push_back(tool::read_measured_file(names[index], question.texts[index]));
    const tool::Measuring measuring =
        tool::apply_measurements(files, tool::Margins(), tool::Descrambling::as_planned, headend.services);
    Message message = headend_message(headend);
    message.head["kind"] = measuring.measured.empty() ? "nothing measured" : "measured";
    tell(message,
         [&](auto extent) { return tool::measuring_messages(files, headend.services, measuring, extent); });
    return message;
}

/// What the question chooses of an import.
struct Choices {
    tool::BitrateEstimates estimates;
    tool::Duplicates duplicates = tool::Duplicates::passed_over;
    tool::ServiceFilter filter;
};

Choices choices_of(const Message& question) {
    const auto given = question.head.value("choices", nlohmann::ordered_json::object());
    Choices choices;
    for (const tool::EstimateChoice& choice : tool::estimate_choices)
        choices.estimates.*choice.bitrate = given.value(choice.option, choices.estimates.*choice.bitrate);
    if (given.value("--keep-duplicates", false))
        choices.duplicates = tool::Duplicates::kept;
    const auto add_terms = [&](const char* option, std::vector<tool::ServiceTerms>& terms) {
        const std::string text = given.value(option, "");
        if (!text.empty())
            terms.emplace_back(option, text);
    };
    add_terms("--only", choices.filter.only);
    add_terms("--exclude", choices.filter.exclude);
    return choices;
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
    const Choices choices = choices_of(question);
    tool::ImportedChannels imported =
        tool::import_channels(lists.channels, choices.estimates, choices.duplicates);
    tool::choose_services(imported, choices.filter);
    Message told;
    tell(told, [&](auto extent) { return tool::import_messages(lists.lists, imported, {}, extent); });
    Message message = headend_message(tool::headend_of_import(std::move(planned), std::move(imported)));
    message.head.update(told.head);
    return message;
}

} // namespace

Message open(const Message& question) {
    const auto names = question.head.at("names").get<std::vector<std::string>>();
    const bool has_modules = question.head.value("modules", false);
    const std::size_t count = question.texts.size() - (has_modules ? 1 : 0);
    if (has_modules && is_measured(names.front(), question.texts.front()))
        return measure(question, count);
    if (has_modules &&
        std::all_of(question.texts.begin(), question.texts.begin() + static_cast<std::ptrdiff_t>(count),
                    may_be_wish_list))
        if (const std::optional<Message> wished = wish(question, count))
            return *wished;
    if (count == 1 && is_json(question.texts.front()))
        return open_json(names.front(), question.texts.front());
    return import_lists(question, count);
}

} // namespace zarven::web
