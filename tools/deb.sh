#!/usr/bin/env bash
# Makes the Debian package from a build of the Linux program: deb.sh [BUILD_FOLDER [FOLDER]], build/linux and dist where
# none is named.
set -euo pipefail
build=$(realpath -m "${1:-"$(dirname "$0")/../build/linux"}")
folder=$(realpath -m "${2:-"$(dirname "$0")/../dist"}")
cd "$(dirname "$0")/.."
. tools/epoch.sh
# Files that only their owner may read must not come out of a careful user's mask.
umask 022
stage=$(mktemp -d)
trap 'rm -rf "$stage"' EXIT
(cd "$build" && cpack -G DEB -B "$stage" >"$stage/log" 2>&1) || { cat "$stage/log"; exit 1; }
mkdir -p "$folder"
rm -f "$folder"/velmaro_*.deb
mv "$stage"/velmaro_*.deb "$folder"
ls "$folder"/velmaro_*.deb
