// A head-end with modules that it does not have yet.

#ifndef RECALCULO_SIZING_FURTHER_MODULES_H
#define RECALCULO_SIZING_FURTHER_MODULES_H

#include <cstddef>

#include "headend/headend.h"

namespace zarven::tool {

/// The head-end with further modules of a kind. Their MACs follow all others, so that the engine fills them
/// last; they have no label.
Headend with_modules(const Headend& headend, const Module& kind, std::size_t number);

} // namespace zarven::tool

#endif
