#!/usr/bin/env bash
# check.sh [--tests]: the checks that run no test: formatting, lint, headers, scripts. --tests: instead of these,
# each source of the tests by itself. Elsewhere a dozen are compiled as one, where one would not miss an include that
# another has.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
need "${BUILD_PACKAGES[@]}" "${TEST_PACKAGES[@]}" git clang-format clang-tidy shellcheck

lint() { # FOLDER...
    cmake --preset lint >/dev/null
    # Of what it writes to standard error, all but the number of warnings, most of them in headers of others.
    {
        git ls-files "${@/%//*.cpp}" |
            xargs -P "$(nproc)" -n 4 clang-tidy --quiet --extra-arg=-std=c++17 -p build/lint 2>&1 >&3 |
            { grep -Ev '^[0-9]+ warnings? generated\.$' >&2 || [ $? -eq 1 ]; }
    } 3>&1
}

case ${1-} in
'') ;;
--tests) lint tests; exit ;;
*) echo "check.sh: unknown option $1; expected --tests" >&2; exit 2 ;;
esac

echo "== formatting"
git ls-files '*.cpp' '*.h' | xargs clang-format --dry-run -Werror

echo "== scripts"
shellcheck -x scripts/*.sh tests/*.sh tests/tools/*.sh tests/consumers/*.sh .ci/run

echo "== each header by itself"
for header in include/*.h; do
    g++ -std=c++17 -Wall -Wextra -Werror -Iinclude -fsyntax-only -x c++ "$header"
done

echo "== each folder as one file"
# As those presets compile it that build in unity. Forwards and backwards, because a name hides another only behind it.
as_one_file() { # FOLDER ORDER
    printf '#include "%s"\n' "$1"/*.cpp | sort "$2" |
        g++ -std=c++17 -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror -I. -Iinclude -Isrc/reglas \
            -Itools/recalculo -DRECALCULO_RELEASED='""' -fsyntax-only -x c++ -
}
export -f as_one_file
git ls-files 'src/*.cpp' 'tools/*.cpp' | sed 's|/[^/]*$||' | sort -u | sed 's|.*|& --unique\n& --reverse|' |
    xargs -P "$(nproc)" -L 1 bash -c 'as_one_file "$@"' as_one_file

echo "== lint, each source of library and tool by itself"
lint src tools
