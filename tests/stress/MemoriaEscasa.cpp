#include "stress/MemoriaEscasa.h"

#include <cstdlib>
#include <new>

namespace escasa {

namespace {

bool vigilando = false;
Fallo modo = Fallo::UNO;
std::size_t cual = 0;
std::size_t cuenta = 0;
std::size_t entregados = 0;

bool toca() {
    if (!vigilando)
        return false;
    const std::size_t n = cuenta++;
    return n == cual || (n > cual && modo == Fallo::DESDE_AHI);
}

void* pedir(std::size_t bytes) noexcept {
    if (toca())
        return nullptr;
    void* bloque = std::malloc(bytes == 0 ? 1 : bytes);
    entregados += bloque != nullptr;
    return bloque;
}

void devolver(void* bloque) noexcept {
    entregados -= bloque != nullptr;
    std::free(bloque);
}

void* exigir(std::size_t bytes) {
    void* bloque = pedir(bytes);
    if (bloque == nullptr)
        throw std::bad_alloc();
    return bloque;
}

} // namespace

void fallar(std::size_t peticion, Fallo fallo) {
    cual = peticion;
    modo = fallo;
    cuenta = 0;
    vigilando = true;
}

void basta() {
    vigilando = false;
}

std::size_t pedidas() {
    return cuenta;
}

std::size_t vivos() {
    return entregados;
}

} // namespace escasa

void* operator new(std::size_t bytes) {
    return escasa::exigir(bytes);
}
void* operator new[](std::size_t bytes) {
    return escasa::exigir(bytes);
}
void* operator new(std::size_t bytes, const std::nothrow_t&) noexcept {
    return escasa::pedir(bytes);
}
void* operator new[](std::size_t bytes, const std::nothrow_t&) noexcept {
    return escasa::pedir(bytes);
}
void operator delete(void* bloque) noexcept {
    escasa::devolver(bloque);
}
void operator delete[](void* bloque) noexcept {
    escasa::devolver(bloque);
}
void operator delete(void* bloque, std::size_t) noexcept {
    escasa::devolver(bloque);
}
void operator delete[](void* bloque, std::size_t) noexcept {
    escasa::devolver(bloque);
}
void operator delete(void* bloque, const std::nothrow_t&) noexcept {
    escasa::devolver(bloque);
}
void operator delete[](void* bloque, const std::nothrow_t&) noexcept {
    escasa::devolver(bloque);
}
