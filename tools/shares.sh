#!/usr/bin/env bash
# What a start gives its program of a core, on a real desktop: shares.sh WAY CLASS [WAY CLASS...], where WAY is
# entry-quiet, entry, launch, menu, script, detach, desktop-file, terminal, flatpak or wine and CLASS is h (High), n
# (Normal) or i (Idle). It runs as the user inside the session, such as in a virtual machine, with velmaro installed,
# and prints one line a cell:
#   desktop | way | user | class | game % : rival %
# The game and its rival never pause and share core $CORE (1). The rival is started as the desktop starts an entry of
# its menu, and there are $RIVALS (1) of it. Keys go to Velmaro's window through X, so Launch... and the menu need
# xdotool. FLATPAK="ID NAME" names an app whose program NAME spins on that core. VELMARO=PATH measures another build.
set -u
core=${CORE:-1} rivals=${RIVALS:-1} velmaro=${VELMARO:-velmaro}
desktop=${DESKTOP:-${XDG_CURRENT_DESKTOP:-unknown}}
user='without rights'
[ "$(ulimit -e)" -lt 30 ] || user='with rights'
at=$(mktemp -d "${XDG_RUNTIME_DIR:-/tmp}/shares.XXXXXX")
entries=()

finish() {
  pkill -x 'sharegame|sharerival' 2>/dev/null
  local entry
  for entry in "${entries[@]}"; do rm -f "$HOME/.local/share/applications/$entry.desktop"; done
  rm -rf "$at"
}
trap finish EXIT

spinner() { printf '#!/bin/sh\ntaskset -cp %s $$ >/dev/null\nwhile :; do :; done\n' "$core" >"$at/$1" && chmod +x "$at/$1"; }
spinner sharegame
spinner sharerival
printf '#!/bin/sh\n%s/sharegame & wait\n' "$at" >"$at/waits.sh"
printf '#!/bin/sh\nsetsid %s/sharegame </dev/null >/dev/null 2>&1 &\n' "$at" >"$at/leaves.sh"
printf '@for /l %%%%i in (0,0,1) do @rem\r\n' >"$at/spin.bat"
chmod +x "$at"/*.sh

# Starts a command the way that the desktop starts an entry of its menu: Plasma by its own starter and sway by itself;
# GNOME's shell makes a scope of this kind, and the others run it where they run.
entry() {
  local name=$1-$$-$RANDOM
  shift
  case $desktop in
    *KDE*)
      entries+=("$name")
      mkdir -p "$HOME/.local/share/applications"
      printf '[Desktop Entry]\nType=Application\nName=%s\nExec=%s\n' "$name" "$*" \
        >"$HOME/.local/share/applications/$name.desktop"
      chmod +x "$HOME/.local/share/applications/$name.desktop"
      kioclient exec "$HOME/.local/share/applications/$name.desktop" >/dev/null 2>&1
      ;;
    *GNOME*) systemd-run --user --scope -q --slice=app.slice --unit="app-gnome-$name" "$@" >>"$at/said" 2>&1 & ;;
    sway) swaymsg -q exec "$*" ;;
    *) setsid "$@" </dev/null >>"$at/said" 2>&1 & ;;
  esac
}

until_there() { # NAME: its process runs
  for _ in $(seq 300); do pgrep -u "$(id -u)" -x "$1" >/dev/null && return; sleep 0.2; done
  echo "$1 was not started: $(head -c 300 "$at/said" 2>/dev/null)" >&2
  return 1
}

window() { timeout 60 xdotool search --sync --onlyvisible --name "$1" | head -1; } # TITLE: waits for it
keys() { xdotool key --delay 150 "$@" && sleep 1; }
letters() { xdotool type --delay 80 "$1" && sleep 1; }

# Opens Velmaro's window through an entry and gives it the keyboard.
open_window() {
  timeout 20 xdotool getmouselocation >/dev/null # some desktops start their X server for the first who asks
  entry velmaro env QT_QPA_PLATFORM=xcb "$velmaro"
  local main
  main=$(window 'Velmaro Process') && [ -n "$main" ] || return
  sleep 2
  xdotool windowactivate "$main" 2>/dev/null || xdotool windowfocus "$main"
  sleep 1
}
close_window() { pgrep -u "$(id -u)" -x velmaro | xargs -r kill; }

used() { # NAME...: ticks that processes of these names have used, and how many there are
  local id line fields sum=0 count=0 name
  for name in "$@"; do
    for id in $(pgrep -u "$(id -u)" -x "$name"); do
      line=$(cat "/proc/$id/stat" 2>/dev/null) || continue
      read -ra fields <<<"${line##*) }"
      sum=$((sum + fields[11] + fields[12])) count=$((count + 1))
    done
  done
  echo "$sum $count"
}

opener=(gio launch)
[[ $desktop != *KDE* ]] || opener=(kioclient exec)

start() { # WAY CLASS: starts the game, and sets `game` to the names of its processes
  game=(sharegame)
  case $1 in
    entry-quiet) entry game "$velmaro" /q "/$2" "$at/sharegame" ;;
    entry) entry game "$velmaro" "/$2" "$at/sharegame" ;;
    launch)
      open_window || return
      keys alt+l
      window 'Velmaro Launcher' >/dev/null
      sleep 1
      keys ctrl+a
      letters "$at/sharegame"
      keys "alt+$2" Return
      ;;
    menu)
      entry game "$at/sharegame"
      until_there sharegame && open_window || return
      for _ in 1 2 3; do # a busy machine may lose keys: the report tells that the command was done
        keys ctrl+f
        letters sharegame
        keys Return
        keys "ctrl+$2"
        timeout 15 xdotool search --sync --onlyvisible --name '^Velmaro$' >/dev/null && break
        keys Escape
      done
      ;;
    script) entry game "$velmaro" /q "/$2" "$at/waits.sh" ;;
    detach) entry game "$velmaro" /q "/$2" "$at/leaves.sh" ;;
    desktop-file)
      entries+=("game-$$")
      printf '[Desktop Entry]\nType=Application\nName=game\nExec=%s\n' "$at/sharegame" \
        >"$HOME/.local/share/applications/game-$$.desktop"
      entry game "$velmaro" /q "/$2" "${opener[@]}" "$HOME/.local/share/applications/game-$$.desktop"
      ;;
    terminal) entry game xterm -e "$velmaro" /q "/$2" "$at/sharegame" ;;
    flatpak)
      [ -n "${FLATPAK:-}" ] || { echo 'FLATPAK is not set' >&2; return 1; }
      game=("${FLATPAK#* }")
      entry game "$velmaro" /q "/$2" flatpak run "${FLATPAK% *}"
      ;;
    wine)
      game=(cmd.exe wineserver)
      entry game "$velmaro" /q "/$2" taskset -c "$core" wine cmd /c "$at/spin.bat"
      ;;
    *) echo "unknown way: $1" >&2; return 1 ;;
  esac
  until_there "${game[0]}"
}

measure() { # WAY CLASS
  local i before after rival game_before game_after
  for ((i = 0; i < rivals; ++i)); do entry rival "$at/sharerival"; done
  if ! { until_there sharerival && start "$1" "$2"; }; then
    echo "$desktop | $1 | $user | $2 | not measured"
    return
  fi
  sleep "${SETTLE:-4}"
  game_before=$(used "${game[@]}") before=$(used sharerival)
  sleep "${SECONDS_EACH:-5}"
  game_after=$(used "${game[@]}") after=$(used sharerival)
  game_after=$((${game_after% *} - ${game_before% *})) rival=$((${after% *} - ${before% *}))
  awk -v g="$game_after" -v r="$rival" -v cell="$desktop | $1 | $user | $2" \
    'BEGIN { t = g + r; if (t == 0) t = 1; printf "%s | %.1f %% : %.1f %%\n", cell, 100 * g / t, 100 * r / t }'
  if [ -n "${VERBOSE:-}" ]; then
    local id
    for id in $(pgrep -u "$(id -u)" -x "${game[0]}"; pgrep -u "$(id -u)" -x sharerival); do
      echo "  $id nice $(ps -o ni= -p "$id") $(cat "/proc/$id/cgroup") weight $(cat "/sys/fs/cgroup$(cut -d: -f3 "/proc/$id/cgroup")/cpu.weight" 2>&1)"
    done
    cat "$at/said" 2>/dev/null
  fi
}

while [ $# -ge 2 ]; do
  measure "$1" "$2"
  close_window
  pkill -x "$(IFS='|'; echo "${game[*]-sharegame}|sharerival")"
  sleep 1
  shift 2
done
