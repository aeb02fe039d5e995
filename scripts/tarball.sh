#!/usr/bin/env bash
# tarball.sh FOLDER: writes recalculo-VERSION.tar.xz, the sources as a release has them, into FOLDER and prints its path.
# The same sources give the same bytes. It works in a checkout and in an unpacked tarball, too.
#
# The Yocto layer is not in it: its recipe names the tarball by its sum.
set -euo pipefail
folder=$(realpath "${1:?usage: tarball.sh FOLDER}")
cd "$(dirname "$0")/.."

name=recalculo-$(scripts/version.sh)
released=$(sed -n 's/^## \[[0-9].*\] - //p' CHANGELOG.md | head -n 1)

sources() {
    if [ -e .git ]; then
        # What has been deleted is still listed until it is committed.
        git ls-files -z --cached --others --exclude-standard |
            while read -rd '' file; do [ ! -f "$file" ] || printf '%s\0' "$file"; done
    else
        find . -path ./build -prune -o -path '*/node_modules' -prune -o -type f -printf '%P\0'
    fi
}

sources | grep -zv '^packaging/yocto/' | LC_ALL=C sort -zu |
    tar --create --format=ustar --transform="s,^,$name/," --mtime="$released UTC" --owner=root:0 --group=root:0 \
        --mode=u+w,go+rX,go-w,a-s --no-recursion --null --files-from=- | xz -6 --threads=1 >"$folder/$name.tar.xz"
echo "$folder/$name.tar.xz"
