#!/usr/bin/env bash
# planning.sh RECALCULO ROOT: runs every command that the documents show and compares what it prints with what
# stands there, so that no example goes stale. In a fence ```console a command begins with "$ " and goes on while its
# line ends in | or \, and its output follows; a line "..." stands for any number of lines. Of a fence ```console line-up
# the commands need the real line-up. Exit code 77 if that cannot be fetched and everything else is right.
set -euo pipefail

recalculo=$(realpath "$1")
root=$(realpath "$2")

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
mkdir "$folder/bin" "$folder/line-up"
printf '#!/bin/sh\nexec "%s" "$@"\n' "$recalculo" >"$folder/bin/recalculo"
chmod +x "$folder/bin/recalculo"
export PATH=$folder/bin:$PATH LC_ALL=C.UTF-8

lineup=yes
timeout 200 "$root/scripts/fetch_lineup.sh" "$folder/line-up" || lineup=

# matches EXPECTED ACTUAL: whether the texts are the same, line by line, but for the "...". Where one of these has been
# met, what follows it is looked for ever further on.
matches() {
    local expected actual e=0 a=0 dots=-1 from=0
    mapfile -t expected <<<"$1"
    mapfile -t actual <<<"$2"
    while ((a < ${#actual[@]})); do
        if [ "${expected[e]-}" = ... ]; then
            dots=$((e++)) from=$a
        elif ((e < ${#expected[@]})) && [ "${expected[e]}" = "${actual[a]}" ]; then
            e=$((e + 1)) a=$((a + 1))
        elif ((dots >= 0)); then
            e=$((dots + 1)) from=$((from + 1)) a=$from
        else
            return 1
        fi
    done
    while [ "${expected[e]-}" = ... ]; do e=$((e + 1)); done
    ((e == ${#expected[@]}))
}

commands=0
failures=0

# check WHERE COMMAND EXPECTED: runs the command; blank lines at the end and carriage returns do not count.
check() {
    local where=$1 command=$2 expected actual
    expected=$(printf %s "$3")
    actual=$(bash -c "$command" 2>&1 </dev/null | tr -d '\r') || true
    commands=$((commands + 1))
    matches "$expected" "$actual" && return
    failures=$((failures + 1))
    printf '%s: $ %s\n' "$where" "$command"
    diff --label "the document" --label "the tool" -u <(printf '%s\n' "$expected") <(printf '%s\n' "$actual") || true
}

# check_document NAME: all its examples, in a folder with nothing in it but the examples and the line-up.
check_document() {
    local name=$1 line='' number=0 kind='' where='' command='' expected='' open='' before=$commands
    mkdir -p "$folder/$name"
    cd "$folder/$name"
    ln -s "$root/examples" examples
    [ -z "$lineup" ] || cp "$folder/line-up/channels.conf" .
    while IFS= read -r line || [ -n "$line" ]; do
        number=$((number + 1))
        if [[ $line == '```'* || ($line == '$ '* && -z $open) ]]; then
            [ -z "$command" ] || check "$where" "$command" "$expected"
            command=''
        fi
        if [[ $line == '```'* ]]; then
            if [ -n "$kind" ]; then kind=''; else kind=${line#'```'} kind=${kind:-plain}; fi
        elif [[ -n $kind && $line == '$ '* && $kind != console* ]]; then
            echo "$name:$number: a command stands in a fence of another kind than console"
            failures=$((failures + 1))
        elif [[ $kind == console || ($kind == 'console line-up' && -n $lineup) ]]; then
            if [ -n "$open" ]; then
                command+=$'\n'$line
            elif [[ $line == '$ '* ]]; then
                where=$name:$number command=${line#'$ '} expected=''
            else
                expected+=$line$'\n'
                continue
            fi
            [[ $command == *[\|\\] ]] && open=yes || open=''
        fi
    done <"$root/$name"
    echo "$name: $((commands - before)) commands run"
    if [ -n "$lineup" ] && ((commands == before)); then failures=$((failures + 1)); fi
}

check_document README.md
check_document docs/tool.md
check_document docs/headend.md
check_document docs/planning.md
if ((failures > 0)); then
    echo "faults: $failures"
    exit 1
fi
if [ -z "$lineup" ]; then
    echo "skipped: the real line-up cannot be fetched, the package registry could not be reached"
    exit 77
fi
