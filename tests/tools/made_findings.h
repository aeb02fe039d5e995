// Findings of the audit as tests need them.

#ifndef RECALCULO_MADE_FINDINGS_H
#define RECALCULO_MADE_FINDINGS_H

#include <string>
#include <vector>

#include "placement/audit/finding.h"

namespace zarven::tool {

inline Finding broken(const std::string& problem, const std::string& subject = "") {
    return {subject, problem, true, false, {}};
}

inline Finding broken_limit(const std::string& problem, const std::string& mac) {
    return {"module " + mac, problem, true, true, {mac}};
}

inline Finding note(const std::string& problem, const std::string& subject = "") {
    return {subject, problem, false, false, {}};
}

} // namespace zarven::tool

#endif
