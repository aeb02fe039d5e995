#!/usr/bin/env bash
# mutate.sh [--again] [--jobs N] [FILE...]: breaks src/ (or these files of it), one change at a time, and runs the
# library's test programs on each broken library, those first that have killed most, what runs long last, until one
# fails. A mutant that no program notices is shown; it needs a test, or, when it behaves as the library does, a line with
# the reason in tests/equivalent_mutants.txt. --again tries only what survived before or was not tried, so that a run that
# was ended goes on; it holds what was killed before to be killed still. The score at the end is of all the files named.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
need "${BUILD_PACKAGES[@]}" "${TEST_PACKAGES[@]}" clang-19 python3

cmake --preset gcc >/dev/null
cmake --build --preset gcc -- --quiet
# The random runs of a mutant can log without end, and a test program may wait for ever: mutate.py bounds each.
exec python3 scripts/mutate.py --build build/gcc --report build/mutants.json "$@"
