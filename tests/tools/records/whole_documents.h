// A document of each kind that the tool writes, with everything that there can be.

#ifndef RECALCULO_WHOLE_DOCUMENTS_H
#define RECALCULO_WHOLE_DOCUMENTS_H

#include <vector>

#include <nlohmann/json.hpp>

#include "placement/reasons/explanation.h"
#include "placement/result.h"

namespace zarven::tool::whole_documents {

/// A service for each cause, and a raise of each kind.
Result result_with_every_cause();
nlohmann::json explanations(const std::vector<Explanation>& list, const Result& result);
nlohmann::json whole_result();
/// The driver stops at a strategy that leaves nothing out.
nlohmann::json result_with_strategies_not_tried();
nlohmann::json whole_explanation();
nlohmann::json whole_comparison();
nlohmann::json whole_sizing();
nlohmann::json whole_choice();
nlohmann::json whole_drill();
nlohmann::json whole_bound();

} // namespace zarven::tool::whole_documents

#endif
