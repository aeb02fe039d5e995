#!/usr/bin/env bash
# test.sh [--library] [PRESET...]: builds and runs every test, with g++ unless other presets are named (gcc, clang, clang-19,
# debug, asan, ubsan or sanitizers for both, and i686 and armhf for the 32-bit targets; see CMakePresets.json).
# --library leaves the tool and its tests out.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
tool=ON
if [ "${1-}" = --library ]; then tool=OFF && shift; fi
[ $# -gt 0 ] || set -- gcc
need "${BUILD_PACKAGES[@]}" "${TEST_PACKAGES[@]}"

for preset in "$@"; do
    architecture=''
    case $preset in
    clang | clang-19) need "$preset" ;;
    asan | ubsan | sanitizers) need "${SANITIZER_PACKAGES[@]}" ;;
    i686) need "${I686_PACKAGES[@]}" && architecture=i386 ;;
    armhf) need "${ARMHF_PACKAGES[@]}" && architecture=armhf ;;
    esac
    [ "$tool" = OFF ] || [ -z "$architecture" ] || foreign "$architecture" "${FOREIGN_PACKAGES[@]}"
    echo "== $preset"
    cmake --preset "$preset" -DRECALCULO_TOOL=$tool >/dev/null
    cmake --build --preset "$preset" -- --quiet
done
# Built first, run last: the closing line of the last run is the last line.
for preset in "$@"; do
    ctest --preset "$preset" --parallel "$(nproc)"
done
