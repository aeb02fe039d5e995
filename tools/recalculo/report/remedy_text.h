// What would place a service, for a person.

#ifndef RECALCULO_REMEDY_TEXT_H
#define RECALCULO_REMEDY_TEXT_H

#include <string>

#include "placement/remedy/remedy.h"
#include "report/terminal.h"

namespace zarven::tool {

/// Beneath an explanation.
std::string remedies_text(const Remedies& remedies, const TextStyle& style);

} // namespace zarven::tool

#endif
