// Digests: of a text as it grows, of what an engine has loaded, of what a run has placed. The same on every
// platform, and made without taking memory, so that they can be had in the middle of anything.

#ifndef ZARVEN_TESTS_HUELLA_H
#define ZARVEN_TESTS_HUELLA_H

#include <cstdint>
#include <string_view>

#include "tRecalculo.h"

namespace huella {

// FNV-1a of 64 bits.
class Huella {
public:
    void texto(std::string_view bytes) {
        for (const char uno : bytes)
            mezclar(static_cast<unsigned char>(uno));
        mezclar(0);
    }
    void numero(std::int64_t n) {
        for (int bit = 0; bit < 64; bit += 8)
            mezclar(static_cast<unsigned char>(static_cast<std::uint64_t>(n) >> bit));
    }
    std::uint64_t valor() const { return suma; }

private:
    void mezclar(unsigned char byte) { suma = (suma ^ byte) * 1099511628211U; }
    std::uint64_t suma = 14695981039346656037U;
};

// Everything that loading has brought: modules, services with their PIDs, clones, home channels.
std::uint64_t cargado(const zarven::tRecalculo& motor);

// What a run leaves: the modules of the result, the services left out, the clones that wait.
std::uint64_t resultado(const zarven::tRecalculo& motor);

// A map of modules alone.
std::uint64_t modulos(const zarven::tMapaModulos& mapa);

} // namespace huella

#endif
