#!/usr/bin/env bash
# Sees that wine.sh --down ends no process but its own display: after a restart of the machine, the number in its file can
# be a stranger's.
set -u
cd "$(dirname "$0")/.." || exit 1
scratch=$(mktemp -d)
sleep 300 &
stranger=$!
trap 'kill "$stranger" 2>/dev/null; rm -rf "$scratch"' EXIT
mkdir -p "$scratch/tools" "$scratch/build"
cp tools/wine.sh "$scratch/tools"
state=$("$scratch/tools/wine.sh" --display-file) || exit 77
# The same number and another start, and the same start of another program.
for identity in '(sleep) 1' "(Xvfb) $(awk '{ print $22 }' "/proc/$stranger/stat")"; do
  echo "99 $stranger $identity" >"$state"
  "$scratch/tools/wine.sh" --down
  kill -0 "$stranger" || { echo "It ended a process that is no $identity"; exit 1; }
  [ ! -e "$state" ] || { echo 'It left its file behind'; exit 1; }
done
