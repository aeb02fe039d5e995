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

# What the library and the tool are built with.
BUILD_PACKAGES=(g++ cmake ninja-build nlohmann-json3-dev libcli11-dev libfmt-dev libutf8proc-dev)

# What the presets of these names need besides.
I686_PACKAGES=(g++-i686-linux-gnu qemu-user googletest)
ARMHF_PACKAGES=(g++-arm-linux-gnueabihf qemu-user googletest)
