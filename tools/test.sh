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
  "${@:2}" ctest --preset "$1" || failed+=("$1")
}
# What these end or leave behind is their own. Wine's server must be too: it knows programs by the numbers of its own.
run_apart() { run "$1" tools/apart.sh; }
drive() {
  down
  run_apart "$1"
}
tools/setup.sh checks
run native
run native-asan
echo '== fuzz'
tools/fuzz.sh 2
case $? in 0 | 77) ;; *) failed+=(fuzz) ;; esac
run_apart linux
run_apart linux-asan
echo '== release'
tools/reproduce.sh || failed+=(release)
# Where Wine starts no programs of a kind, the tests of that kind are reported as skipped.
drive windows
drive windows64
[ ${#failed[@]} -eq 0 ] || { echo "Failed: ${failed[*]}"; exit 1; }
