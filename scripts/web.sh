#!/usr/bin/env bash
# web.sh: builds build/web/recalculo.html, the planner in one file for a browser. It takes two minutes of a processor the
# first time.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
need "${WEB_PACKAGES[@]}"

# A Node.js that is not Debian's does not find what emscripten needs of it.
export NODE_PATH=/usr/share/nodejs
cmake --preset web >/dev/null
cmake --build --preset web -- --quiet
esbuild --bundle --format=iife --target=es2022 --charset=utf8 --log-level=warning web/page/main.js \
    --outfile=build/web/page.js
node web/build.mjs build/web/web/engine.js build/web/web/engine.wasm build/web/page.js build/web/recalculo.html
echo "build/web/recalculo.html: $(stat -c %s build/web/recalculo.html) bytes"
