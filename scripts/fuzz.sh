#!/usr/bin/env bash
# fuzz.sh MINUTES [HARNESS...]: lets libFuzzer look for inputs that break a harness of tests/fuzz (headend, members,
# readers, tool; all of them at once unless some are named), under both sanitizers. It begins with the corpora of the
# tree and keeps what it learns in build/fuzz/learnt; what breaks a harness ends up in build/fuzz/found.
#
# fuzz.sh --keep HARNESS... adds to the corpora of the tree what was learnt and reaches something new, small files only.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
need "${BUILD_PACKAGES[@]}" "${TEST_PACKAGES[@]}" "${SANITIZER_PACKAGES[@]}"

minutes=${1:?the number of minutes}
shift
[ $# -gt 0 ] || set -- headend members readers tool
cmake --preset fuzz >/dev/null
for harness in "$@"; do
    cmake --build --preset fuzz --target "fuzz_$harness" -- --quiet
done

# A large head-end takes a minute of a processor under the sanitizers, and the machine may have other work.
export ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1
failed=0
running=()
for harness in "$@"; do
    learnt=build/fuzz/learnt/$harness corpus=tests/fuzz/corpus/$harness
    mkdir -p "$learnt" build/fuzz/found
    if [ "$minutes" = --keep ]; then
        build/fuzz/tests/fuzz/"fuzz_$harness" -merge=1 -max_len=600 "$corpus" "$learnt" 2>&1 | tail -n 1
        continue
    fi
    build/fuzz/tests/fuzz/"fuzz_$harness" -max_total_time=$((minutes * 60)) -timeout=600 -rss_limit_mb=4096 \
        -max_len=2048 -artifact_prefix="build/fuzz/found/$harness-" -print_final_stats=1 \
        "$learnt" "$corpus" >"build/fuzz/$harness.log" 2>&1 &
    running+=("$!:$harness")
done
for one in "${running[@]}"; do
    harness=${one#*:}
    if wait "${one%%:*}"; then
        runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "build/fuzz/$harness.log")
        echo "$harness: $runs runs, nothing found"
    else
        echo "$harness: found something"
        grep -E '^(==|SUMMARY|does not hold|artifact_prefix)|runtime error' "build/fuzz/$harness.log" | head -n 10
        failed=1
    fi
done
exit $failed
