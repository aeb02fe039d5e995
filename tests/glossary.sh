#!/usr/bin/env bash
# glossary.sh ROOT: docs/glossary.md tells every class, struct, enum and file of src/, and nothing that is no longer
# there. A verb stands in the infinitive; its stem is looked for.
set -euo pipefail
glossary=$1/docs/glossary.md
src=$1/src
bad=0

complain() {
    echo "docs/glossary.md: $*"
    bad=1
}

# The names of the first column, in all tables or below one heading.
told() {
    # shellcheck disable=SC2016
    awk -v heading="${1:-}" '/^## /{inside = heading == "" || index($0, heading)} inside' "$glossary" |
        sed -n 's/^| `\([A-Za-z_]*\)` |.*/\1/p'
}

defined=$(grep -rhE '^ *(enum )?(class|struct) [A-Za-z_]+[^;]*$' "$src" | sed -E 's/^ *(enum )?(class|struct) ([A-Za-z_]+).*/\3/' | sort -u)
files=$(find "$src" -name '*.h' -o -name '*.cpp' | sed -E 's#.*/##; s#\.[a-z]+$##' | sort -u)
if [ "$(wc -w <<<"$defined")" -lt 15 ] || [ "$(wc -w <<<"$files")" -lt 30 ]; then
    complain "too little of $src was read"
fi

all=$(told)
for name in $defined $files; do
    grep -qx "$name" <<<"$all" || complain "$name is not told"
done
for name in $(told "Classes and structs"); do
    grep -qx "$name" <<<"$defined" || complain "$name is no class or struct of src/"
done
for name in $(told "Files without"); do
    grep -qx "$name" <<<"$files" || complain "$name is no file of src/"
done
for name in $(told "Nouns"); do
    grep -rqiE "\b([a-z]+_)?$name" "$src" || complain "$name does not occur in src/"
done
for name in $(told "Verbs"); do
    grep -rqE "\b${name%[aei]r}[a-zA-Z]*\(" "$src" || complain "no function of src/ is called after $name"
done
exit "$bad"
