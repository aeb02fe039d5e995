#!/usr/bin/env bash
# Builds the tool and shows it at work: on the small sample head-end, and on a real satellite line-up placed
# onto sixteen modules and onto eight that are too few for it.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
need "${BUILD_PACKAGES[@]}"

build=build/demo
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DBUILD_TESTING=OFF >/dev/null
cmake --build "$build" -- --quiet
recalculo=$build/tools/recalculo/recalculo

title() { printf '\n=== %s\n\n$ recalculo %s\n' "$1" "$2"; }

title "A small head-end" "run examples/small.json"
"$recalculo" run examples/small.json

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
if ! scripts/fetch_lineup.sh "$work"; then
    echo "The real line-up is left out: the package registry could not be reached."
    exit 0
fi
for modules in modules-16 modules-8-tight; do
    title "A real satellite line-up on $modules" \
        "import channels.conf --modules examples/$modules.json -o $modules.json"
    "$recalculo" import "$work/channels.conf" --modules "examples/$modules.json" -o "$work/$modules.json"
    printf '\n$ recalculo run %s.json\n' "$modules"
    "$recalculo" run "$work/$modules.json"
done
