// The log and clock of the benchmarks: nothing reaches the system, nothing waits.
//
// A line costs what a host makes of it, so the benchmarks take it three ways: silent (syslog returns at
// once), formatted (into a buffer), and masked (setlogmask keeps the debug level out, and the library knows
// it). A recording takes down the format and the arguments of every line, so that the same lines can be
// emitted again, alone: the floor under the run that wrote them.

#ifndef ZARVEN_BENCH_BITACORA_H
#define ZARVEN_BENCH_BITACORA_H

#include <cstddef>

namespace bitacora {

enum class Modo { callada, formateada, enmascarada, grabando };

// What syslog does from now on; forgets the lines counted and recorded.
void poner(Modo modo);

// Lines since the last poner().
std::size_t lineas();

// Emits the recorded lines again, in the mode given.
void repetir(Modo modo);

} // namespace bitacora

#endif
