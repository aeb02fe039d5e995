#!/usr/bin/env bash
# completion.sh FILE: sources the bash completion and looks at what it offers.
set -euo pipefail

# shellcheck source=/dev/null
source "$1"

# expect WORDS WHAT...: completing the last of the words offers these, among others.
expect() {
    read -ra COMP_WORDS <<<"$1"
    [[ $1 != *' ' ]] || COMP_WORDS+=('')
    COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
    _recalculo
    local what
    for what in "${@:2}"; do
        printf '%s\n' "${COMPREPLY[@]}" | grep -xF -- "$what" >/dev/null || {
            echo "'$1': expected '$what' among: ${COMPREPLY[*]}"
            exit 1
        }
    done
}

COMP_WORDS=(recalculo size --most '') COMP_CWORD=3
_recalculo
[ "${#COMPREPLY[@]}" -eq 0 ] || { echo "a number is not completed, and yet: ${COMPREPLY[*]}"; exit 1; }

expected=$(realpath "$(dirname "$0")/completion.expected")
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"
touch 'head end.json' other.txt

# shellcheck source=/dev/null
source "$expected"

expect 'recalculo ' --help --version
expect 'recalculo run --lo' --log
expect 'recalculo run --color al' always
expect 'recalculo run x --color ' auto always never
expect 'recalculo export x --format c' channels.conf csv
expect 'recalculo run ' 'head end.json' other.txt
expect 'recalculo run oth' other.txt
