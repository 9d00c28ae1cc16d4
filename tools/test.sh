#!/usr/bin/env bash
# Runs the tests of every build. All of them run, even when the first ones fail.
cd "$(dirname "$0")/.." || exit 1
failed=()
down() {
  tools/wine.sh --down >/dev/null 2>&1
  VELMARO_BITS=64 tools/wine.sh --down >/dev/null 2>&1
}
trap down EXIT
run() {
  echo "== $1"
  ctest --preset "$1" || failed+=("$1")
}
tools/setup.sh checks
run native
run native-asan
run linux
echo '== release'
tools/reproduce.sh || failed+=(release)
# Where no 32-bit program runs, velmaro.exe's own tests are reported as skipped, and a 64-bit build of the same sources
# is driven in its place.
run windows
case $(tools/wine.sh --bits) in
  64) if cmake --preset windows64 >/dev/null && cmake --build --preset windows64; then run windows64; else failed+=(windows64); fi ;;
  '') echo 'Wine starts no program here: velmaro.exe was built, and not driven.' ;;
esac
[ ${#failed[@]} -eq 0 ] || { echo "Failed: ${failed[*]}"; exit 1; }
