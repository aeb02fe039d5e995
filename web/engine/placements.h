// The results of the head-ends that were run last. The page asks for the same one again and again, to compare
// with and to export, and says what it means by the text alone. A handful, each of some megabytes.

#ifndef RECALCULO_WEB_PLACEMENTS_H
#define RECALCULO_WEB_PLACEMENTS_H

#include <string>
#include <vector>

#include "placement/result.h"

namespace zarven::web {

struct Placement {
    std::string text;
    /// What outputs are to keep free, as the tool's --reserve; empty for the usual, or what the result tells.
    std::string reserve;
    tool::Result result;
    /// What the tool says of the head-end before it runs it.
    std::vector<std::string> warnings;
};

/// The placement of a head-end, which is run unless it was among the last, or of the result that the text is.
/// Good until the next call but two. `file` is for messages. Throws `Failure`.
const Placement& placement_of(const std::string& file, const std::string& text, const std::string& reserve);

} // namespace zarven::web

#endif
