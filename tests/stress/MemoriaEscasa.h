// Memory that ends when it is told to: the operator new of a test program.

#ifndef ZARVEN_TESTS_MEMORIAESCASA_H
#define ZARVEN_TESTS_MEMORIAESCASA_H

#include <cstddef>

namespace escasa {

enum class Fallo { UNO, DESDE_AHI };

// The request of that number, counted from 0 and from here on, fails; with DESDE_AHI all after it, too.
void fallar(std::size_t peticion, Fallo fallo);
// No request fails any more.
void basta();

// Requests since fallar().
std::size_t pedidas();
// Blocks that are handed out.
std::size_t vivos();

} // namespace escasa

#endif
