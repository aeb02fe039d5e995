// The option --live, which writes the planner's page with the head-end inside.

#ifndef RECALCULO_COMMANDS_LIVE_OUTPUT_H
#define RECALCULO_COMMANDS_LIVE_OUTPUT_H

#include <string>

#include "headend/headend.h"

namespace zarven::tool {

/// Writes the page to a file. It is looked for where the program was installed or built. Throws `Failure`.
void write_live_page(const std::string& path, const Headend& headend);

} // namespace zarven::tool

#endif
