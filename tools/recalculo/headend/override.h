// Changes to a head-end for one run. Each is a text PATH=VALUE, such as `modules[2].pids_max=64`: keys with
// dots between them, `[n]` for an entry of a list, counted from 0, `[MAC]` for a module, `[*]` for all
// entries. The value is JSON; what is not JSON is a text. The changes are made to the document, before
// anything of it is checked.

#ifndef RECALCULO_OVERRIDE_H
#define RECALCULO_OVERRIDE_H

#include <string>
#include <vector>

#include "headend/headend.h"

namespace zarven::tool {

/// Reads a head-end with the changes made in their order. A value that does not fit is told with the change
/// that brought it. Throws `Failure`.
Headend read_headend(const std::string& file, const std::string& text,
                     const std::vector<std::string>& settings);

} // namespace zarven::tool

#endif
