#include "report/change_text.h"

#include <fmt/format.h>

#include "base/counted.h"

namespace zarven::tool {

namespace {

/// " 2 added, 1 removed,"; nothing where both sides have the same services.
std::string changes_of_the_lineup(const Comparison& comparison) {
    if (comparison.added.empty() && comparison.removed.empty())
        return "";
    return fmt::format(" {} added, {} removed,", comparison.added.size(), comparison.removed.size());
}

} // namespace

std::string change_in_figures(const Comparison& comparison) {
    const std::size_t renamed = comparison.renamed.size();
    return fmt::format("{} gained, {} lost,{} {} moved, {} in the same place{}, {} placed in neither",
                       comparison.gained.size(), comparison.lost.size(), changes_of_the_lineup(comparison),
                       comparison.moved.size(), comparison.unmoved,
                       renamed == 0 ? "" : fmt::format(" ({} renamed)", renamed), comparison.never_placed);
}

std::string ports_text(const Place& place) {
    return fmt::format("{} out {}", place.input == 0 ? "no input" : fmt::format("in {}", place.input),
                       fmt::join(place.outputs, "+"));
}

std::string change_text(const std::string& before, const std::string& after, const TextStyle& style) {
    return fmt::format("{} {} {}", before, symbols_of(style).arrow, after);
}

std::string stream_or_free(bool is_tuned, Stream stream) {
    return is_tuned ? to_string(stream) : "free";
}

std::string change_text(const InputChange& change, const TextStyle& style) {
    return change_text(stream_or_free(change.was_tuned, change.before),
                       stream_or_free(change.is_tuned, change.after), style);
}

std::string name_text(const ServiceResult& service, const TextStyle& style) {
    const std::string sent = service.output_name.empty() || service.output_name == service.name
                                 ? ""
                                 : fmt::format(" as {}", shown(service.output_name, style));
    return fmt::format("LCN {} {}{} (SID {})", service.lcn, shown(service.name, style), sent, service.sid);
}

std::string off_air_text(std::size_t number) {
    return fmt::format("{} off the air", number == 0 ? "no service" : counted(number, "service"));
}

std::string order_text(const ChangeOrder& order) {
    return fmt::format("Change on air in {}: {}{} at a time{}", counted(order.steps.size(), "step"),
                       order.most_off_air == 0 ? "" : "at most ", off_air_text(order.most_off_air),
                       order.is_least ? "" : ", the fewest that were found");
}

std::vector<StepEffect> effects_of(const ChangeStep& step) {
    std::vector<StepEffect> effects;
    if (!step.goes_off.empty())
        effects.push_back({"off the air", step.goes_off});
    if (!step.comes_back.empty())
        effects.push_back({"back", step.comes_back});
    return effects;
}

} // namespace zarven::tool
