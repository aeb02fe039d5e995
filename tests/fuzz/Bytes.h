// What a fuzzer's bytes stand for: numbers and choices, zeros once they are used up.

#ifndef ZARVEN_TESTS_FUZZ_BYTES_H
#define ZARVEN_TESTS_FUZZ_BYTES_H

#include <cstddef>
#include <cstdint>
#include <string>

namespace fuzz {

class Bytes {
public:
    Bytes(const std::uint8_t* datos, std::size_t cuantos) : actual(datos), fin(datos + cuantos) {}

    bool quedan() const { return actual != fin; }
    unsigned byte() { return quedan() ? *actual++ : 0; }
    // Both ends count; at most 256 values.
    unsigned entre(unsigned min, unsigned max) { return min + byte() % (max - min + 1); }
    bool una_de(unsigned cuantas) { return byte() % cuantas == 0; }

    // As a rule a small number, sometimes any.
    unsigned short corto(unsigned pequeno = 8) {
        const unsigned primero = byte();
        return static_cast<unsigned short>(primero >= 248 ? byte() * 256 + byte() : primero % (pequeno + 1));
    }
    // As a rule some thousands, sometimes any.
    std::uint32_t largo() {
        const unsigned primero = byte();
        if (primero < 248)
            return primero * 200;
        std::uint32_t n = 0;
        for (int i = 0; i < 4; ++i)
            n = n << 8 | byte();
        return n;
    }
    std::string texto() {
        std::string resultado(entre(0, 12), ' ');
        for (char& letra : resultado)
            letra = static_cast<char>(byte());
        return resultado;
    }

private:
    const std::uint8_t* actual;
    const std::uint8_t* fin;
};

} // namespace fuzz

#endif
