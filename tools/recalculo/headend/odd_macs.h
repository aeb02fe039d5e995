// Warnings of modules whose MAC is one that no module has. The engine takes any text, so that they stop
// nothing.

#ifndef RECALCULO_ODD_MACS_H
#define RECALCULO_ODD_MACS_H

#include <string>
#include <vector>

#include "headend/headend.h"

namespace zarven::tool {

/// The first few, and how many there are besides; `file` is how the head-end is called.
std::vector<std::string> odd_mac_messages(const std::string& file, const Headend& headend);

} // namespace zarven::tool

#endif
