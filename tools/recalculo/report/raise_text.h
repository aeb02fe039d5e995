// A raised limit in words, in several reports.

#ifndef RECALCULO_RAISE_TEXT_H
#define RECALCULO_RAISE_TEXT_H

#include <string>

#include "placement/raise.h"

namespace zarven::tool {

/// "PID budget from 15 to 30".
std::string change_of(const Raise& raise);

} // namespace zarven::tool

#endif
