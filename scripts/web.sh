#!/usr/bin/env bash
# web.sh: builds build/web/recalculo.html, the planner in one file for a browser. It takes two minutes of a processor the
# first time.
# web.sh --screenshot HEADEND PICTURE: and renews a picture of it.
# web.sh --figures: and tells how long it takes from a key to the placement on the screen, as a table.
# web.sh --test: and plans with it as a person does, in Chromium and Firefox, and holds its answers against the tool.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
case ${1-} in
'' | --test | --figures | --screenshot) ;;
*) echo "web.sh: unknown option $1; expected --test, --figures or --screenshot" >&2; exit 2 ;;
esac
need "${WEB_PACKAGES[@]}"

# A Node.js that is not Debian's does not find what emscripten needs of it.
export NODE_PATH=/usr/share/nodejs
cmake --preset web >/dev/null
cmake --build --preset web -- --quiet
esbuild --bundle --minify --format=iife --target=es2022 --charset=utf8 --log-level=warning web/page/main.js \
    --outfile=build/web/page.js
node web/build.mjs build/web/web/engine.js build/web/web/engine.wasm build/web/page.js build/web/recalculo.html
echo "build/web/recalculo.html: $(stat -c %s build/web/recalculo.html) bytes"
[ -n "${1-}" ] || exit 0

need "${BUILD_PACKAGES[@]}" chromium firefox-esr fonts-dejavu-core
if ! command -v npm >/dev/null; then need nodejs npm; fi
npm ci --ignore-scripts --no-audit --no-fund --silent --prefix tests/tools/page
if [ "$1" = --screenshot ]; then
    node tests/tools/page/planner_screenshot.js build/web/recalculo.html "$2" "$3"
    exit 0
fi
cmake --preset gcc -DBUILD_TESTING=ON >/dev/null
cmake --build --preset gcc --target recalculo_cli -- --quiet
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
if timeout 200 scripts/fetch_lineup.sh "$work"; then
    export LINEUP=$work
else
    echo "The real line-up is left out: the package registry could not be reached."
fi
export RECALCULO=$PWD/build/gcc/tools/recalculo/recalculo
if [ "$1" = --figures ]; then
    node tests/tools/page/planner_figures.js build/web/recalculo.html
    exit 0
fi
cd tests/tools/page
node --test --test-concurrency=2 planner_*.test.js
