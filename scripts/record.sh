#!/usr/bin/env bash
# Records tests/transcripts anew: the transcripts of whole runs, and the digest of the random ones. Needed when a change
# of behaviour is meant; read what has changed before it is committed.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
need "${BUILD_PACKAGES[@]}" "${TEST_PACKAGES[@]}"

programs=(algorithm/algorithm_test engine/engine_test algorithm/Azar_test)
cmake --preset gcc >/dev/null
cmake --build --preset gcc --target "${programs[@]##*/}" -- --quiet
for program in "${programs[@]}"; do
    "build/gcc/tests/$program" --gtest_brief=1 --record
done
git --no-pager diff --stat -- tests/transcripts
