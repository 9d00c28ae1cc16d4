#!/usr/bin/env bash
# Prints what Velmaro costs: on the simulated desktop, and against the bare platform call under Wine.
cd "$(dirname "$0")/.." || exit 1
code=0
if [ -x build/native/velmaro_bench ]; then
  echo '== native'
  build/native/velmaro_bench || code=1
fi
if [ -f build/windows/velmaro_bench_windows.exe ]; then
  echo '== windows'
  tools/wine.sh build/windows/velmaro_bench_windows.exe
  case $? in 0 | 77) ;; *) code=1 ;; esac
fi
exit $code
