#!/usr/bin/env bash
# documents.sh RECALCULO_DOCUMENTS DOCS: the schemas and the tables of keys in DOCS are what RECALCULO_DOCUMENTS writes.
set -euo pipefail

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

"$1" "$2" "$folder"
is_stale=0
for file in "$folder"/*; do
    diff -u "$2/$(basename "$file")" "$file" || is_stale=1
done
[ "$is_stale" -eq 0 ] || { echo "scripts/manual.sh writes them anew"; exit 1; }
