// The log and the clock of runs that are made by the thousand: they keep a digest and some counts, take no
// memory, and belong each to its thread. They can end a run: a call of syslog or sleep throws.

#ifndef ZARVEN_TESTS_TESTIGO_H
#define ZARVEN_TESTS_TESTIGO_H

#include <cstddef>

#include "support/Huella.h"

namespace testigo {

// What the calls of this thread have added up to.
struct Visto {
    std::size_t llamadas = 0; // of both functions
    std::size_t lineas = 0;
    std::size_t segundos = 0;
    huella::Huella huella; // of level and text of each line, and of each pause
};

// What a call throws that ends a run.
struct Detenida {};

constexpr std::size_t NUNCA = static_cast<std::size_t>(-1);

// Forgets what was seen and the listener; the call of that number, from 0, ends the run.
void empezar(std::size_t detenerEn = NUNCA);

const Visto& visto();

// Calls the listener with the level and the text of each line, or with level -1 and no text for a pause.
void escuchar(void (*oyente)(int nivel, const char* texto, unsigned segundos));

} // namespace testigo

#endif
