// A digest of what runs do and end in, for comparing thousands of them with what was recorded once.

#ifndef ZARVEN_TESTS_RESUMEN_H
#define ZARVEN_TESTS_RESUMEN_H

#include <cstdint>
#include <cstdio>
#include <string>

namespace resumen {

// FNV-1a of 64 bits: the same on every platform.
class Resumen {
public:
    void anadir(const std::string& texto) {
        for (const char letra : texto)
            mezclar(static_cast<unsigned char>(letra));
        mezclar('\n');
    }
    std::string texto() const {
        char cifras[17];
        std::snprintf(cifras, sizeof cifras, "%08x%08x", static_cast<unsigned>(valor >> 32),
                      static_cast<unsigned>(valor & 0xffffffffU));
        return cifras;
    }

private:
    void mezclar(unsigned char byte) { valor = (valor ^ byte) * 0x100000001b3U; }
    std::uint64_t valor = 0xcbf29ce484222325U;
};

} // namespace resumen

#endif
