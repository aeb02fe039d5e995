// Small head-ends from a seed, for runs that are made by the thousand.

#ifndef ZARVEN_TESTS_CABECERAS_H
#define ZARVEN_TESTS_CABECERAS_H

#include <cstdint>

#include "Generador.h"

namespace cabeceras {

// Two or three modules, up to twelve services, with clones and transcoding.
generador::Parametros pequena(std::uint32_t semilla);

// A seed whose run gathers a stream in unify, exchanges services in optimize, attaches clones and places
// everything, in the fewest lines of sixty thousand seeds.
constexpr std::uint32_t CON_TODO = 27559;

// One that makes the same and leaves services out, some after an exchange that failed half way.
constexpr std::uint32_t CON_FALLOS = 24191;

} // namespace cabeceras

#endif
