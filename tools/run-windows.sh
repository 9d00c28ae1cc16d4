#!/usr/bin/env bash
# Starts velmaro.exe under Wine with the command line in VELMARO_ARGS, unchanged: run-windows.sh [64] for the 64-bit
# program. Without a display it runs on a virtual one, and a picture of its window is saved under build/.
cd "$(dirname "$0")/.." || exit 1
bits=${1:-$(tools/wine.sh --bits)}
[ -n "$bits" ] || { echo 'Wine cannot run here: build/windows/velmaro.exe is built, and runs on any Windows.'; exit 1; }
folder=build/windows
if [ "$bits" = 64 ]; then
  # Where no 32-bit program runs it stands in, and was not asked for.
  folder=build/windows64
  { tools/setup.sh windows64 && cmake --preset windows64 && cmake --build --preset windows64 --target velmaro_exe run_raw; } ||
    exit 1
fi
export VELMARO_BITS=$bits VELMARO_PROGRAM
VELMARO_PROGRAM="Z:$(pwd | tr / '\\')\\${folder//\//\\}\\velmaro.exe"

[ -z "${DISPLAY:-}" ] || exec tools/wine.sh "$folder/run_raw.exe"

tools/wine.sh --up || exit 1
trap 'tools/wine.sh --down' EXIT
DISPLAY=:$(cut -d ' ' -f 1 "$(tools/wine.sh --display-file)")
export DISPLAY
tools/wine.sh "$folder/run_raw.exe" &
tools/picture.sh $! build/velmaro-windows.png
