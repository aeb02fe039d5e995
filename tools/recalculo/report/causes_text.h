// What reports begin with where services are not placed: how many each cause keeps out, and which limit to
// raise.

#ifndef RECALCULO_CAUSES_TEXT_H
#define RECALCULO_CAUSES_TEXT_H

#include <string>
#include <vector>

#include "placement/result.h"
#include "report/terminal.h"

namespace zarven::tool {

/// The limit whose raise places most, in a sentence; empty where none was looked for.
std::string advice_sentence(const Result& result);

/// The causes with an empty line after them; empty if nothing is kept out or no reasons are told.
std::string causes_text(const Result& result, const TextStyle& style);

} // namespace zarven::tool

#endif
