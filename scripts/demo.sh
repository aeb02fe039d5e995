#!/usr/bin/env bash
# Builds the tool and shows it at work: on the small sample head-end, on a service that finds no place, on a real
# satellite line-up placed onto sixteen modules and onto eight that are too few for it, and as a page.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
need "${BUILD_PACKAGES[@]}"
# A bare container has no locale of its own, and the reports would be plain ASCII.
export LC_ALL=C.UTF-8

build=build/demo
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DBUILD_TESTING=OFF >/dev/null
cmake --build "$build" -- --quiet
recalculo=$build/tools/recalculo/recalculo

title() { printf '\n=== %s\n\n$ recalculo %s\n' "$1" "$2"; }

title "A small head-end" "run examples/small.json"
"$recalculo" run examples/small.json

title "Why a service of a hotel is left out" "explain examples/medium.json --service 212"
"$recalculo" explain examples/medium.json --service 212

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
if scripts/fetch_lineup.sh "$work"; then
    for modules in modules-16 modules-8-tight; do
        title "A real satellite line-up on $modules" \
            "import channels.conf --modules examples/$modules.json -o $modules.json"
        "$recalculo" import "$work/channels.conf" --modules "examples/$modules.json" -o "$work/$modules.json"
        printf '\n$ recalculo run %s.json\n' "$modules"
        "$recalculo" run "$work/$modules.json"
    done
else
    echo "The real line-up is left out: the package registry could not be reached."
fi

title "The hotel as a page" "run examples/medium.json --html $build/page.html"
"$recalculo" run examples/medium.json --html "$build/page.html" | tail -n 1
printf '\nOpen it in a browser: file://%s/%s/page.html\n' "$PWD" "$build"
if [ -f build/web/recalculo.html ]; then
    printf 'Plan in the browser: file://%s/build/web/recalculo.html\n' "$PWD"
else
    printf 'To plan in the browser, build the page with ./scripts/web.sh, which takes two minutes.\n'
fi
