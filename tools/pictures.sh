#!/usr/bin/env bash
# Takes the pictures of every form anew, on both systems at 96 and 144 dots an inch, on virtual screens: pictures.sh
# [FOLDER], docs where none is named. On Linux the list shows sample programs alone, since those run where no others are.
set -euo pipefail
folder=$(realpath -m "${1:-"$(dirname "$0")/../docs"}")
cd "$(dirname "$0")/.."
work=$(mktemp -d)
title="Zeld's Velmaro Process"
started=()
managed=
finish() {
  for process in "${started[@]}"; do kill "$process" 2>/dev/null || true; done
  started=()
}
trap 'finish; rm -rf "$work"' EXIT
mkdir -p "$folder"

keys() { for key in "$@"; do xdotool key --clearmodifiers "$key"; sleep 0.2; done; }

# A window manager puts some windows anywhere; without one they stand where the program wants them.
place() { [ -z "$managed" ] || xdotool windowmove "${3:-$(xdotool getactivewindow)}" "$1" "$2"; }

# Closes what is open, and waits until the main window hears keys again.
back() {
  keys "$@"
  for _ in $(seq 10); do
    sleep 0.3
    [ -z "$managed" ] || [ "$(xdotool getactivewindow)" != "$((main))" ] || break
  done
}

# Waits until the screen stands still for a second, and saves what is on it without the ground around.
take() {
  local before= now=none
  for _ in $(seq 20); do
    sleep 1
    now=$(import -window root rgb:- | cksum)
    [ "$now" != "$before" ] || break
    before=$now
  done
  import -window root png:- | convert png:- -trim +repage -strip "$folder/$1.png"
  echo "$folder/$1.png"
}

# Both programs have the same menus and keys.
take_all() {
  local system=$1 dpi=$2
  for _ in $(seq 300); do
    xwininfo -name "$title" 2>/dev/null | grep IsViewable >/dev/null && break
    sleep 0.2
  done
  local main
  main=$(xwininfo -name "$title" | sed -n 's/.*Window id: \(0x[0-9a-f]*\).*/\1/p')
  sleep 2
  local left=$((640 - 240 * dpi / 96)) top=$((512 - 160 * dpi / 96))
  place "$left" "$top" "$main"
  keys End Up
  take "${system}main-$dpi"
  keys F10 Right Down
  take "${system}menu-$dpi"
  back Escape Escape Escape
  keys ctrl+k
  take "${system}question-$dpi"
  back Escape
  keys ctrl+r
  place $((left + 10)) $((top + 60))
  take "${system}launcher-$dpi"
  back Escape
  keys ctrl+f
  place $((left + 50)) $((top + 60))
  take "${system}input-$dpi"
  back Escape
  keys F10 Down Down Return
  take "${system}memory-$dpi"
  back alt+F4
  keys F10 Right Down k
  take "${system}editor-$dpi"
  back Escape
  keys alt+h
  take "${system}hidden-$dpi"
  keys alt+a F1
  take "${system}about-$dpi"
}

# It says 1 also where it did it.
ground() { display -window root -size 1280x1024 xc:gray50 || true; }

linux_pictures() {
  rm -f "$work/number"
  Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp 3>"$work/number" >/dev/null 2>&1 &
  started+=($!)
  for _ in $(seq 100); do [ -s "$work/number" ] && break; sleep 0.1; done
  export DISPLAY=:$(cat "$work/number")
  ground
  openbox >/dev/null 2>&1 &
  started+=($!)
  HOME=$work QT_SCALE_FACTOR=$(python3 -c "print($1 / 96)") unshare -rpf --mount-proc --kill-child bash -c '
    mount -t tmpfs -o mode=755 none /usr/local/games
    cp build/linux/velmaro build/linux/*.so /usr/local/games
    cp packaging/linux/samples/killlist.txt /usr/local/games
    for name in star-emu pad-mapper music-player cloud-sync update-watch; do
      cp /bin/sleep /usr/local/games/$name
      /usr/local/games/$name 900 &
      until [ "$(readlink /proc/$!/exe)" = /usr/local/games/$name ]; do sleep 0.05; done
      case $name in *-sync | *-watch) renice -n 19 -p $! >/dev/null ;; esac
    done
    exec /usr/local/games/velmaro' 2>/dev/null &
  started+=($!)
  managed=1
  take_all linux- "$1"
  managed=
  finish
}

windows_pictures() {
  unset DISPLAY
  export VELMARO_DPI=$1
  # What was started without a display would keep others from it.
  tools/wine.sh --down
  tools/wine.sh --up
  trap 'tools/wine.sh --down; finish; rm -rf "$work"' EXIT
  DISPLAY=:$(cut -d ' ' -f 1 "$(tools/wine.sh --display-file)")
  export DISPLAY
  ground
  local games=build/wine$bits/drive_c/Games
  [ "$1" = 96 ] || games=build/wine$bits-$1/drive_c/Games
  mkdir -p "$games"
  cp $programs/velmaro.exe "$games"
  sed 's/$/\r/' packaging/samples/killlist.txt >"$games/killlist.txt"
  for name in star-emu pad-mapper music-player; do
    cp $programs/probe.exe "$games/$name.exe"
    tools/wine.sh "C:\\Games\\$name.exe" >/dev/null 2>&1 &
  done
  sleep 2
  tools/wine.sh 'C:\Games\velmaro.exe' >/dev/null 2>&1 &
  take_all '' "$1"
  tools/wine.sh --down
  trap 'finish; rm -rf "$work"' EXIT
}

for dpi in 96 144; do linux_pictures $dpi; done
# Both kinds look the same, and either shows it.
bits=$(tools/wine.sh --bits)
programs=build/windows$([ "$bits" = 32 ] || echo 64)
if [ -n "$bits" ]; then
  export VELMARO_BITS=$bits
  for dpi in 96 144; do windows_pictures $dpi; done
else
  echo 'No Wine here: the pictures of velmaro.exe stay as they are.'
fi
