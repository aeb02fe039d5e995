#!/usr/bin/env bash
# Goes through docs/embedding.md as a newcomer would: runs its commands, for this machine and for ARM, each block
# in an empty folder, and compares what the example prints. Ends with the size of the ARM library.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
need "${BUILD_PACKAGES[@]}" "${ARMHF_PACKAGES[@]}" pkg-config binutils-arm-linux-gnueabihf

RECALCULO=$PWD
export RECALCULO
guide=$RECALCULO/docs/embedding.md
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# fenced LANGUAGE: the blocks of that language, each behind a line with its number.
fenced() {
    awk -v fence="\`\`\`$1" '$0 == fence { inside = 1; print "# block", ++n; next }
                             $0 == "```" { inside = 0 } inside' "$guide"
}

fenced text | sed 1d >"$work/expected"
fenced sh | csplit --quiet --elide-empty-files --prefix="$work/block" --suffix-format=%d.sh - '/^# block/' '{*}'
for block in "$work"/block*.sh; do
    echo "== $(basename "$block" .sh)"
    folder=$(mktemp -d -p "$work")
    (cd "$folder" && bash -euo pipefail "$block") >"$work/output"
    # The example's output comes last, after the build's.
    tail -n "$(wc -l <"$work/expected")" "$work/output" | sed 's/ *$//' | diff -u "$work/expected" -
    echo "as promised"
    library=$(echo "$folder"/stage*/lib/librecalculo.so.*.*)
done

file=$(readelf -h "$library" | sed -n 's/ *Machine: *//p')
echo "The stripped library for $file: $(stat -c %s "$library") bytes"
