#include "commands/fail_on.h"

#include <algorithm>

#include <fmt/format.h>

#include "base/counted.h"
#include "base/failure.h"
#include "report/summary_text.h"

namespace zarven::tool {

namespace {

bool has(const std::vector<std::string>& outcomes, const char* outcome) {
    return std::find(outcomes.begin(), outcomes.end(), outcome) != outcomes.end();
}

/// Everything that a viewer misses; empty if nothing is.
std::string without_place(const Counts& counts) {
    std::vector<std::string> parts;
    if (counts.left_out != 0)
        parts.push_back(counted(counts.left_out, "service") + " left out");
    if (counts.neither != 0)
        parts.push_back(counted(counts.neither, "service") + " neither placed nor left out");
    if (counts.clones_waiting != 0)
        parts.push_back(counted(counts.clones_waiting, "clone") + " waiting");
    return fmt::format("{}", fmt::join(parts, ", "));
}

} // namespace

void fail_on(const std::vector<std::string>& outcomes, const Counts& counts,
             const std::vector<Finding>& findings, const std::string& file) {
    const std::string broken = to_string(broken_among(findings));
    if (has(outcomes, fail_on_broken) && !broken.empty())
        throw Failure(fmt::format("{}: {}", file, broken), ExitCode::broken);
    const std::string missing = without_place(counts);
    if (has(outcomes, fail_on_left_out) && !missing.empty())
        throw Failure(fmt::format("{}: {}", file, missing), ExitCode::left_out);
}

} // namespace zarven::tool
