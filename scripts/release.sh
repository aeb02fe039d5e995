#!/usr/bin/env bash
# release.sh VERSION [--no-tests]: makes the release VERSION of the tree as it is. Raises the version wherever it stands,
# writes the source tarball into build/release, unpacks it where there is no git, builds it there and runs its tests, and
# says what is left to do by hand. Running it again, as long as VERSION is not tagged, takes in late changes and renews the
# tarball and the sum in the recipe.
#
# Before it, CHANGELOG.md tells under [Unreleased] what is new; that becomes part of VERSION.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
need "${BUILD_PACKAGES[@]}" "${TEST_PACKAGES[@]}" git

version=${1-}
tests=${2-}
[[ $version =~ ^[0-9]+\.[0-9]+\.[0-9]+$ && $tests =~ ^(|--no-tests)$ ]] ||
    { echo "usage: release.sh VERSION [--no-tests], with a VERSION like 1.2.3" >&2; exit 2; }
fail() { echo "release.sh: $*" >&2; exit 1; }

before=$(scripts/version.sh)
[ "$(printf '%s\n' "$before" "$version" | sort -V | tail -n 1)" = "$version" ] || fail "$version is older than $before"
git rev-parse --quiet --verify "refs/tags/v$version" >/dev/null && fail "v$version is tagged already"

# ---- The changelog: what is unreleased becomes this release, or part of it if it has a heading already.
section() { awk -v heading="## [$1]" 'index($0, heading) == 1 { inside = 1; next } /^## / { inside = 0 } inside' CHANGELOG.md; }
# Each entry goes to the end of those of its kind ("### Added"), kinds that the release has not had yet behind the others.
fold_unreleased() {
    awk -v version="## [$version] - " -v today="$(date -u +%F)" '
        function end_of_kind() { printf "%s", late[kind]; delete late[kind]; kind = "" }
        function end_of_section(  i) {
            end_of_kind()
            for (i = 1; i <= n; ++i)
                if (kinds[i] in late) printf "\n%s\n\n%s", kinds[i], late[kinds[i]]
            inside = n = 0
        }
        NR == FNR { # first the late entries, then the file
            if (/^## /) unreleased = $0 == "## [Unreleased]"
            else if (unreleased && /^### /) kinds[++n] = kind = $0
            else if (unreleased && NF) late[kind] = late[kind] $0 "\n"
            next
        }
        FNR == 1 { unreleased = 0; kind = "" }
        /^## / || /^### / { if (inside && /^## /) end_of_section(); else if (inside) end_of_kind() }
        /^## / { unreleased = $0 == "## [Unreleased]"; if (unreleased) { print blank $0; blank = "\n" } }
        unreleased { next }
        index($0, version) == 1 { inside = 1; $0 = version today }
        inside && /^### / { kind = $0 }
        !NF { blank = blank "\n"; next }
        { printf "%s", blank; blank = ""; print }
        END { if (inside) end_of_section() }' CHANGELOG.md CHANGELOG.md >CHANGELOG.md.new
    mv CHANGELOG.md.new CHANGELOG.md
}
if ! grep -q "^## \[$version\] - " CHANGELOG.md; then
    section Unreleased | grep -q '^- ' || fail "CHANGELOG.md has nothing under [Unreleased]"
    sed -i "s/^## \[Unreleased\]$/&\n\n## [$version] - $(date -u +%F)/" CHANGELOG.md
elif section Unreleased | grep -q '^- '; then
    fold_unreleased
fi
section "$version" | grep -q '^- ' || fail "CHANGELOG.md tells nothing of $version"

# ---- The version.
IFS=. read -r major minor patch <<<"$version"
sed -i -e "s/^\(#define RECALCULO_VERSION_MAJOR\) .*/\1 $major/" -e "s/^\(#define RECALCULO_VERSION_MINOR\) .*/\1 $minor/" \
    -e "s/^\(#define RECALCULO_VERSION_PATCH\) .*/\1 $patch/" include/tRec_Version.h
if ! grep -q "^recalculo ($version-" packaging/debian/changelog; then
    maintainer=$(sed -n 's/^Maintainer: //p' packaging/debian/control)
    {
        printf 'recalculo (%s-1) unstable; urgency=medium\n\n  * New release; CHANGELOG.md tells what is in it.\n\n' "$version"
        printf ' -- %s  %s\n\n' "$maintainer" "$(date -u -R)"
        cat packaging/debian/changelog
    } >packaging/debian/changelog.new
    mv packaging/debian/changelog.new packaging/debian/changelog
fi
recipe=packaging/yocto/recipes-multimedia/recalculo/recalculo_$version.bb
for old in packaging/yocto/recipes-multimedia/recalculo/recalculo_*.bb; do
    [ "$old" = "$recipe" ] || mv "$old" "$recipe"
done
scripts/manual.sh

# ---- The tarball, and its sum in the recipe, which is not in the tarball.
mkdir -p build/release
tarball=$(scripts/tarball.sh build/release)
sum=$(sha256sum "$tarball" | cut -d ' ' -f 1)
sed -i "s/^\(SRC_URI\[sha256sum\] = \)\".*\"/\1\"$sum\"/" "$recipe"

if [ -z "$tests" ]; then
    work=$(mktemp -d)
    trap 'rm -rf "$work"' EXIT
    tar -C "$work" -xf "$tarball"
    "$work/recalculo-$version/scripts/test.sh"
    mkdir "$work/again"
    cmp "$tarball" "$("$work/recalculo-$version/scripts/tarball.sh" "$work/again")" ||
        fail "the tarball does not make itself again"
fi

cat <<END

The sources are version $version. $tarball
  sha256 $sum
What is left, when .ci/run and scripts/full.sh have passed:
  git add -A && git commit -m "Release $version"
  git tag -s v$version -m "Recalculo $version"
  upload the tarball to the folder that packaging/debian/watch and the recipe name
END
