// What a harness demands: where it does not hold the program ends, which every fuzzer takes for a find.

#ifndef ZARVEN_TESTS_FUZZ_EXIGIR_H
#define ZARVEN_TESTS_FUZZ_EXIGIR_H

#include <cstdio>
#include <cstdlib>

namespace fuzz {

inline void exigir(bool condicion, const char* que) {
    if (condicion)
        return;
    std::fprintf(stderr, "does not hold: %s\n", que);
    std::abort();
}

} // namespace fuzz

#endif
