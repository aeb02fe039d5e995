#!/usr/bin/env bash
# coverage.sh: runs the library's tests on a library that counts what they reach: lines and branches (g++, gcovr) and,
# for conditions of several parts, whether each part decides by itself (clang-19, MC/DC). Fails below 100 %, but for
# what tests/cannot_vary.txt names with its reason.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
need "${BUILD_PACKAGES[@]}" "${TEST_PACKAGES[@]}" gcovr clang-19 llvm-19 python3

export RECALCULO_RANDOM_RUNS=40 # what only luck reaches does not count
jobs=$(nproc)
cmake --preset gcc >/dev/null
cmake --build --preset gcc -- --quiet
mapfile -t tests < <(find "$PWD/build/gcc/tests" -name '*_test' -type f -perm -u+x -not -path '*/tools/*' | sort)

# object SOURCE FOLDER COMPILER FLAG...
object() {
    local source=$1 folder=$2
    shift 2
    "$@" -c "$PWD/$source" -o "$folder/$(basename "$source" .cpp).o"
}
export -f object

# library FOLDER COMPILER FLAG...: the library in that folder, made in a way of its own.
library() {
    local folder=build/$1 compiler=$2
    shift 2
    rm -rf "$folder"
    mkdir -p "$folder"
    printf '%s\n' src/*/*.cpp | xargs -P "$jobs" -I '{}' bash -c 'object "$@"' object '{}' \
        "$folder" "$compiler" -std=c++17 -O0 -g -fPIC -Iinclude "$@"
    "$compiler" -shared "$@" -Wl,-soname,librecalculo.so.1 "$folder"/*.o -o "$folder/librecalculo.so.1"
}

# run FOLDER: every test program with that library.
run() {
    printf '%s\n' "${tests[@]}" | LLVM_PROFILE_FILE=$PWD/build/$1/%p.profraw LD_LIBRARY_PATH=$PWD/build/$1 \
        xargs -P "$jobs" -I '{}' env '{}' --gtest_brief=1 >"build/$1/log" || { cat "build/$1/log"; exit 1; }
}

library coverage g++ --coverage -fprofile-update=atomic
run coverage
gcovr --root . --filter src/ --exclude-throw-branches --exclude-unreachable-branches --json build/coverage/lines.json \
    build/coverage

library mcdc clang++-19 -w -fprofile-instr-generate -fcoverage-mapping -fcoverage-mcdc
run mcdc
llvm-profdata-19 merge -o build/mcdc/all.profdata build/mcdc/*.profraw
llvm-cov-19 export build/mcdc/librecalculo.so.1 -instr-profile build/mcdc/all.profdata src >build/mcdc/conditions.json

python3 scripts/coverage.py build/coverage/lines.json build/mcdc/conditions.json tests/cannot_vary.txt
