#!/usr/bin/env bash
# page.sh: builds the tool and looks at its pages (run --html, compare --html) in a browser.
# page.sh --screenshot FILE: renews the picture of the README instead.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
picture=''
case ${1-} in
'') ;;
--screenshot) picture=$(realpath "${2:?--screenshot FILE}") ;;
*) echo "page.sh: unknown option $1; expected --screenshot FILE" >&2; exit 2 ;;
esac
need "${BUILD_PACKAGES[@]}" libgtest-dev pkg-config chromium fonts-dejavu-core
# A Node.js that is not Debian's will do.
if ! command -v node >/dev/null || ! command -v npm >/dev/null; then need nodejs npm; fi

cmake --preset gcc -DBUILD_TESTING=ON >/dev/null
cmake --build --preset gcc --target recalculo_cli -- --quiet
export RECALCULO=$PWD/build/gcc/tools/recalculo/recalculo
npm ci --ignore-scripts --no-audit --no-fund --silent --prefix tests/tools/page

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
if [ -n "$picture" ]; then
    "$RECALCULO" run examples/medium.json --html "$work/page.html" >/dev/null
    node tests/tools/page/screenshot.js "$work/page.html" "$picture"
    exit 0
fi
if timeout 200 scripts/fetch_lineup.sh "$work"; then
    export LINEUP=$work
else
    echo "The real line-up is left out: the package registry could not be reached."
fi
cd tests/tools/page
node --test page.test.js
