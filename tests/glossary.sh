#!/usr/bin/env bash
# glossary.sh ROOT: docs/glossary.md tells every class, struct, enum and file of src/, the first word of every function
# there that include/ does not declare, and nothing that is no longer there. A verb stands in the infinitive; its stem
# is looked for.
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

# Where a function is declared or defined: a type, then its name. What follows `return`, and the first member that a
# constructor sets, look like that, too.
functions=$(
    grep -rhoE '^ *([A-Za-z0-9_:<>,*&]+ +)+[*&]*([A-Za-z]+::)*[a-z][A-Za-z]*\(' "$src" |
        grep -vE '^ *((return|else|throw|delete|case|new|using)\b|:)|//' | sed -E 's/\($//; s/.*[ *&:]//' | sort -u |
        grep -vxFf <(grep -rhoE '\b[a-z][A-Za-z]*\(' "$1/include" | tr -d '(')
)
words=$(sed -E 's/^([a-z]+).*/\1/' <<<"$functions" | sort -u)

if [ "$(wc -w <<<"$defined")" -lt 15 ] || [ "$(wc -w <<<"$files")" -lt 30 ] ||
    [ "$(wc -w <<<"$functions")" -lt 120 ]; then
    complain "too little of $src was read"
fi

all=$(told)
for name in $defined $files; do
    grep -qx "$name" <<<"$all" || complain "$name is not told"
done
forms=$(
    told | sed 's/$/(s|es)?/'
    told "Verbs" | sed -E 's/[aei]r$/([aei]n?|[aei]r|[ai]d[ao]s?)/'
)
for word in $words; do
    grep -qixEf <(echo "$forms") <<<"$word" || complain "$word, with which a function begins, is not told"
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
for name in $(told "Small words"); do
    grep -qx "$name" <<<"$words" || complain "no function of src/ begins with $name"
done
exit "$bad"
