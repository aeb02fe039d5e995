#!/usr/bin/env bash
# abi.sh [--renew]: compares the binary interface of the shared library with the baselines in packaging/abi, for
# x86-64 and for ARM: the exported symbols, in the form of Debian's packages, and, since symbols tell nothing of
# layouts, the types behind them, as libabigail describes them. --renew writes the baselines anew.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
need "${BUILD_PACKAGES[@]}" "${ARMHF_PACKAGES[@]}" abigail-tools dpkg-dev xz-utils

renew=${1:-}
[ -z "$renew" ] || [ "$renew" = --renew ] || { echo "abi.sh: unknown option $renew; expected --renew" >&2; exit 2; }
baselines=packaging/abi
version=$(sed -n 's/^project(recalculo VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failed=0

# symbols LIBRARY ARCHITECTURE: the same list serves every architecture.
symbols() {
    local file=$baselines/librecalculo1.symbols
    local gensymbols=(dpkg-gensymbols -plibrecalculo1 -v"$version" -a"$2" -e"$1")
    if [ -n "$renew" ]; then
        # A symbol keeps the version in which it came.
        [ ! -f "$file" ] || gensymbols+=(-I"$file")
        "${gensymbols[@]}" -O"$file"
    else
        # What it prints is the difference.
        "${gensymbols[@]}" -c4 -I"$file" -O/dev/null || failed=1
    fi
}

# types LIBRARY ARCHITECTURE
types() {
    local file=$baselines/$2.abi.xz
    abidw --exported-interfaces-only --drop-undefined-syms --drop-private-types --no-parameter-names --no-show-locs \
        --no-corpus-path --no-comp-dir-path --headers-dir include --out-file "$work/$2.abi" "$1"
    if [ -n "$renew" ]; then
        xz --stdout "$work/$2.abi" >"$file"
    else
        xz --decompress --stdout "$file" >"$work/baseline.abi"
        abidiff "$work/baseline.abi" "$work/$2.abi" || failed=1
    fi
}

for architecture in amd64 armhf; do
    toolchain=()
    [ "$architecture" = amd64 ] || toolchain=(--toolchain "cmake/toolchains/$architecture.cmake")
    # Paths of this machine have no place in a baseline.
    cmake -S . -B "$work/$architecture" -G Ninja "${toolchain[@]}" -DRECALCULO_DEVELOPER=OFF \
        -DCMAKE_CXX_FLAGS="-g -O2 -ffile-prefix-map=$PWD=." >/dev/null
    cmake --build "$work/$architecture" | tail -n 1
    library=$(readlink -f "$work/$architecture/librecalculo.so")
    symbols "$library" "$architecture"
    types "$library" "$architecture"
done
[ -n "$renew" ] && exit
[ "$failed" -eq 0 ] || echo "The binary interface differs from packaging/abi; CONTRIBUTING.md tells what to do."
exit $failed
