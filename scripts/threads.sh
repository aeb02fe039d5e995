#!/usr/bin/env bash
# Engines in parallel under ThreadSanitizer: the corpus of head-ends in four threads at once, while another thread
# changes the log mask. Every result must be the one that is recorded.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
source scripts/everywhere_program.sh
need g++

export work=build/threads cxx=g++
mkdir -p "$work"
compile_all src/*/*.cpp "${everywhere_harness[@]}" -- -O1 -g1 -fsanitize=thread
g++ -fsanitize=thread "$work"/*.o -o "$work/everywhere"
# The sanitizer wants the addresses of its own choice.
TSAN_OPTIONS=halt_on_error=1 setarch --addr-no-randomize "$work/everywhere" --threads 4 tests/everywhere/recorded
