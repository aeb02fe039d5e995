// What a change does to services and inputs, in words: for the report of a comparison, and for the planner in
// the browser.

#ifndef RECALCULO_CHANGE_TEXT_H
#define RECALCULO_CHANGE_TEXT_H

#include <cstddef>
#include <string>
#include <vector>

#include "placement/change/comparison.h"
#include "report/terminal.h"

namespace zarven::tool {

/// "1 gained, 0 lost, 2 moved, 9 in the same place, 0 placed in neither".
std::string change_in_figures(const Comparison& comparison);

/// "in 1 out 2+3", of a place on a module.
std::string ports_text(const Place& place);

/// "before → after".
std::string change_text(const std::string& before, const std::string& after, const TextStyle& style);

/// What an input receives.
std::string stream_or_free(bool is_tuned, Stream stream);

/// What the input received and receives: "1/1001 → free".
std::string change_text(const InputChange& change, const TextStyle& style);

/// "LCN 3 Canal Tres as Tres (SID 3)".
std::string name_text(const ServiceResult& service, const TextStyle& style);

/// "no service off the air", "2 services off the air".
std::string off_air_text(std::size_t number);

/// What the steps come to: how many they are, and how much they take off the air.
std::string order_text(const ChangeOrder& order);

inline constexpr const char* meaning_of_steps =
    "In which order the inputs change with least off the air at a time. A service leaves the air until a later step "
    "when its old input is tuned anew before its new one.";

/// What becomes of some services with a step.
struct StepEffect {
    const char* what;
    const std::vector<ServiceResult>& services;
};

/// Without those that no service has.
std::vector<StepEffect> effects_of(const ChangeStep& step);

} // namespace zarven::tool

#endif
