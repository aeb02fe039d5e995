// How a test program starts: as GoogleTest's own do, with one option besides.

#include <cstdio>
#include <cstring>

#include <gtest/gtest.h>

#include "support/Transcripcion.h"

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--record") != 0) {
            std::fprintf(stderr, "%s: unknown argument %s; expected --record\n", argv[0], argv[i]);
            return 2;
        }
        grabado::grabarDesdeAhora();
    }
    return RUN_ALL_TESTS();
}
