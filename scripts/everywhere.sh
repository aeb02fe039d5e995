#!/usr/bin/env bash
# everywhere.sh [--record]: the same transcripts everywhere. Builds the library's sources with each compiler, with the
# flags of distributions and for 32-bit machines, and holds the runs of a corpus of head-ends against what is recorded
# in tests/everywhere/recorded. Goes through all and tells at the end which of them failed.
#
# --record writes what is recorded anew, by the first of them (g++ -O2): for a change of the engine's behaviour that is
# meant. Read the difference of the whole transcripts before you commit it.
set -uo pipefail
cd "$(dirname "$0")/.." || exit
source scripts/packages.sh
source scripts/everywhere_program.sh
need g++ clang "${I686_PACKAGES[@]}" "${ARMHF_PACKAGES[@]}"

folder=build/everywhere
recorded=tests/everywhere/recorded
failed=()

# build NAME COMPILER 'FLAGS' 'FLAGS OF THE LIBRARY ALONE': the host under test is ours, and is no matter of theirs.
build() {
    export work=$folder/$1 cxx=$2
    mkdir -p "$work"
    local flags library
    read -ra flags <<<"$3"
    read -ra library <<<"$4"
    { compile_all "${everywhere_harness[@]}" -- "${flags[@]}" -U_FORTIFY_SOURCE &&
        compile_all src/*/*.cpp -- "${flags[@]}" "${library[@]}" &&
        "$cxx" "${flags[@]}" "$work"/*.o -pthread -o "$work/everywhere"; } >"$work/messages" 2>&1
}

# try NAME COMPILER 'FLAGS' 'FLAGS OF THE LIBRARY ALONE' [EMULATOR...]
try() {
    local name=$1
    printf '%-64s' "$2 $3 $4"
    if ! build "$1" "$2" "$3" "$4"; then
        echo 'does not build:'
        tail -n 5 "$folder/$name/messages"
        failed+=("$2 $3 $4")
    elif ! "${@:5}" "$folder/$name/everywhere" "$recorded" >"$folder/$name/answer"; then
        tail -n 1 "$folder/$name/answer"
        failed+=("$2 $3 $4")
    else
        tail -n 1 "$folder/$name/answer"
    fi
}

if [ "${1-}" = --record ]; then
    build gcc-O2 g++ -O2 '' || { cat "$folder/gcc-O2/messages"; exit 1; }
    "$folder/gcc-O2/everywhere" --record "$recorded"
    git diff --stat -- "$recorded"
    exit
fi

for cxx in g++ clang++; do
    for level in -O0 -O2 -O3 -Os; do
        try "$cxx$level" "$cxx" "$level" ''
    done
    try "$cxx-unsigned" "$cxx" '-O2 -funsigned-char' ''
    number=0
    for fortify in '-D_FORTIFY_SOURCE=2' '-Wp,-D_FORTIFY_SOURCE=2' '-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2' \
        '-Wp,-U_FORTIFY_SOURCE,-D_FORTIFY_SOURCE=2' '-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=3'; do
        try "$cxx-fortify$((number += 1))" "$cxx" -O2 "$fortify"
    done
done
for level in -O0 -O2; do
    try "i686$level" i686-linux-gnu-g++ "$level" '' qemu-i386 -L /usr/i686-linux-gnu
    try "armhf$level" arm-linux-gnueabihf-g++ "$level -Wno-psabi" '' qemu-arm -L /usr/arm-linux-gnueabihf
done

echo "== ${#failed[@]} of the builds failed"
[ ${#failed[@]} -eq 0 ] || printf '%s\n' "${failed[@]}"
[ ${#failed[@]} -eq 0 ]
