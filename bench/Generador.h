// Head-ends from a seed, from two modules to a thousand, for the benchmarks and the random tests.
//
// The same parameters give the same head-end on every platform: the numbers come from std::mt19937 and are
// mapped to ranges here, because the distributions of the standard library differ from one to the next.

#ifndef ZARVEN_BENCH_GENERADOR_H
#define ZARVEN_BENCH_GENERADOR_H

#include <cstdint>
#include <random>

#include "tRecalculo.h"

namespace generador {

// How much the modules could carry, in bitrate and PIDs, against what the services need.
enum class Holgura {
    AMPLIA, // twice as much
    JUSTA,  // a little more
    ESCASA  // too little: services stay out
};

// Both ends count.
struct Rango {
    unsigned min;
    unsigned max;
};

struct Parametros {
    std::uint32_t semilla = 1;

    // The services. There are up to 65535 of them, clones apart.
    unsigned streams = 50;
    Rango serviciosPorStream = {10, 10};
    unsigned redes = 1; // original networks over which the streams are spread
    // The keys count from 1 in every stream, so that streams share them; otherwise each key is given once.
    bool clavesRepetidas = false;
    // The first stream has neither ONID nor TSID, as some cable line-ups have it.
    bool streamSinNumero = false;
    unsigned porcentajeTranscoding = 0; // of the services
    unsigned porcentajeHD = 30;         // of the services
    unsigned porcentajeClones = 0;      // of the services have a clone
    unsigned pidsPorServicio = 0;       // elementary-stream PIDs, which make the dumps longer

    // The modules. The first is the controller.
    unsigned modulos = 30;
    Rango entradas = {2, 2};
    Rango salidas = {2, 2};
    Rango bitrateSalida = {38000, 38000};
    Rango pidsModulo = {30, 30};
    // Transcoders of one kind on each module, drawn anew for SD, HD and AUX.
    Rango transcoders = {0, 0};

    Holgura holgura = Holgura::JUSTA;
};

// Numbers from a seed.
class Dado {
public:
    explicit Dado(std::uint32_t semilla) : motor(semilla) {}

    // From min to max, both included.
    unsigned entre(unsigned min, unsigned max);
    unsigned entre(const Rango& rango) { return entre(rango.min, rango.max); }
    bool porcentaje(unsigned cuanto) { return entre(1, 100) <= cuanto; }

private:
    std::mt19937 motor;
};

// Small head-ends, most of them too small for their services, of every kind: up to four modules, with clones,
// transcoding, shared keys, modules without inputs or outputs.
Parametros escasa(std::uint32_t semilla);

// Loads a head-end into an engine that is still empty. Throws std::logic_error when the engine refuses
// something, which no parameters make it do.
void cargar(zarven::tRecalculo& motor, const Parametros& parametros);

} // namespace generador

#endif
