#!/usr/bin/env bash
# Writes a release: the zip for Windows, the Debian package, the source archive, and SHA256SUMS. dist.sh [FOLDER], dist
# where none is named; what was in it goes.
set -euo pipefail
dist=$(realpath -m "${1:-"$(dirname "$0")/../dist"}")
cd "$(dirname "$0")/.."
. tools/epoch.sh
umask 022
version=$(sed -n 's/^project(.* VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
stage=$(mktemp -d)
trap 'rm -rf "$stage"' EXIT
rm -rf "$dist"
mkdir "$dist"

tools/deb.sh build/linux "$dist"

mkdir "$stage/zip"
cp build/windows/velmaro.exe "$stage/zip"
cp build/windows64/velmaro.exe "$stage/zip/velmaro64.exe"
python3 tools/player_text.py README.md docs/windows.md docs/command-line.md docs/lists.md docs/memory.md >"$stage/README.txt"
# Velmaro ends a line at a carriage return, as the system's own editors write it.
for text in "$stage/README.txt" packaging/samples/killlist.txt packaging/samples/nokilllist.txt; do
  sed 's/$/\r/' "$text" >"$stage/zip/${text##*/}"
done
# An archiver would note when each file was last read.
(cd "$stage/zip" && python3 - "$dist/velmaro-$version-windows.zip" <<'PACK'
import os, sys, time, zipfile
with zipfile.ZipFile(sys.argv[1], 'w', zipfile.ZIP_DEFLATED) as archive:
    for name in ('velmaro.exe', 'velmaro64.exe', 'README.txt', 'killlist.txt', 'nokilllist.txt'):
        entry = zipfile.ZipInfo(name, time.gmtime(int(os.environ['SOURCE_DATE_EPOCH']))[:6])
        entry.external_attr = 0o644 << 16
        archive.writestr(entry, open(name, 'rb').read(), zipfile.ZIP_DEFLATED)
PACK
)

# What is there, not what was committed: a source archive holds no history to ask.
sources() {
  if git rev-parse --git-dir >/dev/null 2>&1; then git ls-files -z
  else find . -path ./build -prune -o -path ./dist -prune -o -type f -printf '%P\0'; fi
}
sources | sort -z | tar --create --no-recursion --transform="s,^,velmaro-$version/," --mtime="@$SOURCE_DATE_EPOCH" \
  --owner=0 --group=0 --numeric-owner --mode=u+rw,go=rX --format=gnu --null --files-from=- |
  gzip -9n >"$dist/velmaro-$version.tar.gz"

(cd "$dist" && sha256sum -- velmaro* >SHA256SUMS)
ls -l "$dist"
