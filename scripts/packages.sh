# shellcheck shell=bash disable=SC2034
# Sourced by the other scripts: need PACKAGE... installs the Debian packages that are missing.

need() {
    local missing=() package
    for package in "$@"; do
        dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'install ok installed' || missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return 0
    echo "Installing ${missing[*]}"
    local as_root=()
    [ "$(id -u)" -eq 0 ] || as_root=(sudo)
    "${as_root[@]}" apt-get update -qq
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

# foreign ARCHITECTURE PACKAGE...: unpacks packages of another architecture into build/foreign/ARCHITECTURE. This machine
# need not learn of that architecture, and installs nothing.
foreign() {
    local architecture=$1 folder=build/foreign/$1 work package missing=()
    shift
    for package in "$@"; do
        [ -d "$folder/usr/share/doc/$package" ] || missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return 0
    echo "Unpacking ${missing[*]} for $architecture"
    work=$(mktemp -d)
    mkdir -p "$work/state/lists/partial" "$work/cache/archives/partial" "$folder"
    touch "$work/status"
    local apt=(apt-get -qq -o APT::Architecture="$architecture" -o APT::Architectures="$architecture"
        -o APT::Sandbox::User=root -o Dir::State="$work/state" -o Dir::State::status="$work/status"
        -o Dir::Cache="$work/cache")
    # One list that cannot be had is no reason to stop: the download tells whether it was needed.
    "${apt[@]}" update 2>"$work/errors" || true
    (cd "$work" && "${apt[@]}" download "${missing[@]}") || { cat "$work/errors" >&2; rm -rf "$work"; return 1; }
    for package in "$work"/*.deb; do
        dpkg-deb -x "$package" "$folder"
    done
    rm -rf "$work"
}

# What the library and the tool are built with.
BUILD_PACKAGES=(g++ cmake ninja-build nlohmann-json3-dev libcli11-dev libfmt-dev libkainjow-mustache-dev
    libutf8proc-dev)

# What the tests are built with besides.
TEST_PACKAGES=(libgtest-dev pkg-config libvalijson-dev mandoc zsh fish)

# What the presets of these names need besides.
SANITIZER_PACKAGES=(clang libclang-rt-dev)
I686_PACKAGES=(g++-i686-linux-gnu qemu-user googletest)
ARMHF_PACKAGES=(g++-arm-linux-gnueabihf qemu-user googletest)

# Libraries for those two that have no other way here; the toolchain files look for them.
FOREIGN_PACKAGES=(libutf8proc-dev)

# What the planner in the browser is built with. Of the libraries, headers that are the same everywhere.
WEB_PACKAGES=(cmake ninja-build emscripten esbuild xz-utils nlohmann-json3-dev libfmt-dev libkainjow-mustache-dev)
