#!/usr/bin/env bash
# Makes the Debian package from build/linux: dist/velmaro_3.0.0_ARCHITECTURE.deb
set -euo pipefail
cd "$(dirname "$0")/.."
. tools/epoch.sh
# Files that only their owner may read must not come out of a careful user's mask.
umask 022
stage=$(mktemp -d)
trap 'rm -rf "$stage"' EXIT
(cd build/linux && cpack -G DEB -B "$stage" >"$stage.log") || { cat "$stage.log"; rm -f "$stage.log"; exit 1; }
rm -f "$stage.log"
mkdir -p dist
rm -f dist/velmaro_*.deb
mv "$stage"/velmaro_*.deb dist
ls dist/velmaro_*.deb
