#!/usr/bin/env bash
# fortify.sh: however a build asks for _FORTIFY_SOURCE, the library calls syslog and none of the checked functions that
# would pass a host's by. The environment holds SOURCE, CXX and CXXFLAGS.
set -euo pipefail
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
# shellcheck disable=SC2153 # SOURCE is the environment's
read -ra flags <<<"-std=c++17 $CXXFLAGS -O1 -I$SOURCE/include"
failed=0

# checked_calls NAME FLAG: the checked functions that the object of NAME.cpp calls when it is compiled with FLAG.
checked_calls() {
    "$CXX" "${flags[@]}" "$2" -c "$work/$1.cpp" -o "$work/$1.o"
    nm --undefined-only --format=just-symbols "$work/$1.o" | grep '_chk$' || :
}

# Each source for itself, because of those that are compiled together the first serves all.
for source in "$SOURCE"/src/*/*.cpp; do
    grep -m 1 '^#include' "$source" | grep -qF '"../log/SinFortify.h"' ||
        { echo "$source does not include SinFortify.h first."; failed=1; }
done

text='#include <syslog.h>
void f(const char* text) { syslog(LOG_DEBUG, "%s", text); }'
echo "$text" >"$work/careless.cpp"
printf '#include "%s/src/log/SinFortify.h"\n%s\n' "$SOURCE" "$text" >"$work/careful.cpp"
for flag in -D_FORTIFY_SOURCE=2 -Wp,-D_FORTIFY_SOURCE=2 -Wp,-U_FORTIFY_SOURCE,-D_FORTIFY_SOURCE=3; do
    [ "$(checked_calls careless "$flag")" = __syslog_chk ] || { echo "$flag shows nothing here."; failed=1; }
    [ -z "$(checked_calls careful "$flag")" ] || { echo "$flag is not held against."; failed=1; }
done

# The last flag asks for the most, and what holds against one is the same header for all.
for source in "$SOURCE"/src/*/*.cpp; do
    printf '#include "%s"\n' "$source" >>"$work/all_$(basename "$(dirname "$source")").cpp"
done
for source in "$work"/all_*.cpp; do
    name=$(basename "$source" .cpp)
    calls=$(checked_calls "$name" "$flag")
    [ -z "$calls" ] || { echo "With $flag src/${name#all_} calls $calls."; failed=1; }
done
exit $failed
