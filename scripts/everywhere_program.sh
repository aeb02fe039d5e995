# shellcheck shell=bash disable=SC2034,SC2154
# Sourced by the scripts that build the program of tests/everywhere without CMake: what it is made of, and how a source
# is compiled.

everywhere_harness=(tests/everywhere/everywhere.cpp tests/everywhere/Corpus.cpp
    tests/support/{Testigo,Huella,Cabeceras}.cpp bench/Generador.cpp)

# compile SOURCE FLAG...: an object in $work, with $cxx.
compile() {
    local object=$1
    object=$work/${object//\//_}.o
    # shellcheck disable=SC2086
    ${CMAKE_CXX_COMPILER_LAUNCHER-} "$cxx" -std=c++17 -Iinclude -Itests -Ibench -c -o "$object" "${@:2}" "$1"
}
export -f compile

# compile_all SOURCE... -- FLAG...: all of them, as many at once as there are processors.
compile_all() {
    local sources=()
    while [ "$1" != -- ]; do
        sources+=("$1")
        shift
    done
    printf '%s\0' "${sources[@]}" | xargs -0 -P "$(nproc)" -I{} bash -c 'compile "$@"' _ {} "${@:2}"
}
