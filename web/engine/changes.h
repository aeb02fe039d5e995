// What a change does, in the words of the tool's reports, beside the records of the comparison.

#ifndef RECALCULO_WEB_CHANGES_H
#define RECALCULO_WEB_CHANGES_H

#include <nlohmann/json.hpp>

#include "placement/change/comparison.h"

namespace zarven::web {

/// The figures in a sentence, and the words of each service's places, of each rename and of each input, in
/// the order of the comparison.
nlohmann::ordered_json told_change_of(const tool::Comparison& comparison);

/// The steps in which the inputs are tuned anew.
nlohmann::ordered_json told_order_of(const tool::ChangeOrder& order);

} // namespace zarven::web

#endif
