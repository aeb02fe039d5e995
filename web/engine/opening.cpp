// What a file is that somebody opens, and what becomes of it.

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/failure.h"
#include "headend/headend_json.h"
#include "headend/service_filter.h"
#include "lineup/import_choices.h"
#include "lineup/imported_lists.h"
#include "lineup/lineup.h"
#include "lineup/text_lines.h"
#include "measured/measured_file.h"
#include "measured/measuring.h"
#include "measured/rates_csv.h"
#include "placement/result_json.h"
#include "questions.h"
#include "report/import_text.h"
#include "report/measuring_text.h"
#include "report/wishing_text.h"
#include "wishes/wished_import.h"
#include "wishes/wishing.h"

namespace zarven::web {

namespace {

bool is_json(std::string_view text) {
    text = tool::without_byte_order_mark(text);
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

/// What is opened together, by what it is, and what the question chooses of it.
struct Opened {
    std::vector<std::pair<std::string, std::string>> lists;
    std::vector<tool::MeasuredFile> measured;
    std::vector<tool::WishList> wishes;
    /// One of the wishes at least can be nothing else.
    bool has_sure_wishes = false;

    tool::BitrateEstimates estimates;
    tool::Duplicates duplicates = tool::Duplicates::passed_over;
    tool::ServiceFilter filter;
    tool::Margins margins;
    bool takes_lcns = false;
};

/// "10%, estimated=20%" as several --margin.
tool::Margins margins_of(const std::string& text) {
    std::vector<std::string> margins;
    for (std::size_t end = 0, begin = 0; (begin = text.find_first_not_of(", ", end)) != text.npos;) {
        end = std::min(text.find_first_of(", ", begin), text.size());
        margins.push_back(text.substr(begin, end - begin));
    }
    return tool::read_margins(margins);
}

void read_choices(const Message& question, Opened& opened) {
    const auto given = question.head.value("choices", nlohmann::ordered_json::object());
    for (const tool::EstimateChoice& choice : tool::estimate_choices)
        opened.estimates.*choice.bitrate = given.value(choice.option, opened.estimates.*choice.bitrate);
    if (given.value("--keep-duplicates", false))
        opened.duplicates = tool::Duplicates::kept;
    const auto add_terms = [&](const char* option, std::vector<tool::ServiceTerms>& terms) {
        const std::string text = given.value(option, "");
        if (!text.empty())
            terms.emplace_back(option, text);
    };
    add_terms("--only", opened.filter.only);
    add_terms("--exclude", opened.filter.exclude);
    opened.margins = margins_of(given.value("--margin", ""));
    opened.takes_lcns = given.value("--wish-lcns", false);
}

Opened opened_of(const Message& question, std::size_t count) {
    const auto names = question.head.at("names").get<std::vector<std::string>>();
    Opened opened;
    read_choices(question, opened);
    for (std::size_t index = 0; index < count; ++index) {
        const std::string& name = names[index];
        const std::string& text = question.texts[index];
        if (is_measured(name, text)) {
            opened.measured.push_back(tool::read_measured_file(name, text));
        } else if (is_surely_wish_list(text)) {
            opened.has_sure_wishes = true;
            opened.wishes.push_back(tool::read_wish_list(name, text));
        } else if (may_be_wish_list(text)) {
            opened.wishes.push_back(tool::read_wished_names(name, text));
        } else {
            opened.lists.emplace_back(name, text);
        }
    }
    return opened;
}

/// What it told the planner, with the rest of the answer.
using Messages = std::vector<std::string>;
using Extent = tool::MessageDigest::Extent;

void add(Messages& messages, const Messages& more) {
    messages.insert(messages.end(), more.begin(), more.end());
}

/// What is known of the services that there are: their rates, and which are wished for. Nothing for what
/// looks like a list of names, and none of them is a service's.
std::optional<Message> take_up(const Opened& opened, tool::Headend headend) {
    tool::Measuring measuring;
    if (!opened.measured.empty())
        measuring = tool::apply_measurements(opened.measured, opened.margins, tool::Descrambling::as_planned,
                                             headend.services);
    const std::vector<tool::Service> measured = headend.services;
    tool::Wishing wishing;
    if (!opened.wishes.empty())
        wishing = tool::find_wishes(opened.wishes, headend.services, headend.streams);
    const bool is_wished = !wishing.met.empty();
    if (!opened.wishes.empty() && opened.measured.empty() && !is_wished && !opened.has_sure_wishes)
        return std::nullopt;
    if (is_wished) {
        tool::value_wishes(opened.wishes, wishing, headend.services);
        tool::ask_for_met(wishing, headend.services);
        if (opened.takes_lcns)
            tool::number_wishes(opened.wishes, wishing, headend);
    }
    Message message = headend_message(headend);
    message.head["kind"] = is_wished                     ? "wished"
                           : !measuring.measured.empty() ? "measured"
                           : !opened.measured.empty()    ? "nothing measured"
                                                         : "nothing wished";
    tell(message, [&](auto extent) {
        Messages messages;
        if (!opened.measured.empty())
            add(messages, tool::measuring_messages(opened.measured, measured, measuring, extent));
        if (!opened.wishes.empty())
            add(messages, tool::wishing_messages(opened.wishes, measured, wishing, extent));
        if (!opened.wishes.empty() && !is_wished)
            messages.emplace_back(tool::no_wish_is_met);
        if (is_wished && opened.takes_lcns)
            add(messages, tool::lcn_messages(opened.wishes, headend.services, wishing, extent));
        return messages;
    });
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

/// As `import` does it with all its options.
Message import_lists(const Opened& opened, tool::Headend planned) {
    tool::ImportedLists lists;
    for (const auto& [name, text] : opened.lists)
        lists.read(name, text, std::nullopt);
    tool::Measuring measuring;
    std::vector<tool::Service> measured;
    const auto refine = [&](tool::ImportedChannels& made) {
        measuring = tool::apply_measurements(opened.measured, opened.margins, tool::Descrambling::as_measured,
                                             made.services);
        tool::take_kinds(measuring, made);
        measured = made.services;
    };
    tool::ImportedChannels imported =
        tool::import_channels(lists.channels, opened.estimates, opened.duplicates, refine);
    tool::Wishing wishing;
    const std::vector<tool::Service> all = imported.services;
    const tool::Wishing found = opened.wishes.empty() ? wishing : tool::find_wishes(opened.wishes, imported);
    if (opened.wishes.empty()) {
        tool::choose_services(imported, opened.filter);
    } else if (found.met.empty()) {
        throw tool::Failure(tool::no_wish_is_met);
    } else {
        wishing = found;
        tool::value_wishes(opened.wishes, wishing, imported.services);
        tool::keep_wished(wishing, opened.filter, imported);
    }
    const tool::ImportedChannels kept = imported;
    tool::Headend headend = tool::headend_of_import(std::move(planned), std::move(imported));
    if (opened.takes_lcns)
        tool::number_wishes(opened.wishes, wishing, headend);
    Message message = headend_message(headend);
    tell(message, [&](auto extent) {
        Messages messages;
        if (!opened.wishes.empty())
            add(messages, tool::wishing_messages(opened.wishes, all, found, extent));
        add(messages, tool::import_messages(lists.lists, kept, {}, extent));
        if (!opened.measured.empty())
            add(messages, tool::measuring_messages(opened.measured, measured, measuring, extent));
        if (!opened.wishes.empty() && opened.takes_lcns)
            add(messages, tool::lcn_messages(opened.wishes, headend.services, wishing, extent));
        return messages;
    });
    return message;
}

void tell_kinds(const Opened& opened, Message& message) {
    auto kinds = nlohmann::ordered_json::array();
    if (!opened.lists.empty())
        kinds.push_back("list");
    for (const auto& [name, text] : opened.lists)
        message.head["lists"].push_back(name);
    if (!opened.measured.empty())
        kinds.push_back("measured");
    if (!opened.wishes.empty())
        kinds.push_back("wished");
    message.head["of"] = kinds;
}

} // namespace

Message open(const Message& question) {
    const auto names = question.head.at("names").get<std::vector<std::string>>();
    const bool has_modules = question.head.value("modules", false);
    const std::size_t count = question.texts.size() - (has_modules ? 1 : 0);
    if (count == 1 && is_json(question.texts.front()) && !is_measured(names.front(), question.texts.front()))
        return open_json(names.front(), question.texts.front());
    Opened opened = opened_of(question, count);
    if (!has_modules)
        throw tool::Failure("a channel list needs modules to be placed on; expected a head-end beside it");
    tool::Headend planned = tool::read_headend(names.back(), question.texts.back());
    if (opened.lists.empty())
        if (std::optional<Message> taken = take_up(opened, planned)) {
            tell_kinds(opened, *taken);
            return *taken;
        }
    if (opened.lists.empty()) { // nothing is known of them, which is told of a list
        opened.wishes.clear();
        for (std::size_t index = 0; index < count; ++index)
            opened.lists.emplace_back(names[index], question.texts[index]);
    }
    Message message = import_lists(opened, std::move(planned));
    tell_kinds(opened, message);
    return message;
}

} // namespace zarven::web
