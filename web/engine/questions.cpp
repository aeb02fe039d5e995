// The table of the questions, and how what goes wrong is told.

#include "questions.h"

#include <map>
#include <regex>

#include <tRec_Version.h>

#include "base/failure.h"
#include "headend/service_filter.h"
#include "lineup/import_choices.h"
#include "measured/margins.h"
#include "placement/audit/reserve.h"
#include "placement/running/host.h"
#include "records/document_failure.h"
#include "wishes/wishing.h"

namespace zarven::web {

namespace {

using Answerer = Message (*)(const Message&);

const std::map<std::string, Answerer>& answerers() {
    static const std::map<std::string, Answerer> all = {
        {"about", about},     {"open", open},       {"run", run},     {"change", change}, {"add", add},
        {"explain", explain}, {"size", size},       {"bound", bound}, {"choose", choose}, {"write", write},
        {"filter", filter},   {"compare", compare}, {"drill", drill}};
    return all;
}

Message failure(const std::string& sentence, const std::string& place) {
    Message message;
    message.head["failure"] = sentence;
    if (!place.empty())
        message.head["place"] = place;
    return message;
}

/// The engine's refusals name the place in the sentence.
std::string place_in(const std::string& sentence) {
    static const std::regex pointer(": (/[a-z_]+/[0-9]+)");
    std::smatch found;
    return std::regex_search(sentence, found, pointer) ? found[1].str() : "";
}

} // namespace

Message about(const Message&) {
    Message message;
    message.head["version"] = RECALCULO_VERSION;
    auto& choices = message.head["choices"];
    for (const tool::EstimateChoice& choice : tool::estimate_choices)
        choices[choice.option] = {{"meaning", choice.meaning},
                                  {"bitrate", tool::BitrateEstimates().*choice.bitrate}};
    choices["--keep-duplicates"] = {{"meaning", tool::meaning_of_keep_duplicates}};
    for (auto& [option, choice] : choices.items())
        choice["of"] = {"list"};
    choices["--margin"] = {{"meaning", tool::meaning_of_margins("measured ones")},
                           {"form", "[KIND=]N%"},
                           {"of", {"list", "measured"}}};
    choices["--wish-lcns"] = {{"meaning", tool::meaning_of_wished_lcns}, {"of", {"wished"}}};
    message.head["terms"] = tool::meaning_of_terms;
    message.head["reserve"] = tool::meaning_of_reserve;
    return message;
}

Message answer(const Message& question) {
    // What the engine logs is nobody's here, and the mask saves it the work.
    const tool::host::Log no_log("");
    try {
        return answerers().at(question.head.at("ask").get<std::string>())(question);
    } catch (const tool::DocumentFailure& wrong) {
        return failure(wrong.what(), wrong.misfit.place);
    } catch (const tool::Failure& wrong) {
        return failure(wrong.what(), place_in(wrong.what()));
    }
}

} // namespace zarven::web
