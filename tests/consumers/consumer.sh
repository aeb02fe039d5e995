#!/usr/bin/env bash
# consumer.sh KIND: builds the examples in a fresh folder as one kind of caller would, and runs them.
#
#     find_package       CMake, against the installed library
#     add_subdirectory   CMake, with the library's folder in the caller's tree
#     fetch_content      CMake, with sources that it fetches while it configures
#     pkg_config         the compiler and pkg-config, against the installed library
#     moved              the same, after the installation has been moved
#     static             the same, against an installed archive; embedded_host with the C library in it, too (-static)
#     bare               the compiler alone, on the library's sources, each for itself, with our own warnings
#
# CMakeLists.txt says with which compiler and against what: the environment holds CMAKE, SOURCE, VERSION, STAGE
# (where the library is installed), LIBDIR (within it), CXX, CXXFLAGS, WARNINGS, LDFLAGS, and for a foreign target
# TOOLCHAIN and EMULATOR.
set -euo pipefail
kind=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# Lists of words.
read -ra flags <<<"-std=c++17 $CXXFLAGS"
read -ra link_flags <<<"$LDFLAGS"
read -ra emulator <<<"${EMULATOR:-}"
programs=(embedded_host minimal_caller)
compiler=(-DCMAKE_CXX_COMPILER="$CXX" -DCMAKE_CXX_FLAGS="$CXXFLAGS")
[ -z "${TOOLCHAIN:-}" ] || compiler=(-DCMAKE_TOOLCHAIN_FILE="$TOOLCHAIN" -DCMAKE_CXX_FLAGS="$CXXFLAGS")

# Compiled one by one the library is by the kind `bare`.
configure() {
    "$CMAKE" -G Ninja -DCMAKE_UNITY_BUILD=ON "${compiler[@]}" "$@" >/dev/null
}

cmake_project() {
    configure -S "$SOURCE/tests/consumers/$kind" -B "$work" -DRECALCULO_SOURCE="$SOURCE" \
        -DRECALCULO_VERSION="$VERSION" "$@"
    "$CMAKE" --build "$work" --parallel 1 >/dev/null
}

# compile STAGE: builds the examples with what the pkg-config file in STAGE says.
compile() {
    local name build
    export PKG_CONFIG_LIBDIR=$1/$LIBDIR/pkgconfig
    read -ra build <<<"$(pkg-config --cflags --libs recalculo)"
    for name in "${programs[@]}"; do
        "$CXX" "${flags[@]}" "$SOURCE/examples/$name.cpp" "${build[@]}" "${link_flags[@]}" -o "$work/$name"
    done
}

case $kind in
find_package)
    cmake_project -DCMAKE_PREFIX_PATH="$STAGE"
    ;;
add_subdirectory)
    cmake_project
    "$CMAKE" --install "$work" --prefix "$work/installed" >/dev/null
    [ ! -e "$work/installed" ] || { echo "The caller's installation has got something of the library's."; exit 1; }
    ;;
fetch_content)
    cmake_project
    ;;
pkg_config)
    link_flags+=("-Wl,-rpath,$STAGE/$LIBDIR")
    compile "$STAGE"
    ;;
moved)
    cp -a "$STAGE" "$work/elsewhere"
    link_flags+=("-Wl,-rpath,$work/elsewhere/$LIBDIR")
    compile "$work/elsewhere"
    if grep -rIF -e "$STAGE" "$work/elsewhere/$LIBDIR/pkgconfig"; then exit 1; fi
    ;;
static)
    configure -S "$SOURCE" -B "$work/library" -DRECALCULO_DEVELOPER=OFF -DBUILD_SHARED_LIBS=OFF \
        -DCMAKE_INSTALL_LIBDIR="$LIBDIR"
    "$CMAKE" --build "$work/library" --parallel 1 >/dev/null
    "$CMAKE" --install "$work/library" --prefix "$work/stage" >/dev/null
    [ -f "$work/stage/$LIBDIR/librecalculo.a" ] || { echo "There is no archive."; exit 1; }
    programs=(minimal_caller)
    compile "$work/stage"
    programs=(embedded_host)
    link_flags+=(-static)
    compile "$work/stage"
    programs=(embedded_host minimal_caller)
    ;;
bare)
    programs=(embedded_host)
    # shellcheck disable=SC2153 # WARNINGS is the environment's
    read -ra warnings <<<"$WARNINGS"
    "$CXX" "${flags[@]}" "${warnings[@]}" -I"$SOURCE/include" "$SOURCE"/src/*/*.cpp "$SOURCE/examples/embedded_host.cpp" \
        "${link_flags[@]}" -o "$work/embedded_host"
    ;;
esac

for name in "${programs[@]}"; do
    "${emulator[@]}" "$work/$name" >"$work/$name.txt"
done
# What docs/embedding.md promises, without the blanks at the ends of lines.
awk '$0 == "```text" { inside = 1; next } $0 == "```" { inside = 0 } inside' "$SOURCE/docs/embedding.md" |
    diff -u - <(sed 's/ *$//' "$work/embedded_host.txt")
[ ! -f "$work/minimal_caller.txt" ] ||
    grep -Eqx '0 networks with services left out, [1-9][0-9]* lines of log' "$work/minimal_caller.txt" ||
    { echo "minimal_caller has not placed everything, or the log has not reached it."; exit 1; }
