// What must hold for every result that the tool reports as JSON, recomputed from the lists of services alone.

#ifndef RECALCULO_RESULT_INVARIANTS_H
#define RECALCULO_RESULT_INVARIANTS_H

#include <string>
#include <vector>

#include <nlohmann/json.hpp>

namespace zarven::tool {

/// One sentence for each thing that is wrong with a result of a head-end; none for a sound one.
std::vector<std::string> faults_of(const nlohmann::json& result, const nlohmann::json& headend);

} // namespace zarven::tool

#endif
