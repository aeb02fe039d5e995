// What texts and pages say of cautions in the same words: a few of each kind, and the number of the others.

#ifndef RECALCULO_CAUTION_TEXT_H
#define RECALCULO_CAUTION_TEXT_H

#include <cstddef>
#include <string>
#include <vector>

#include "placement/audit/caution.h"
#include "report/message_digest.h"
#include "report/terminal.h"

namespace zarven::tool {

using Extent = MessageDigest::Extent;

/// The cautions of one kind; those told first, and then the others.
struct CautionGroup {
    /// What they are, of many.
    const char* name = "";
    std::vector<Finding> told;
    std::vector<Finding> others;
};

/// By kind, in the order of these.
std::vector<CautionGroup> groups_of(const std::vector<Caution>& cautions, Extent extent);

/// A heading and a line for each that is told; empty where there is none. `where` ends the heading.
std::string cautions_text(const std::vector<Caution>& cautions, const TextStyle& style, Extent extent,
                          const std::string& where = "");

/// The same for the end of a report, after an empty line.
std::string closing_cautions_text(const std::vector<Caution>& cautions, const TextStyle& style, Extent extent,
                                  const std::string& where = "");

} // namespace zarven::tool

#endif
