#!/usr/bin/env bash
# Makes the API reference, build/reference/html/index.html. Whatever lacks a description is an error.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
need doxygen

version=$(scripts/version.sh)
rm -rf build/reference
mkdir -p build/reference
(cat docs/Doxyfile && echo "PROJECT_NUMBER = $version" && echo "OUTPUT_DIRECTORY = build/reference") | doxygen -
echo "build/reference/html/index.html"
