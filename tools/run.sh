#!/usr/bin/env bash
# Starts the native program with the command line in VELMARO_ARGS, unchanged. Without a display it runs on a virtual
# one, and a picture of its window is saved under build/.
cd "$(dirname "$0")/.." || exit 1
# One argument is taken for the whole line, as it stands.
command=(build/linux/velmaro)
[ -z "${VELMARO_ARGS:-}" ] || command+=("$VELMARO_ARGS")

[ -z "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ] || exec "${command[@]}"

number=$(mktemp)
Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp 3>"$number" >/dev/null 2>&1 &
server=$!
trap 'kill $program $server 2>/dev/null; rm -f "$number"' EXIT
until [ -s "$number" ]; do
  kill -0 $server 2>/dev/null || { echo 'There is no display, and no virtual one could be started.' >&2; exit 1; }
  sleep 0.05
done
DISPLAY=:$(cat "$number") "${command[@]}" &
program=$!
export DISPLAY=:$(cat "$number")
tools/picture.sh $program build/velmaro.png
