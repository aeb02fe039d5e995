// memoria SERVICES: the most memory that a loaded engine and a run of it hold at once, per loaded service.
//
// Counted at operator new and delete, as asked for: the figure is the same on every run.

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>

#include "Bitacora.h"
#include "Medida.h"

namespace {

std::size_t vivos = 0;
std::size_t maximo = 0;

// In front of each block its size, at a distance that keeps the block aligned.
constexpr std::size_t CABECERA = alignof(std::max_align_t);

} // namespace

void* operator new(std::size_t n) {
    auto* bloque = static_cast<char*>(std::malloc(n + CABECERA));
    if (bloque == nullptr)
        throw std::bad_alloc();
    std::memcpy(bloque, &n, sizeof n);
    vivos += n;
    maximo = std::max(maximo, vivos);
    return bloque + CABECERA;
}

void operator delete(void* memoria) noexcept {
    if (memoria == nullptr)
        return;
    char* bloque = static_cast<char*>(memoria) - CABECERA;
    std::size_t n = 0;
    std::memcpy(&n, bloque, sizeof n);
    vivos -= n;
    std::free(bloque);
}

void operator delete(void* memoria, std::size_t) noexcept {
    operator delete(memoria);
}

int main(int argc, char** argv) {
    const unsigned servicios = argc == 2 ? static_cast<unsigned>(std::atoi(argv[1])) : 0;
    if (servicios < 500) {
        std::fprintf(stderr, "usage: memoria SERVICES (500 or more)\n");
        return 2;
    }
    bitacora::poner(bitacora::Modo::callada);
    zarven::tRecalculo motor;
    const std::size_t antes = vivos;
    generador::cargar(motor, medida::cabecera(servicios, generador::Holgura::ESCASA));
    const std::size_t cargado = vivos - antes;
    maximo = vivos;
    motor.Main_Recalculo();
    std::printf("%zu-bit, %u services: %zu bytes a service loaded, %.2f at the peak of a run\n",
                sizeof(void*) * 8, servicios, cargado / servicios,
                static_cast<double>(maximo - antes) / servicios);
    return 0;
}
