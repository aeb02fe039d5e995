#include "placement/audit/finding.h"

#include <set>

namespace zarven::tool {

std::string text_of(const Finding& finding) {
    return finding.subject.empty() ? finding.problem : finding.subject + ": " + finding.problem;
}

Broken broken_among(const std::vector<Finding>& findings) {
    Broken broken;
    std::set<std::string> services;
    for (const Finding& finding : findings)
        if (finding.is_broken && finding.is_limit)
            ++broken.limits;
        else if (finding.is_broken)
            services.insert(finding.subject.empty() ? finding.problem : finding.subject);
    broken.services = services.size();
    return broken;
}

std::vector<Finding> only(bool broken, const std::vector<Finding>& findings) {
    std::vector<Finding> some;
    std::copy_if(findings.begin(), findings.end(), std::back_inserter(some),
                 [broken](const Finding& finding) { return finding.is_broken == broken; });
    return some;
}

} // namespace zarven::tool
