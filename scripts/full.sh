#!/usr/bin/env bash
# full.sh [STEP...]: the checks that are too long for every change, for the time before a release: all of them, or those
# steps whose command contains one of the words, such as `full.sh package valgrind`. A step that fails does not keep the
# others from running. .ci/run has the other checks.
set -uo pipefail
cd "$(dirname "$0")/.." || exit
words=("$@")
passed=0
failed=()

step() {
    local word wanted=$((${#words[@]} == 0))
    for word in "${words[@]}"; do [[ "$*" != *"$word"* ]] || wanted=1; done
    ((wanted)) || return 0
    printf '\n[%d min] %s\n' $((SECONDS / 60)) "$*"
    if "$@"; then passed=$((passed + 1)); else failed+=("$*"); fi
}

# One line a step.
step scripts/check.sh --tests
step scripts/package.sh
step scripts/package.sh armhf
step scripts/cross.sh
step scripts/valgrind.sh
step scripts/coverage.sh
step scripts/everywhere.sh
step scripts/threads.sh
step scripts/fuzz.sh 5
step scripts/mutate.sh
step scripts/test.sh clang
step scripts/test.sh --library clang-19
step scripts/test.sh i686 armhf
step scripts/bench.sh

printf '\n[%d min] ' $((SECONDS / 60))
if ((passed + ${#failed[@]} == 0)); then
    echo "There is no such step."
    exit 2
fi
if ((${#failed[@]} > 0)); then
    printf '%d steps passed, %d failed:\n' "$passed" "${#failed[@]}"
    printf '  %s\n' "${failed[@]}"
    exit 1
fi
printf '%d steps passed, 0 failed.\n' "$passed"
