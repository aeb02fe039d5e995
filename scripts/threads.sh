#!/usr/bin/env bash
# Engines in parallel under ThreadSanitizer: the corpus of head-ends in four threads at once, while another thread
# changes the log mask. Every result must be the one that is recorded.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
need g++

folder=build/threads
mkdir -p "$folder"
# shellcheck disable=SC2016
printf '%s\n' src/*/*.cpp tests/everywhere/*.cpp tests/support/{Testigo,Huella,Cabeceras}.cpp bench/Generador.cpp |
    xargs -P "$(nproc)" -I '{}' bash -c '
        object=$0/$(tr / _ <<<"$1").o
        ${CMAKE_CXX_COMPILER_LAUNCHER-} g++ -std=c++17 -O1 -g1 -fsanitize=thread -Iinclude -Itests -Ibench -c -o "$object" "$1"
    ' "$folder" '{}'
g++ -fsanitize=thread "$folder"/*.o -o "$folder/everywhere"
# The sanitizer wants the addresses of its own choice.
TSAN_OPTIONS=halt_on_error=1 setarch --addr-no-randomize "$folder/everywhere" --threads 4 tests/everywhere/recorded
