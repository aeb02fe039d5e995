#!/usr/bin/env bash
# fetch_lineup.sh DIR: puts a real satellite line-up (Astra 19.2E) into DIR/channels.conf. It is sample data
# of a Debian package, which is downloaded and unpacked, never installed. Fails where the registry cannot be
# reached.
set -euo pipefail
dir=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"
chmod 755 "$work"
download() { apt-get download -qq vdr >/dev/null 2>&1; }
download || { apt-get update -qq >/dev/null 2>&1 && download; }
dpkg-deb -x vdr_*.deb unpacked
cp unpacked/usr/share/vdr/channels.conf-examples/channels.conf.sat "$dir/channels.conf"
