#!/usr/bin/env bash
# Where no terminal can be had, the tests that need one are skipped, and end nothing but their own: no-terminals.sh BUILD.
# Ends with 77 where such a place can't be made.
set -u
skip() { echo "skipped: $1"; exit 77; }
if [ -z "${VELMARO_INSIDE:-}" ]; then
  alone=(unshare --mount --pid --fork --kill-child --mount-proc)
  [ "$(id -u)" = 0 ] || alone+=(--map-root-user)
  "${alone[@]}" true 2>/dev/null || skip 'there are no namespaces'
  VELMARO_INSIDE=1 exec "${alone[@]}" bash -c '"$0" "$@"; exit $?' "$0" "$@"
fi
mount -t tmpfs none /dev/pts && mount --bind /dev/null /dev/ptmx || skip 'terminals can not be taken away'
sleep 300 &
bystander=$!
said=$("$1/velmaro_linux_tests" --gtest_filter='*KeepsItsTerminal*:*AStartThatIsWatched*' 2>&1)
kill -0 $bystander || { echo 'FAILED: they ended a process that is not theirs'; exit 1; }
grep -q 'SKIPPED.* 2 tests' <<<"$said" || { echo "FAILED: $said"; exit 1; }
