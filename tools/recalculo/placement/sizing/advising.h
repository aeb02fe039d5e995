// The limits that a report advises to raise. A report is to come at once: so the runs that it may take are
// bounded, and where there are too many limits for them, those of the modules are tried that are nearest to
// taking most of the services left out.

#ifndef RECALCULO_SIZING_ADVISING_H
#define RECALCULO_SIZING_ADVISING_H

#include <cstddef>
#include <cstdint>
#include <string>

#include "headend/headend.h"
#include "placement/advice.h"
#include "placement/result.h"

namespace zarven::tool {

/// As many as a second or less has time for.
inline constexpr std::uint32_t automatic_trials = UINT32_MAX;

/// How many runs those are for so many services.
std::size_t automatic_trials_for(std::size_t services);

/// Advice for a head-end whose result, with reasons, is `now`; empty if everything is placed. Makes about
/// `trials` runs at the most; none is given where one of them fails. The log must be masked.
Advice advice_for(const Headend& headend, const std::string& file, const Result& now, std::uint32_t trials);

} // namespace zarven::tool

#endif
