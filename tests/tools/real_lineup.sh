#!/usr/bin/env bash
# real_lineup.sh RECALCULO CHECK_RESULT CHECK_SCHEMA EXAMPLES: runs the tool on a real satellite line-up and checks
# what must hold for every result. Exit code 77 if the line-up cannot be fetched.
set -euo pipefail

recalculo=$1
check_result=$2
check_schema=$3
examples=$4
fetch_lineup=$(dirname "$0")/../../scripts/fetch_lineup.sh

# What of a head-end's services an exported list can hold, a line each: no bitrates, and no reception of streams.
services_of() {
    sed -E 's/,$//; s/"(video_)?bitrate": [0-9]+,? ?//g; s/, \}/ }/; /"frequency"/d' "$1" | sort
}

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

if ! timeout 200 "$fetch_lineup" "$folder"; then
    echo "skipped: the real line-up cannot be fetched, the package registry could not be reached"
    exit 77
fi

for modules in modules-16 modules-8-tight; do
    "$recalculo" import "$folder/channels.conf" --modules "$examples/$modules.json" -o "$folder/$modules.json"
    "$recalculo" run "$folder/$modules.json" --json >"$folder/$modules.result.json"
    "$check_result" "$folder/$modules.result.json" "$folder/$modules.json"

    "$recalculo" run "$folder/$modules.json" --strategies --json >"$folder/strategies.json"
    "$check_schema" result.schema.json "$folder/$modules.result.json" "$folder/strategies.json"
    "$recalculo" explain "$folder/$modules.json" --json >"$folder/explanation.json"
    "$check_schema" explanation.schema.json "$folder/explanation.json"
    "$recalculo" bound "$folder/$modules.json" --json >"$folder/bound.json"
    "$check_schema" bound.schema.json "$folder/bound.json"
    echo '{"inputs": 2, "outputs": [38000, 38000], "pids_max": 15}' |
        "$recalculo" size "$folder/$modules.json" --add - --json >"$folder/sizing.json"
    "$check_schema" sizing.schema.json "$folder/sizing.json"

    # What is exported and imported again are services of the head-end, one a line, and all that are placed.
    "$recalculo" export "$folder/$modules.result.json" --format channels.conf -o "$folder/exported.conf"
    "$recalculo" import "$folder/exported.conf" --modules "$examples/$modules.json" -o "$folder/again.json"
    services_of "$folder/$modules.json" >"$folder/before"
    services_of "$folder/again.json" >"$folder/after"
    if [ -n "$(comm -13 "$folder/before" "$folder/after")" ]; then
        echo "what was exported is not what is imported:"
        comm -13 "$folder/before" "$folder/after"
        exit 1
    fi
    # In the summary, which stands last.
    placed=$(grep -o '"placed": [0-9]*' "$folder/$modules.result.json" | tail -n 1 | grep -o '[0-9]*$')
    [ "$(grep -c '"lcn"' "$folder/again.json")" -eq "$placed" ]
done

"$recalculo" compare "$folder/modules-16.result.json" "$folder/modules-8-tight.result.json" --json >"$folder/comparison.json"
"$check_schema" comparison.schema.json "$folder/comparison.json"
