// The questions that take longer than a run: explaining, sizing, bounding. Their texts are the tool's own,
// fitted to the width that the page has for them.

#include <chrono>

#include <fmt/format.h>

#include "headend/headend_json.h"
#include "placement/audit/reserve.h"
#include "placement/bound.h"
#include "placement/choosing/choice.h"
#include "placement/documents.h"
#include "placement/failing/drill.h"
#include "placement/one_of.h"
#include "placement/reasons/explanation_json.h"
#include "placement/running/engine_run.h"
#include "placement/running/host.h"
#include "placement/service_query.h"
#include "placement/sizing/advising.h"
#include "placement/sizing/further_modules.h"
#include "placement/sizing/sizing.h"
#include "placements.h"
#include "progress.h"
#include "questions.h"
#include "report/bound_text.h"
#include "report/choice_text.h"
#include "report/drill_text.h"
#include "report/explanation_text.h"
#include "report/sizing_text.h"

namespace zarven::web {

namespace {

/// How the page's head-end is called where a complaint names its file.
constexpr const char* headend_name = "head-end";

tool::TextStyle style_of(const Message& question) {
    tool::TextStyle style;
    style.width = question.head.value("width", 0);
    return style;
}

/// With the variants that fit, where one of several is asked for.
tool::Headend settled_headend_of(const Message& question) {
    tool::Headend headend = tool::read_headend(headend_name, question.texts.at(0));
    tool::settle_variants(headend, headend_name);
    return headend;
}

void run_told(tool::EngineRun& run) {
    tool::ProgressLine line(means_of_page(), [&run] { return tool::services_left(run.engine); });
    const tool::host::Watching watching(&line);
    tool::run_engine(run, headend_name);
}

} // namespace

Message explain(const Message& question) {
    const tool::Headend headend = settled_headend_of(question);
    std::vector<tool::ServiceQuery> queries;
    for (const std::string& text : question.head.value("services", std::vector<std::string>()))
        queries.push_back(tool::parse_service_query(text));
    tool::EngineRun run = tool::load_engine(headend, headend_name);
    tool::Services services = tool::services_with(queries, run, headend_name, headend);
    run_told(run);
    tool::Explainer explainer(run,
                              queries.empty() ? tool::Listing::with_an_input : tool::Listing::all_modules);
    if (queries.empty())
        services = tool::unplaced_of(run);
    tool::Result result = tool::result_of(run, headend.name);
    if (queries.empty())
        result.advice = tool::advice_for(headend, headend_name, result, tool::automatic_trials);
    std::string json = tool::explanations_json_begin(result);
    std::string text;
    for (const auto& service : services) {
        const tool::Explanation explanation = explainer.explain(service);
        json += (text.empty() ? "" : ",") + tool::explanation_json(explanation);
        text += (text.empty() ? "" : "\n") + tool::explanation_text(explanation, style_of(question));
    }
    Message message;
    message.texts = {json + tool::explanations_json_end(explainer.findings()), text};
    return message;
}

Message size(const Message& question) {
    const tool::Headend headend = settled_headend_of(question);
    const tool::Module kind = tool::read_module("module", question.texts.at(1));
    // What the engine refuses of the module is told under its own name.
    tool::load_engine(tool::with_modules({}, kind, 1), "module");
    tool::DrawnLine line(means_of_page());
    tool::SizingOptions options;
    options.most = question.head.value("most", options.most);
    options.progress = [&line](std::size_t done, std::size_t planned) {
        line.draw([&] { return std::vector{tool::runs_in_figures(done, planned)}; });
    };
    const tool::Sizing sizing = tool::size_headend(headend, headend_name, {kind}, options);
    Message message;
    message.texts = {tool::sizing_json(sizing), tool::sizing_text(sizing, style_of(question))};
    return message;
}

Message choose(const Message& question) {
    const tool::Headend headend = settled_headend_of(question);
    tool::ChoosingLimits limits;
    limits.time = std::chrono::seconds(question.head.value("seconds", 5));
    limits.runs = question.head.value("runs", limits.runs);
    const std::string reserve = question.head.value("reserve", "");
    const tool::Result* const kept = question.head.value("keep", false)
                                         ? &placement_of(headend_name, question.texts[0], reserve).result
                                         : nullptr;
    tool::DrawnLine line(means_of_page());
    const tool::StaysPut stays = kept != nullptr ? tool::stays_put(headend, *kept) : tool::StaysPut();
    const tool::Choice choice =
        tool::choose_services(headend, limits, stays, [&](const tool::ChoosingProgress& progress) {
            line.draw([&] { return tool::progress_in_figures(progress, headend); });
            return true;
        });
    const tool::ChoiceReport report = tool::report_of(
        headend, choice, kept, headend_name, reserve.empty() ? tool::Reserve() : tool::read_reserve(reserve));
    Message message;
    message.texts = {tool::choice_json(report),
                     tool::choice_text(report, "the placement now", style_of(question)),
                     tool::write_headend(tool::with_choice(headend, choice))};
    return message;
}

Message drill(const Message& question) {
    const tool::Headend headend = settled_headend_of(question);
    tool::DrawnLine line(means_of_page());
    tool::DrillOptions options;
    options.has_streams = question.head.value("streams", false);
    options.progress = [&line](std::size_t done, std::size_t planned) {
        line.draw([&] { return std::vector{tool::runs_in_figures(done, planned)}; });
    };
    const tool::Drill drill = tool::drill_headend(headend, headend_name, options);
    Message message;
    message.texts = {tool::drill_json(drill),
                     tool::drill_text(drill, tool::FailuresShown::worst, style_of(question))};
    return message;
}

Message bound(const Message& question) {
    const tool::Headend headend = settled_headend_of(question);
    tool::EngineRun run = tool::load_engine(headend, headend_name);
    const tool::Bound bound = tool::bound_of(headend, headend_name);
    run_told(run);
    const tool::Result result = tool::result_of(run, headend.name, tool::Reasons::omitted);
    Message message;
    message.texts = {tool::bound_json(bound, result), tool::bound_text(bound, result, style_of(question))};
    return message;
}

} // namespace zarven::web
