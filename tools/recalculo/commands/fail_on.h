// The option --fail-on, by which a script learns from the exit code what became of a placement. The report is
// written first, whatever the code.

#ifndef RECALCULO_COMMANDS_FAIL_ON_H
#define RECALCULO_COMMANDS_FAIL_ON_H

#include <string>
#include <vector>

#include "placement/result.h"

namespace zarven::tool {

constexpr const char* fail_on_broken = "broken";
constexpr const char* fail_on_left_out = "left-out";

/// Throws `Failure` if the placement of `file` is one of these: broken first, if it is both.
void fail_on(const std::vector<std::string>& outcomes, const Counts& counts,
             const std::vector<Finding>& findings, const std::string& file);

} // namespace zarven::tool

#endif
