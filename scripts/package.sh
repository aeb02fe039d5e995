#!/usr/bin/env bash
# package.sh [armhf]: builds the Debian packages from the source tarball in a root that has nothing but Debian's base
# system, where their tests run, looks at them with lintian, builds them a second time in another folder to see that
# nothing differs, and uses them in a fresh root as the packages' own tests do. With armhf they are built for ARM, once,
# so that this machine need not learn of a foreign architecture. The packages end up in build/packages.
# DEB_BUILD_OPTIONS=nocheck leaves the tests out.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
need xz-utils lintian debootstrap

target=${1:-$(dpkg --print-architecture)}
as_root=()
[ "$(id -u)" -eq 0 ] || as_root=(sudo)
work=$(mktemp -d)
trap '"${as_root[@]}" rm -rf "$work"' EXIT
chmod 755 "$work"
root=$work/root
results=$PWD/build/packages
mkdir -p "$results"
version=$(scripts/version.sh)
tarball=$(scripts/tarball.sh "$work")
cp -r packaging/debian "$work/"
cp packaging/abi/librecalculo1.symbols "$work/debian/"

in_root() {
    # What this machine builds with is not there; the way to the packages is the same. Tests open terminals and look into
    # /proc, as on Debian's builders; nobody else sees those mounts, and they end with the command.
    # shellcheck disable=SC2016 # for the shell in there
    "${as_root[@]}" unshare --mount sh -euc '
        mount -t proc proc "$0/proc"
        mount -t devpts -o newinstance,ptmxmode=0666,mode=0620,gid=5 devpts "$0/dev/pts"
        exec chroot "$0" env -i "$@"' \
        "$root" HOME=/root PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 \
        ${http_proxy:+http_proxy="$http_proxy"} ${https_proxy:+https_proxy="$https_proxy"} \
        DEBIAN_FRONTEND=noninteractive "$@"
}

# A fresh base system, which is bootstrapped once and kept.
clean_root() {
    local codename base
    codename=$(. /etc/os-release && echo "$VERSION_CODENAME")
    base=$PWD/build/base-$codename.tar
    mkdir "$root"
    if [ ! -f "$base" ]; then
        "${as_root[@]}" debootstrap --variant=minbase "$codename" "$root" http://deb.debian.org/debian >"$work/log" ||
            { tail "$work/log"; exit 1; }
        "${as_root[@]}" tar -C "$root" -cf "$base.part" .
        mv "$base.part" "$base"
    else
        "${as_root[@]}" tar -C "$root" -xf "$base"
    fi
    "${as_root[@]}" cp /etc/resolv.conf "$root/etc/"
    # Nobody misses a root that a power cut spoils, and to wait for the disk after each file takes longer than the rest.
    echo force-unsafe-io | "${as_root[@]}" tee "$root/etc/dpkg/dpkg.cfg.d/unsafe-io" >/dev/null
    in_root apt-get update -qq
}

install_in_root() {
    in_root apt-get install -y -qq --no-install-recommends "$@" >"$work/log" 2>&1 || { tail "$work/log"; exit 1; }
}

# source_tree FOLDER: what a source package is made of, in a folder of the root: the tarball, and unpacked beside it, with
# the packaging. The tarball is made once; what is edited meanwhile is not in it.
source_tree() {
    local folder=$root$1
    "${as_root[@]}" mkdir -p "$folder"
    "${as_root[@]}" cp "$tarball" "$folder/recalculo_$version.orig.tar.xz"
    "${as_root[@]}" tar -C "$folder" -xf "$tarball"
    "${as_root[@]}" mv "$folder/recalculo-$version" "$folder/recalculo"
    "${as_root[@]}" cp -r "$work/debian" "$folder/recalculo/"
}

# build FOLDER ARGUMENT...: dpkg-buildpackage there, with these arguments.
build() {
    local folder=$1
    shift
    # shellcheck disable=SC2016 # for the shell in there
    in_root env DEB_BUILD_OPTIONS="parallel=${JOBS:-$(nproc)} ${options:-}" sh -c 'cd "$0" && exec dpkg-buildpackage "$@"' \
        "$folder/recalculo" -us -uc "$@" >"$work/log" 2>&1 || { tail -n 40 "$work/log"; exit 1; }
}

check_packages() {
    # Which words stand in a program it guesses from all its bytes, and takes machine code for misspelt ones.
    lintian --allow-root --display-info --pedantic --display-experimental --suppress-tags spelling-error-in-binary \
        --fail-on error,warning,info,pedantic,experimental "$1"/*.changes
    cp "$1"/*.deb "$results/"
}

use_natively() {
    echo "== building in a clean root, with the tests"
    clean_root
    source_tree /root/build
    install_in_root build-essential debhelper
    in_root sh -c 'cd /root/build/recalculo && apt-get build-dep -y -qq --no-install-recommends .' >"$work/log" 2>&1 ||
        { tail "$work/log"; exit 1; }
    options=${DEB_BUILD_OPTIONS:-} build /root/build
    grep -E 'tests passed|tests failed' "$work/log" || echo "without the tests"
    check_packages "$root/root/build"

    echo "== again, elsewhere and later"
    source_tree /srv/another/folder
    options=nocheck build /srv/another/folder -b
    local package
    for package in "$root"/root/build/*.deb; do
        cmp "$package" "$root/srv/another/folder/$(basename "$package")"
    done

    echo "== in a fresh root"
    "${as_root[@]}" mv "$root" "$work/built"
    clean_root
    "${as_root[@]}" cp "$work"/built/root/build/*.deb "$root/root/"
    "${as_root[@]}" cp -r "$work/debian/tests" "$root/root/"
    install_in_root g++ cmake ninja-build pkg-config
    in_root sh -c 'apt-get install -y -qq --no-install-recommends /root/librecalculo*.deb /root/recalculo-tools_*.deb' \
        >"$work/log" 2>&1 || { tail "$work/log"; exit 1; }
    in_root /root/tests/consumer
    in_root /root/tests/tool
}

use_for_armhf() {
    need qemu-user
    echo "== building in a clean root"
    clean_root
    in_root dpkg --add-architecture armhf
    in_root apt-get update -qq
    source_tree /root/build
    install_in_root crossbuild-essential-armhf debhelper
    in_root sh -c 'cd /root/build/recalculo && apt-get build-dep -y -qq --no-install-recommends --arch-only -P nocheck -a armhf .' \
        >"$work/log" 2>&1 || { tail "$work/log"; exit 1; }
    options=nocheck build /root/build -B --host-arch armhf --build-profiles=nocheck
    check_packages "$root/root/build"

    # The kernel here does not run ARM programs, but the packages' scripts, if they had any, would be of the shell.
    in_root sh -c 'apt-get install -y -qq --no-install-recommends /root/build/librecalculo*.deb \
        /root/build/recalculo-tools_*.deb' >"$work/log" 2>&1 || { tail "$work/log"; exit 1; }
    # shellcheck disable=SC2016 # for the shell in there
    in_root sh -euc '
        cd /root
        arm-linux-gnueabihf-g++ -std=c++17 /usr/share/doc/librecalculo-dev/examples/embedded_host.cpp \
            -I/usr/include/recalculo -lrecalculo -o host'
    qemu-arm -L "$root" "$root/root/host" | grep -x "left out: Demasiado"
    qemu-arm -L "$root" "$root/usr/bin/recalculo" --version
    qemu-arm -L "$root" "$root/usr/bin/recalculo" run examples/small.json | grep 'services loaded'
}

case $target in
armhf) use_for_armhf ;;
*) use_natively ;;
esac
