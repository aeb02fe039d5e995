#!/usr/bin/env bash
# Writes the man pages and the bash completion of the tool anew, tools/recalculo/manual/pages. Needed when a command
# or an option changes.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
need "${BUILD_PACKAGES[@]}" "${TEST_PACKAGES[@]}"

cmake --preset gcc >/dev/null
cmake --build --preset gcc --target recalculo_manual -- --quiet
build/gcc/tools/recalculo/recalculo_manual tools/recalculo/manual/sections tools/recalculo/manual/pages
