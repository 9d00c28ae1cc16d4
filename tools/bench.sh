#!/usr/bin/env bash
# Prints what Velmaro costs: on the simulated desktop, on this machine's own processes, in bytes, and against the
# bare platform call under Wine.
cd "$(dirname "$0")/.." || exit 1
code=0
if [ -x build/native/velmaro_bench ]; then
  echo '== native'
  build/native/velmaro_bench || code=1
fi
if [ -x build/linux/velmaro_bench_linux ]; then
  echo '== linux'
  build/linux/velmaro_bench_linux || code=1
fi
folder=build/windows
if [ -f "$folder/velmaro.exe" ]; then
  echo '== size'
  echo "velmaro.exe: $(wc -c <"$folder/velmaro.exe") bytes"
fi
bits=$(tools/wine.sh --bits)
if [ "$bits" = 64 ]; then
  # No 32-bit program runs here: a 64-bit build of the same sources stands in.
  folder=build/windows64
  { cmake --preset windows64 >/dev/null && cmake --build --preset windows64; } || exit 1
fi
if [ -z "$bits" ]; then
  echo 'Wine cannot run here: the Windows figures are left out.'
elif [ -f "$folder/velmaro_bench_windows.exe" ]; then
  echo "== $folder"
  export VELMARO_BITS=$bits
  tools/wine.sh --up && tools/wine.sh "$folder/velmaro_bench_windows.exe" || code=1
  tools/wine.sh --down
fi
exit $code
