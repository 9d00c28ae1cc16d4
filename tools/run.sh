#!/usr/bin/env bash
# Starts the native program with the command line in VELMARO_ARGS, unchanged. Without a display it runs on a virtual
# one, and a picture of its window is saved under build/.
cd "$(dirname "$0")/.." || exit 1
# One argument is taken for the whole line, as it stands.
command=(build/linux/velmaro)
[ -z "${VELMARO_ARGS:-}" ] || command+=("$VELMARO_ARGS")

[ -z "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ] || exec "${command[@]}"

exec xvfb-run -a -s '-screen 0 1280x1024x24' bash -c '
  "$@" &
  tools/picture.sh $! build/velmaro.png
  kill $! 2>/dev/null || true' run "${command[@]}"
