// Numbers as they stand in sentences.

#ifndef RECALCULO_BASE_COUNTED_H
#define RECALCULO_BASE_COUNTED_H

#include <cstdint>
#include <string>
#include <string_view>

namespace zarven::tool {

/// "1 module", "2 modules": the number and the thing, which takes an s in the plural, or es as "wish" does.
std::string counted(std::uint64_t number, std::string_view thing);

} // namespace zarven::tool

#endif
