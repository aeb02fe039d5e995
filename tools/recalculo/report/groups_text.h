// What became of groups of services and of one-of groups, as reports tell it.

#ifndef RECALCULO_GROUPS_TEXT_H
#define RECALCULO_GROUPS_TEXT_H

#include <string>
#include <vector>

#include "placement/result.h"
#include "report/table.h"

namespace zarven::tool {

/// A group a line; empty without groups.
std::string groups_text(const std::vector<GroupResult>& groups, const TextStyle& style);

/// How many one-of groups there are, and those of which the best variant is not placed; empty without them.
std::string variants_text(const std::vector<VariantResult>& variants, const TextStyle& style);

/// "its best variant", "variant 2 of 3, left out".
std::string variant_in_words(const VariantResult& variant);

} // namespace zarven::tool

#endif
