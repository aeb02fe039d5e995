// A comparison for a person: one line that sums up, then what differs, group by group. What is the same in
// both is not listed.

#ifndef RECALCULO_COMPARISON_TEXT_H
#define RECALCULO_COMPARISON_TEXT_H

#include <string>
#include <vector>

#include "placement/change/comparison.h"
#include "report/caution_text.h"
#include "report/terminal.h"

namespace zarven::tool {

/// How the two results are called.
struct ComparedFiles {
    std::string before;
    std::string after;
};

/// "A in 1 out 2", and several with commas between them.
std::string places_text(const std::vector<Place>& places, const Labels& labels, const TextStyle& style);

/// By default as for a file, in UTF-8.
std::string comparison_text(const Comparison& comparison, const ComparedFiles& files,
                            const TextStyle& style = {}, Extent extent = Extent::few_of_each);

} // namespace zarven::tool

#endif
