// What to change so that everything fits, for a person.

#ifndef RECALCULO_SIZING_TEXT_H
#define RECALCULO_SIZING_TEXT_H

#include <cstddef>
#include <string>

#include "placement/sizing/sizing.h"
#include "report/terminal.h"

namespace zarven::tool {

/// The limits of a kind of module, in one line.
std::string describe_kind(const Module& kind);

/// A summary line, the answer for further modules with all that was tried, and the limits worth raising; by
/// default as for a file, in UTF-8.
std::string sizing_text(const Sizing& sizing, const TextStyle& style = {});

/// How far it is: "3 of 12 runs".
std::string runs_in_figures(std::size_t done, std::size_t planned);

} // namespace zarven::tool

#endif
