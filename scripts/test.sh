#!/usr/bin/env bash
# test.sh [PRESET...]: builds and runs every test, with g++ unless other presets are named (gcc, clang, debug,
# asan, ubsan, and i686 and armhf for the 32-bit targets; see CMakePresets.json).
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
[ $# -gt 0 ] || set -- gcc
need "${BUILD_PACKAGES[@]}" "${TEST_PACKAGES[@]}"

for preset in "$@"; do
    case $preset in
    clang) need clang ;;
    i686) need "${I686_PACKAGES[@]}" && foreign i386 "${FOREIGN_PACKAGES[@]}" ;;
    armhf) need "${ARMHF_PACKAGES[@]}" && foreign armhf "${FOREIGN_PACKAGES[@]}" ;;
    esac
    echo "== $preset"
    cmake --preset "$preset" >/dev/null
    cmake --build --preset "$preset" -- --quiet
done
# Built first, run last: the closing line of the last run is the last line.
for preset in "$@"; do
    ctest --preset "$preset" --parallel "$(nproc)"
done
