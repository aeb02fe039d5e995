#include "changes.h"

#include <fmt/format.h>

#include "report/change_text.h"

namespace zarven::web {

namespace {

const tool::TextStyle style;

constexpr const char* meaning_of_ends =
    " What is lost or removed goes before the first step, what is gained or added comes after the last.";

nlohmann::ordered_json told_inputs(const std::vector<tool::InputChange>& changes) {
    auto told = nlohmann::ordered_json::array();
    for (const tool::InputChange& change : changes)
        told.push_back(tool::change_text(change, style));
    return told;
}

/// Of each place, or why there is none.
nlohmann::ordered_json told_places(const std::vector<tool::Place>& places, tool::Absence absence) {
    auto told = nlohmann::ordered_json::array();
    for (const tool::Place& place : places)
        told.push_back(tool::ports_text(place));
    if (told.empty())
        told.push_back(tool::to_string(absence));
    return told;
}

nlohmann::ordered_json told_services(const std::vector<tool::ServiceChange>& changes) {
    auto told = nlohmann::ordered_json::array();
    for (const tool::ServiceChange& change : changes)
        told.push_back({{"before", told_places(change.before, change.absence_before)},
                        {"after", told_places(change.after, change.absence_after)}});
    return told;
}

nlohmann::ordered_json told_effects(const tool::ChangeStep& step) {
    auto told = nlohmann::ordered_json::array();
    for (const auto& [what, services] : tool::effects_of(step)) {
        auto names = nlohmann::ordered_json::array();
        for (const tool::ServiceResult& service : services)
            names.push_back(fmt::format("{} {}", service.lcn, tool::shown(service.name, style)));
        told.push_back({{"what", what}, {"services", std::move(names)}});
    }
    return told;
}

} // namespace

nlohmann::ordered_json told_change_of(const tool::Comparison& comparison) {
    auto renamed = nlohmann::ordered_json::array();
    for (const auto& [before, after] : comparison.renamed)
        renamed.push_back(
            {{"before", tool::name_text(before, style)}, {"after", tool::name_text(after, style)}});
    return {{"figures", tool::change_in_figures(comparison)},
            {"gained", told_services(comparison.gained)},
            {"lost", told_services(comparison.lost)},
            {"moved", told_services(comparison.moved)},
            {"renamed", std::move(renamed)},
            {"added", told_services(comparison.added)},
            {"removed", told_services(comparison.removed)},
            {"inputs_taken", told_inputs(comparison.inputs_taken)},
            {"inputs_retuned", told_inputs(comparison.inputs_retuned)},
            {"inputs_freed", told_inputs(comparison.inputs_freed)}};
}

nlohmann::ordered_json told_order_of(const tool::ChangeOrder& order) {
    auto steps = nlohmann::ordered_json::array();
    for (const tool::ChangeStep& step : order.steps)
        steps.push_back({{"mac", step.input.mac},
                         {"number", step.input.number},
                         {"change", tool::change_text(step.input, style)},
                         {"effects", told_effects(step)},
                         {"off_air", tool::off_air_text(step.off_air)}});
    return {{"sentence", tool::order_text(order)},
            {"meaning", std::string(tool::meaning_of_steps) + meaning_of_ends},
            {"steps", std::move(steps)}};
}

} // namespace zarven::web
