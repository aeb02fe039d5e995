// The MAC by which a module is known. To the engine it is any text: it takes it as it stands, and fills the
// modules in the order of these texts. People write one MAC in several ways.

#ifndef RECALCULO_MAC_H
#define RECALCULO_MAC_H

#include <string>
#include <string_view>

namespace zarven::tool {

/// One spelling for all of a MAC: six pairs of capitals and digits with colons between them. What is no MAC
/// is its own.
std::string canonical_mac(std::string_view mac);

/// What is odd about it, as "is no MAC, which is six bytes as in 02:00:00:00:00:01"; empty for nothing.
std::string oddity_of_mac(std::string_view mac);

} // namespace zarven::tool

#endif
