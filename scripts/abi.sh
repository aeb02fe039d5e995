#!/usr/bin/env bash
# abi.sh [--renew [VERSION]]: compares the binary interface of the shared library with the baselines in packaging/abi:
# the exported symbols, which stand in the form of Debian's packages, and, since symbols tell nothing of layouts, the
# types behind them, as libabigail describes them. The types are those of x86-64 and ARM; the symbols are the same for
# every target, compiler and flag. --renew writes the baselines anew; new symbols came with VERSION, or with the present
# one.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
need "${BUILD_PACKAGES[@]}" "${ARMHF_PACKAGES[@]}" clang abigail-tools dpkg-dev xz-utils

renew=${1:-}
[ -z "$renew" ] || [ "$renew" = --renew ] || { echo "abi.sh: unknown option $renew; expected --renew" >&2; exit 2; }
version=${2:-$(scripts/version.sh)}
baselines=packaging/abi
list=$baselines/librecalculo1.symbols
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failed=0

# build NAME ARGUMENT...: configures and builds the library alone in a folder of that name.
build() {
    local name=$1
    shift
    cmake -S . -B "$work/$name" -G Ninja -DRECALCULO_DEVELOPER=OFF -DCMAKE_UNITY_BUILD=ON "$@" >/dev/null
    cmake --build "$work/$name" -- --quiet
    library=$(readlink -f "$work/$name/librecalculo.so")
}

# same_symbols NAME: in both directions, which dpkg-gensymbols does for some versions only.
same_symbols() {
    sed -n 's/^ \([^@]*\)@.*/\1/p' "$list" | sort >"$work/listed"
    nm --dynamic --defined-only --format=just-symbols "$library" | sort >"$work/exported"
    diff --unchanged-line-format= --old-line-format="$1 does not export %L" --new-line-format="$1 exports besides %L" \
        "$work/listed" "$work/exported" || failed=1
}

# types ARCHITECTURE
types() {
    local file=$baselines/$1.abi.xz
    abidw --exported-interfaces-only --drop-undefined-syms --drop-private-types --no-parameter-names --no-show-locs \
        --no-corpus-path --no-comp-dir-path --headers-dir include --out-file "$work/$1.abi" "$library"
    if [ -n "$renew" ]; then
        xz --stdout "$work/$1.abi" >"$file"
    else
        xz --decompress --stdout "$file" >"$work/baseline.abi"
        abidiff "$work/baseline.abi" "$work/$1.abi" || failed=1
    fi
}

for architecture in amd64 armhf; do
    toolchain=()
    [ "$architecture" = amd64 ] || toolchain=(--toolchain "cmake/toolchains/$architecture.cmake")
    # Paths of this machine have no place in a baseline.
    build "$architecture" "${toolchain[@]}" -DCMAKE_CXX_FLAGS="-g -O2 -ffile-prefix-map=$PWD=."
    # A symbol keeps the version in which it came.
    [ -z "$renew" ] || [ "$architecture" != amd64 ] ||
        dpkg-gensymbols -plibrecalculo1 -v"$version" -a"$architecture" -e"$library" -I"$list" -O"$list"
    same_symbols "$architecture"
    types "$architecture"
done

# What the optimizer keeps of the inline functions and constants is its own business, and none of the callers'.
for compiler in g++ clang++; do
    for flag in -O0 -Os -O3; do
        build "$compiler$flag" -DCMAKE_CXX_COMPILER="$compiler" -DCMAKE_CXX_FLAGS="$flag"
        same_symbols "$compiler $flag"
    done
done
[ "$failed" -eq 0 ] || echo "The binary interface differs from packaging/abi; CONTRIBUTING.md tells what to do."
exit $failed
