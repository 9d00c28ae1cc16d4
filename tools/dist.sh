#!/usr/bin/env bash
# Writes dist/velmaro-3.0.zip: velmaro.exe, the README and a sample of each list file.
set -euo pipefail
cd "$(dirname "$0")/.."
stage=$(mktemp -d)
trap 'rm -rf "$stage"' EXIT
cp build/windows/velmaro.exe "$stage"
# Velmaro ends a line at a carriage return, as the system's own editors write it.
for text in README.md packaging/samples/killlist.txt packaging/samples/nokilllist.txt; do
  sed 's/$/\r/' "$text" >"$stage/${text##*/}"
done
mkdir -p dist
zip=$PWD/dist/velmaro-3.0.zip
rm -f "$zip"
(cd "$stage" && cmake -E tar cf "$zip" --format=zip velmaro.exe README.md killlist.txt nokilllist.txt)
echo "dist/velmaro-3.0.zip"
