#!/usr/bin/env bash
# bench.sh [--against COMMIT] [--filter REGEX]: measures whole runs and prints one table with ratios, then the
# primitives, the memory, and the instructions of one fixed run. With --against, the same benchmark also runs
# on the library as it was at that commit (the plain reading of the pass, before it knew of masked levels, is
# 6a4f509). The largest plain runs take minutes; --filter leaves some out.
# bench.sh --choose: the search of `recalculo choose` alone: the states it tries in a second against loading and
# running anew, and what it finds on generated head-ends in 1, 5 and 20 seconds against the engine, the optimum
# and the bound. Half an hour on two cores at the most.
# bench.sh --size: the trials of `recalculo size` alone, rehearsed against loaded and run anew: trials a second and
# how many times as many.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
against='' filter=. choose='' size=
while [ $# -gt 0 ]; do
    case $1 in
    --choose) choose=1; shift; continue ;;
    --size) size=1; shift; continue ;;
    --against) against=$2 ;;
    --filter) filter=$2 ;;
    *) echo "bench.sh: unknown option $1; expected --against COMMIT, --filter REGEX, --choose or --size" >&2; exit 2 ;;
    esac
    shift 2
done
need "${BUILD_PACKAGES[@]}" "${TEST_PACKAGES[@]}" libbenchmark-dev valgrind git g++-i686-linux-gnu

build=build/bench
if [ -n "$size" ]; then
    cmake -S . -B $build -G Ninja -DCMAKE_BUILD_TYPE=Release -DRECALCULO_BENCH=ON >/dev/null
    cmake --build $build --target sizing_bench | tail -n 1
    $build/bench/sizing_bench 2>/dev/null
    exit
fi
if [ -n "$choose" ]; then
    need coinor-cbc
    cmake -S . -B $build -G Ninja -DCMAKE_BUILD_TYPE=Release -DRECALCULO_BENCH=ON >/dev/null
    cmake --build $build --target choosing_bench choosing_table | tail -n 1
    $build/bench/choosing_bench 2>/dev/null
    echo
    $build/bench/choosing_table make $build/choosing
    for program in "$build"/choosing/*.lp; do
        [ -f "${program%.lp}.txt" ] || cbc "$program" sec 25 solve >"${program%.lp}.txt"
    done
    $build/bench/choosing_table print $build/choosing 2
    exit
fi
cmake -S . -B $build -G Ninja -DCMAKE_BUILD_TYPE=Release -DRECALCULO_BENCH=ON >/dev/null
cmake --build $build --target Recalculo_bench Primitivas_bench memoria tabla | tail -n 1
measure() { # FILE [LIBRARY]
    LD_PRELOAD=${2-} $build/bench/Recalculo_bench --benchmark_filter="$filter" --benchmark_out="$1" \
        --benchmark_out_format=json >/dev/null
}

files=("$build/now.json")
measure $build/now.json
if [ -n "$against" ]; then
    tree=$(mktemp -d)
    trap 'rm -rf "$tree"' EXIT
    git archive "$against" | tar -x -C "$tree"
    g++ -std=c++17 -O3 -DNDEBUG -fPIC -shared -U_FORTIFY_SOURCE -I"$tree/include" "$tree"/src/*/*.cpp \
        -o "$tree/before.so"
    measure $build/before.json "$tree/before.so"
    files+=("$build/before.json")
fi

$build/bench/tabla "${files[@]}"
echo
$build/bench/Primitivas_bench 2>/dev/null
echo
$build/bench/memoria 8000
# The same on 32 bits, through the loader that comes with the cross compiler.
cross=/usr/i686-linux-gnu/lib
i686-linux-gnu-g++ -std=c++17 -O2 -Iinclude -Ibench bench/{Memoria,Bitacora,Generador}.cpp src/*/*.cpp \
    -Wl,--dynamic-linker=$cross/ld-linux.so.2 -Wl,-rpath,$cross -o $build/memoria32
$build/memoria32 8000
[ -z "$against" ] || { printf 'before: ' && LD_PRELOAD="$tree/before.so" $build/bench/memoria 8000; }
echo
valgrind --tool=callgrind --callgrind-out-file=$build/callgrind.out $build/bench/memoria 2000 2>&1 |
    sed -n 's/.*Collected : /Instructions of loading and running 2000 services, silent log: /p'
