#!/bin/sh
# Prints the version.
sed -n 's/^project(recalculo VERSION \([0-9.]*\).*/\1/p' "$(dirname "$0")/../CMakeLists.txt"
