#!/usr/bin/env bash
# Runs the library's test programs of the g++ build under valgrind, which must find neither an error nor a
# leak.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
need "${BUILD_PACKAGES[@]}" "${TEST_PACKAGES[@]}" valgrind

cmake --preset gcc >/dev/null
cmake --build --preset gcc -- --quiet
# valgrind is some thirty times slower: a few random runs are enough here. A test that counts frees has an operator
# delete of its own, which stays.
export RECALCULO_RANDOM_RUNS=40
printf '%s\n' build/gcc/tests/{reglas,model,engine,algorithm}/*_test |
    xargs -P "$(nproc)" -I '{}' valgrind --quiet --leak-check=full --error-exitcode=1 \
        --soname-synonyms=somalloc=nouserintercepts '{}' --gtest_brief=1
