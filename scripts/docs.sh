#!/usr/bin/env bash
# Makes pages of the documents and the headers, build/docs/html/index.html. Whatever lacks a description, and a link that
# leads nowhere, is an error.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
need doxygen gawk

version=$(scripts/version.sh)
rm -rf build/docs
mkdir -p build/docs
(cat docs/Doxyfile && echo "PROJECT_NUMBER = $version" && echo "OUTPUT_DIRECTORY = build/docs") | doxygen -
# What Doxygen has not understood it leaves standing, without a word.
if grep -lE '(@|\\)(ref|section|endcode) ' build/docs/html/*.html; then
    echo "These pages have commands of Doxygen in their text." >&2
    exit 1
fi
echo "build/docs/html/index.html"
