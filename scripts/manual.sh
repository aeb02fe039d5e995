#!/usr/bin/env bash
# Writes anew what the tool tells of itself: the man pages and the completions, tools/recalculo/manual/pages, and in
# docs/ the JSON Schemas and the tables of keys. Needed when a command, an option, or a field of a document changes.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
need "${BUILD_PACKAGES[@]}" "${TEST_PACKAGES[@]}"

cmake --preset gcc >/dev/null
cmake --build --preset gcc --target recalculo_manual recalculo_documents -- --quiet
build/gcc/tools/recalculo/recalculo_manual tools/recalculo/manual/sections tools/recalculo/manual/pages
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
build/gcc/tools/recalculo/recalculo_documents docs "$folder"
cp "$folder"/* docs/
