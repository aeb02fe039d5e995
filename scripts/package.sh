#!/usr/bin/env bash
# package.sh [armhf]: builds the Debian packages, checks them with lintian, installs them in a root that has nothing
# but Debian's base system, and uses them there. With armhf they are built for ARM, in such a root as well, so that
# this machine need not learn of a foreign architecture. The packages end up in build/packages.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
need "${BUILD_PACKAGES[@]}" debhelper dpkg-dev lintian debootstrap

target=${1:-$(dpkg --print-architecture)}
as_root=()
[ "$(id -u)" -eq 0 ] || as_root=(sudo)
work=$(mktemp -d)
trap '"${as_root[@]}" rm -rf "$work"' EXIT
chmod 755 "$work"
root=$work/root
results=$PWD/build/packages
mkdir -p "$results"

in_root() {
    # What this machine builds with is not there; the way to the packages is the same.
    "${as_root[@]}" chroot "$root" env -i HOME=/root PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 \
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
    in_root apt-get update -qq
}

install_in_root() {
    in_root apt-get install -y -qq --no-install-recommends "$@" >"$work/log" 2>&1 || { tail "$work/log"; exit 1; }
}

# The tree as a source package has it.
source_tree() {
    local tree=$1
    mkdir -p "$tree"
    git ls-files -z --cached --others --exclude-standard | tar -c --null -T - | tar -C "$tree" -x
    mv "$tree/packaging/debian" "$tree/debian"
    cp packaging/abi/librecalculo1.symbols "$tree/debian/"
}

check_packages() {
    lintian --allow-root --fail-on error "$1"/*.changes
    cp "$1"/*.deb "$results/"
}

use_natively() {
    mkdir "$work/build"
    source_tree "$work/build/recalculo"
    (cd "$work/build/recalculo" && dpkg-buildpackage -us -uc -b >"$work/log" 2>&1) || { tail -n 30 "$work/log"; exit 1; }
    check_packages "$work/build"

    echo "== in a clean root"
    clean_root
    "${as_root[@]}" cp "$work"/build/*.deb "$root/root/"
    install_in_root g++ pkg-config
    in_root sh -c 'apt-get install -y -qq --no-install-recommends /root/librecalculo*.deb /root/recalculo-tools_*.deb' \
        >"$work/log" 2>&1 || { tail "$work/log"; exit 1; }
    # shellcheck disable=SC2016 # for the shell in there
    in_root sh -euc '
        cd /root
        g++ -std=c++17 /usr/share/doc/librecalculo-dev/examples/embedded_host.cpp \
            $(pkg-config --cflags --libs recalculo) -o host
        ./host | grep -x "left out: Demasiado"
        recalculo --version
        test -s /usr/share/man/man1/recalculo-run.1.gz
        test -s /usr/share/bash-completion/completions/recalculo
        recalculo run /usr/share/doc/recalculo-tools/examples/small.json | grep "services loaded"'
}

use_for_armhf() {
    need qemu-user
    echo "== building in a clean root"
    clean_root
    in_root dpkg --add-architecture armhf
    in_root apt-get update -qq
    mkdir "$work/build"
    source_tree "$work/build/recalculo"
    "${as_root[@]}" cp -r "$work/build" "$root/root/"
    install_in_root crossbuild-essential-armhf
    in_root sh -c 'cd /root/build/recalculo && apt-get build-dep -y -qq --no-install-recommends -a armhf . &&
        dpkg-buildpackage -us -uc -b -a armhf' >"$work/log" 2>&1 || { tail -n 30 "$work/log"; exit 1; }
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
