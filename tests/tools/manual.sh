#!/usr/bin/env bash
# manual.sh RECALCULO_MANUAL MANUAL: the pages in MANUAL/pages are what RECALCULO_MANUAL writes, and mandoc finds
# nothing wrong with them.
set -euo pipefail

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

"$1" "$2/sections" "$folder"
diff -ru "$2/pages" "$folder" || { echo "scripts/manual.sh writes the pages anew"; exit 1; }
mandoc -T lint -W error "$folder"/*.1
