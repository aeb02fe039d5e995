#!/usr/bin/env bash
# program.sh [--no-path]: the installed tool looks for its library beside itself and in no other folder, or, as
# distributions build it, in none of its own; and it shows other libraries nothing but what they look for. The environment
# holds STAGE and LIBDIR.
set -euo pipefail
program=$STAGE/bin/recalculo
failed=0

path=$(readelf --dynamic "$program" | sed -n 's/.*(\(RUNPATH\|RPATH\)).*\[\(.*\)\]/\2/p')
wanted="\$ORIGIN/../$LIBDIR:"
if [ "${1-}" = --no-path ]; then wanted=''; fi
# For i686 the tests' own toolchain adds where its C library is, before or behind.
others=$(tr : '\n' <<<"$path" | { grep -vx /usr/i686-linux-gnu/lib || true; } | paste -sd :)
if [[ "${others:+$others:}" != "$wanted" ]]; then
    echo "The library is looked for in \"$path\"."
    failed=1
fi

exported=$(nm --dynamic --defined-only --format=just-symbols "$program")
for name in syslog sleep; do
    grep -qx "$name" <<<"$exported" || { echo "$name is not exported."; failed=1; }
done
if grep -m 5 zarven <<<"$exported"; then
    echo "These are exported, and nobody looks for them."
    failed=1
fi
exit $failed
