#!/usr/bin/env bash
# versions.sh: include/tRec_Version.h is the one place for the version; whatever else tells one must
# agree. The environment holds SOURCE, VERSION, STAGE, LIBDIR and PROGRAM (the tool, if it was built).
set -euo pipefail
failed=0

# same WHAT VERSION
same() {
    [ "$2" = "$VERSION" ] || { echo "$1 says \"$2\", not \"$VERSION\"."; failed=1; }
}

file=$(basename "$(readlink -f "$STAGE/$LIBDIR/librecalculo.so")")
soname=$(basename "$(readlink "$STAGE/$LIBDIR/librecalculo.so")")
same "The library's file $file" "${file#"$soname".}"
[ -z "$PROGRAM" ] || same "recalculo --version" "$("$PROGRAM" --version | sed 's/^recalculo //')"
same "The pkg-config file" "$(PKG_CONFIG_LIBDIR=$STAGE/$LIBDIR/pkgconfig pkg-config --modversion recalculo)"
same "The CMake package" \
    "$(sed -n 's/^set(PACKAGE_VERSION "\(.*\)")/\1/p' "$STAGE/$LIBDIR/cmake/recalculo/recalculo-config-version.cmake")"
[ ! -d "$SOURCE/packaging/debian" ] || # Debian's own build has it elsewhere
    same "packaging/debian/changelog" "$(sed -n '1s/.*(\([0-9.]*\).*/\1/p' "$SOURCE/packaging/debian/changelog")"
same "CHANGELOG.md" "$(sed -n 's/^## \[\([0-9].*\)\].*/\1/p' "$SOURCE/CHANGELOG.md" | head -n 1)"
same "The header" "$("$SOURCE/scripts/version.sh")"
for page in "$SOURCE"/tools/recalculo/manual/pages/*.1; do
    same "$page" "$(sed -n '1s/.*"recalculo \(.*\)"$/\1/p' "$page")"
done

# A tarball has no layer.
if [ -d "$SOURCE/packaging/yocto" ]; then
    recipe=$(echo "$SOURCE"/packaging/yocto/recipes-*/recalculo/recalculo_*.bb)
    name=$(basename "$recipe" .bb)
    same "$recipe" "${name#recalculo_}"
    # It also names the license by its sum.
    read -r sum _ < <(md5sum "$SOURCE/LICENSE")
    grep -q "md5=$sum" "$recipe" || { echo "The recipe has another sum of LICENSE."; failed=1; }
fi
exit $failed
